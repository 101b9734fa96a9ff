#pragma once

#include <QColor>
#include <QPointF>
#include <optional>

#include "platform/chart_bars.h"
#include "platform/chart_data.h"
#include "platform/chart_layout.h"
#include "platform/chart_pie.h"

namespace platform {

// A value of the scale, with the decimals that its steps have.
QString axisText(const ChartAxis& axis, double value);

// What stands at a place of a chart.
enum class ChartPart { None, Plot, Point, Title, Legend, Footnote };

// A chart worked out for one size: where everything stands and what it looks like, without a
// window.
class ChartScene final {
 public:
  // The size is in pixels of 1/96 inch, as is the font's.
  ChartScene(ChartData data, const QSizeF& size, const QFont& font, ChartMedium medium);

  const ChartData& data() const { return data_; }
  const ChartLayout& layout() const { return layout_; }
  const QFont& font() const { return font_; }
  ChartMedium medium() const { return medium_; }
  const std::vector<double>& shares() const { return shares_; }
  int rows() const { return static_cast<int>(data_.rows.size()); }
  // One of the two is there.
  const std::optional<ChartPie>& pie() const { return pie_; }
  const std::optional<ChartBars>& bars() const { return bars_; }

  ChartPart partAt(const QPointF& point) const;
  // The row that shows at a point, -1 for none.
  int rowAt(const QPointF& point) const;
  QColor colorOf(int row) const;
  // The chart's own footnote, and what its picture does not show.
  QString footnote() const;
  // Room for the names below the bars.
  double nameRoom() const { return nameRoom_; }
  bool namesLie() const { return namesLie_; }

 private:
  void makeBars();
  QStringList omissions() const;
  QStringList pieOmissions() const;
  QStringList barOmissions() const;

  ChartData data_;
  QFont font_;
  ChartMedium medium_;
  ChartLayout layout_;
  std::vector<double> shares_;
  std::optional<ChartPie> pie_;
  std::optional<ChartBars> bars_;
  double nameRoom_ = 0;
  bool namesLie_ = true;
  int low_ = 0;  // bars too low to be seen
};

}  // namespace platform
