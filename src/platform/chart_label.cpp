#include <algorithm>

#include "platform/chart_painter.h"
#include "platform/number_format.h"

// The labels of a chart's rows.

namespace platform {
namespace {

constexpr double kPadding = 5;
constexpr double kDepth = 0.62;      // of the radius
constexpr double kChartPoints = 10;  // what the font of the chart itself counts for
constexpr double kWidest = 0.9;      // of the plot's width
constexpr double kPointer = 3;       // half the mark at the place that is meant
constexpr double kAbove = 8;         // pixels between a bar and its label

QFont fontOf(const DataPointLabel& label, const QFont& chart) {
  QFont font(label.FontName);
  // What is there in its stead has no serifs either.
  font.setFamilies(
      {label.FontName, QStringLiteral("Liberation Sans"), QStringLiteral("DejaVu Sans")});
  font.setPixelSize(
      static_cast<int>(std::lround(label.FontSize * chart.pixelSize() / kChartPoints)));
  font.setBold(label.bold);
  return font;
}

QPointF anchorOf(const ChartScene& scene, int row) {
  if (scene.pie()) return scene.pie()->middleOf(row, kDepth);
  return scene.bars()->tipOf(row);
}

bool isDrawn(const ChartScene& scene, int row) {
  return !scene.pie() || scene.pie()->spanOf(row) > 0;
}

QRectF keptInside(QRectF box, const QRectF& room) {
  box.moveLeft(
      std::clamp(box.left(), room.left(), std::max(room.left(), room.right() - box.width())));
  box.moveTop(
      std::clamp(box.top(), room.top(), std::max(room.top(), room.bottom() - box.height())));
  return box;
}

}  // namespace

QStringList labelLines(const ChartScene& scene, int row, const DataPointLabel& label) {
  const auto place = static_cast<std::size_t>(row);
  QStringList lines;
  if (label.component & DataPointLabel::Name) lines << scene.data().rows[place].label;
  if (label.component & DataPointLabel::Value) {
    lines << formatNumber(scene.data().rows[place].value, label.ValueFormat);
  }
  if (label.component & DataPointLabel::Percent) {
    lines << formatNumber(scene.shares()[place], label.PercentFormat);
  }
  return lines;
}

QRectF labelRect(const ChartScene& scene, int row, const DataPointLabel& label) {
  const QFontMetricsF metrics(fontOf(label, scene.font()));
  double wide = 0;
  const QStringList lines = labelLines(scene, row, label);
  for (const QString& line : lines) wide = std::max(wide, metrics.horizontalAdvance(line));
  wide = std::min(std::ceil(wide) + 2 * kPadding, scene.layout().plot.width() * kWidest);
  const double high = static_cast<double>(lines.size()) * metrics.lineSpacing() + 2 * kPadding;
  QRectF box(0, 0, wide, high);
  if (label.LocationType == DataPointLabel::InSlice) {
    box.moveCenter(isDrawn(scene, row) ? anchorOf(scene, row) : scene.layout().plot.center());
  } else {
    box.moveCenter(anchorOf(scene, row) - QPointF(0, high / 2 + kAbove));
  }
  return keptInside(box, scene.layout().plot);
}

void paintLabel(QPainter& painter, const ChartScene& scene, int row, const DataPointLabel& label) {
  if (label.component == DataPointLabel::Nothing) return;
  const QRectF box = labelRect(scene, row, label);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(label.FontColor, 1));
  painter.setBrush(label.FillColor);
  // A bar may be too narrow to be seen below its label: a mark says which one is meant.
  if (!scene.pie()) painter.drawEllipse(anchorOf(scene, row), kPointer, kPointer);
  if (!label.filled) painter.setBrush(Qt::NoBrush);
  if (label.filled) painter.drawRect(box);
  painter.setFont(fontOf(label, scene.font()));
  painter.setPen(label.FontColor);
  const QFontMetricsF metrics(painter.font());
  QStringList lines;
  for (const QString& line : labelLines(scene, row, label)) {
    lines << metrics.elidedText(line, Qt::ElideRight, box.width() - 2 * kPadding + 1);
  }
  painter.drawText(box, Qt::AlignCenter, lines.join(u'\n'));
}

}  // namespace platform
