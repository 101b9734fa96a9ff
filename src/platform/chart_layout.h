#pragma once

#include <QFont>
#include <QRectF>
#include <QSizeF>

#include "platform/chart_data.h"

namespace platform {

// How large the smallest things may be, and who reads them.
enum class ChartMedium {
  Screen,   // what does not fit into the legend is scrolled to
  Picture,  // no scrolling
  Paper,    // no scrolling, black on white, finer
};

// Where the parts of a chart stand, in pixels of 1/96 inch.
struct ChartLayout {
  QRectF title;
  QRectF plot;
  QRectF legend;
  QRectF footnote;
  // The legend's entries, line by line.
  int columns = 1;
  int lines = 0;         // in all
  int linesInSight = 0;  // of them
  double lineHeight = 0;
  double columnWidth = 0;
  int entriesInSight() const { return columns * linesInSight; }
};

QFont titleFontOf(const QFont& font);
ChartLayout layOutChart(const ChartData& data, const QSizeF& size, const QFont& font);
// The place of a legend's entry, with `firstLine` as the first one in sight.
QRectF legendEntry(const ChartLayout& layout, int row, int firstLine);
// The entry at a point, -1 for none.
int legendRowAt(const ChartLayout& layout, const QPointF& point, int firstLine, int rows);

}  // namespace platform
