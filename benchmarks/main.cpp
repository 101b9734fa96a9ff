// tavolix-bench ARCHIVE [NAME]: how long the program takes, beside the plain database engine on
// the same archive. Ends with 1 if a figure is over its limit.

#include <QCoreApplication>
#include <QFileInfo>
#include <cstdio>

#include "figures.h"

namespace {

using namespace bench;

QVector<Figure> allFigures() {
  return windowFigures() + rowFigures() + fieldFigures() + newRecordFigures() + deletionFigures() +
         listFigures() + queryFigures() + fileFigures() + exportFigures() + managerFigures() +
         chartFigures() + memoryFigures();
}

QVector<Figure> chosen(const QString& name) {
  QVector<Figure> figures = allFigures();
  if (!name.isEmpty()) figures.removeIf([&](const Figure& figure) { return figure.name != name; });
  return figures;
}

int usage() {
  std::fputs("usage: tavolix-bench ARCHIVE [NAME OF ONE FIGURE]\nfigures:", stderr);
  for (const Figure& figure : allFigures()) std::fprintf(stderr, " %s", qPrintable(figure.name));
  std::fputs("\n", stderr);
  return 2;
}

bool measureAll(const QVector<Figure>& figures, const QString& archive) {
  const Ground ground(archive);
  bool over = false;
  printHeading();
  for (const Figure& figure : figures) {
    for (const Reading& reading : figure.measure(ground)) {
      print(reading);
      over = over || reading.isOver();
    }
  }
  return over;
}

QStringList textsOf(int argc, char** argv) {
  QStringList texts;
  for (int i = 1; i < argc; ++i) texts.append(QString::fromLocal8Bit(argv[i]));
  return texts;
}

}  // namespace

int main(int argc, char** argv) {
  const QStringList arguments = textsOf(argc, argv);
  // A program of its own for a scene: the program's main makes the application.
  if (arguments.size() >= 2 && arguments[0] == QLatin1String(kStartOption)) {
    runStart(argv[0], arguments[1]);
  }
  if (arguments.size() >= 3 && arguments[0] == QLatin1String(kSceneOption)) {
    const QVector<Figure> figures = chosen(arguments[1]);
    if (figures.isEmpty() || !figures.first().scene) return usage();
    runScene(argv[0], figures.first().scene, arguments.mid(2));
  }
  const QCoreApplication application(argc, argv);
  const QVector<Figure> figures = chosen(arguments.value(1));
  const bool good = !arguments.isEmpty() && arguments.size() <= 2 && !figures.isEmpty();
  if (!good || !QFileInfo::exists(arguments[0])) return usage();
  return measureAll(figures, arguments[0]) ? 1 : 0;
}
