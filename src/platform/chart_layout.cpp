#include "platform/chart_layout.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

namespace platform {
namespace {

constexpr double kMargin = 12;
constexpr double kSwatch = 1.6;         // of a letter's height: the mark and the gap behind it
constexpr double kLegendShare = 0.34;   // of the width, at most
constexpr double kLegendLow = 0.36;     // of the height, where it stands below
constexpr double kNarrowest = 150;      // pixels of a column with cut labels
constexpr double kTallFrom = 1.15;      // height by width
constexpr std::size_t kMeasured = 300;  // labels; longer ones behind them are cut
constexpr double kTitleSize = 1.35;

// Room for the widest label, the mark before it, and a gap.
double entryWidth(const ChartData& data, const QFontMetricsF& metrics, double most) {
  double widest = metrics.horizontalAdvance(QStringLiteral("Altri"));
  for (std::size_t i = 0; i < std::min(data.rows.size(), kMeasured) && widest < most; ++i) {
    widest = std::max(widest, metrics.horizontalAdvance(data.rows[i].label));
  }
  return std::min(most, widest + metrics.height() * kSwatch + kMargin);
}

// As many as are wide enough for the labels. Where they do not all fit then, labels are cut.
int columnsFor(int rows, int lines, double room, double column) {
  const int whole = std::max(1, static_cast<int>(room / column));
  const int most = std::max(whole, static_cast<int>(room / kNarrowest));
  return std::clamp((rows + lines - 1) / lines, whole, most);
}

void placeLegend(ChartLayout& layout, const ChartData& data, const QRectF& room,
                 const QFontMetricsF& metrics) {
  const int rows = static_cast<int>(data.rows.size());
  layout.lineHeight = std::ceil(metrics.height() * 1.35);
  const bool below = room.height() > room.width() * kTallFrom;
  layout.columnWidth =
      entryWidth(data, metrics, below ? room.width() : room.width() * kLegendShare);
  const double most = below ? room.height() * kLegendLow : room.height();
  const int fit = std::max(1, static_cast<int>(most / layout.lineHeight));
  if (below) layout.columns = columnsFor(rows, fit, room.width(), layout.columnWidth);
  layout.lines = (rows + layout.columns - 1) / layout.columns;
  layout.linesInSight = std::min(layout.lines, fit);
  const double high = layout.linesInSight * layout.lineHeight;
  if (below) {
    layout.columnWidth = room.width() / layout.columns;
    layout.legend = {room.left(), room.bottom() - high, room.width(), high};
    layout.plot = room.adjusted(0, 0, 0, -high - kMargin);
  } else {
    layout.legend = {room.right() - layout.columnWidth, room.center().y() - high / 2,
                     layout.columnWidth, high};
    layout.plot = room.adjusted(0, 0, -layout.columnWidth - kMargin, 0);
  }
}

}  // namespace

QFont titleFontOf(const QFont& font) {
  QFont title = font;
  title.setPixelSize(static_cast<int>(std::lround(font.pixelSize() * kTitleSize)));
  title.setBold(true);
  return title;
}

ChartLayout layOutChart(const ChartData& data, const QSizeF& size, const QFont& font) {
  ChartLayout layout;
  const QRectF all = QRectF(QPointF(), size).adjusted(kMargin, kMargin, -kMargin, -kMargin);
  const QFontMetricsF large(titleFontOf(font));
  const QFontMetricsF metrics(font);
  const double wide = large.horizontalAdvance(data.title);
  const int titleLines = data.title.isEmpty() ? 0 : (wide > all.width() ? 2 : 1);
  layout.title = {all.left(), all.top(), all.width(), titleLines * large.lineSpacing()};
  // A line for what a picture cannot show is kept free.
  const double foot = std::ceil(2 * metrics.lineSpacing() + metrics.descent());
  layout.footnote = {all.left(), all.bottom() - foot, all.width(), foot};
  const QRectF room(QPointF(all.left(), layout.title.bottom() + kMargin),
                    QPointF(all.right(), layout.footnote.top() - kMargin));
  placeLegend(layout, data, room, metrics);
  return layout;
}

QRectF legendEntry(const ChartLayout& layout, int row, int firstLine) {
  const int line = row / layout.columns - firstLine;
  return {layout.legend.left() + row % layout.columns * layout.columnWidth,
          layout.legend.top() + line * layout.lineHeight, layout.columnWidth, layout.lineHeight};
}

int legendRowAt(const ChartLayout& layout, const QPointF& point, int firstLine, int rows) {
  if (!layout.legend.contains(point) || layout.lineHeight <= 0) return -1;
  const int line = static_cast<int>((point.y() - layout.legend.top()) / layout.lineHeight);
  const int column = static_cast<int>((point.x() - layout.legend.left()) / layout.columnWidth);
  const int row = (line + firstLine) * layout.columns + std::min(column, layout.columns - 1);
  return row < rows ? row : -1;
}

}  // namespace platform
