#pragma once

#include "ground.h"
#include "scene.h"

namespace bench {

struct Figure {
  QString name;
  std::function<QVector<Reading>(const Ground& ground)> measure;
  Scene scene;  // what `measure` plays within the program; none if it needs no program
};

QVector<Figure> rowFigures();
QVector<Figure> windowFigures();
QVector<Figure> memoryFigures();
QVector<Figure> listFigures();
QVector<Figure> queryFigures();
QVector<Figure> fileFigures();
QVector<Figure> exportFigures();
QVector<Figure> managerFigures();
QVector<Figure> chartFigures();
// Their scenes write to copies of the archive: one for the program, one for the plain engine, so
// that neither makes the other read its pages again.
QVector<Figure> fieldFigures();
QVector<Figure> newRecordFigures();
QVector<Figure> deletionFigures();

}  // namespace bench
