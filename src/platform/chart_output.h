#pragma once

#include <QByteArray>
#include <QFont>
#include <QImage>
#include <QMap>

#include "platform/chart_painter.h"

class QPrinter;

namespace platform {

using ChartLabels = QMap<int, DataPointLabel>;  // by row, from 0

// A chart as it leaves the program: dark on white, whatever the screen has.
struct ChartSheet {
  ChartData data;
  QFont font;  // its size in pixels of 1/96 inch
  ChartLabels labels = {};
};

// A picture with so many of its own pixels for one of the size.
QImage chartImage(const ChartSheet& sheet, const QSize& size, double pixels);
QByteArray chartSvg(const ChartSheet& sheet, const QSize& size);
// Writes a picture, SVG if the name ends so and PNG otherwise; an older file is replaced once it is
// whole. Fails with 61 (disk full), 70, 75, 76.
void saveChart(const ChartSheet& sheet, const QSize& size, const QString& path);

// How a chart is put on paper. Margins are centimetres.
struct ChartPrintSettings {
  enum Orientation { Portrait = 1, Landscape = 2 };
  enum Scale { Fit = 1 };         // as large as the margins leave room
  bool LayoutForPrinter = false;  // laid out for the sheet; else as on the screen
  int Orientation = Portrait;
  int ScaleType = Fit;
  double LeftMargin = 0;
  double RightMargin = 0;
  double TopMargin = 0;
  double BottomMargin = 0;
  bool CenterHorizontally = false;
  bool CenterVertically = false;
};
// Prints a chart on one sheet; `onScreen` is its size there. Fails with kNoPrinter.
void printChart(const ChartSheet& sheet, const QSizeF& onScreen, const ChartPrintSettings& settings,
                QPrinter& printer);

}  // namespace platform
