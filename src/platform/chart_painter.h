#pragma once

#include <QColor>
#include <QPainter>

#include "platform/chart_scene.h"

class QPalette;

namespace platform {

// The label of a row, as the chart's users set it.
struct DataPointLabel {
  enum Place { OverSolidBar = 0, OverBar = 1, InSlice = 5 };
  enum Component { Nothing = 0, Value = 1, Percent = 2, Name = 4, All = 7 };
  int LocationType = InSlice;
  int component = Nothing;
  QString ValueFormat = QStringLiteral("#,##0");
  QString PercentFormat = QStringLiteral("0.0%");
  bool filled = false;
  QColor FillColor;
  QString FontName;
  double FontSize = 8;  // points
  bool bold = false;
  QColor FontColor;
};

// The lines of a row's label.
QStringList labelLines(const ChartScene& scene, int row, const DataPointLabel& label);

// What a chart is painted with, beside the colours of its rows.
struct ChartInk {
  QColor text;
  QColor dim;
  QColor ground;
  QColor groundBelow;  // the ground passes into it
  QColor line;
  QColor mark;  // around the row whose label shows
  bool filled = true;
};
ChartInk screenInk(const QPalette& palette);
ChartInk paperInk();

// What of it changes between two pictures of a scene.
struct ChartState {
  int firstLine = 0;  // of the legend
  int marked = -1;    // the row that the legend and the picture point out
};

// Paints a scene, without labels.
void paintChart(QPainter& painter, const ChartScene& scene, const ChartInk& ink,
                const ChartState& state = {});
// Where the label of a row is, and the label itself.
QRectF labelRect(const ChartScene& scene, int row, const DataPointLabel& label);
void paintLabel(QPainter& painter, const ChartScene& scene, int row, const DataPointLabel& label);

}  // namespace platform
