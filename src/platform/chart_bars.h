#pragma once

#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <vector>

#include "platform/chart_data.h"

namespace platform {

// The scale of values: from `low` to `high` by steps that are easy to read.
struct ChartAxis {
  double low = 0;
  double high = 1;
  double step = 1;
};
// At most `steps` steps, 0 in it.
ChartAxis axisFor(const std::vector<ChartRow>& rows, int steps);

// From where bars are seen, in degrees. Seen from the front they are flat.
struct ChartView {
  double elevation = 0;
  double rotation = 0;
  bool isFlat() const { return elevation == 0 && rotation == 0; }
};

// A row of bars on a ground, without perspective: heights keep their shares.
class ChartBars final {
 public:
  // What is painted as one: a row, or the highest of some that are too thin to be told apart.
  struct Bar {
    int row;
    double left;
    double right;
    double value;
  };
  struct Face {
    QPolygonF shape;
    double light;  // 1: all of it
  };

  // As large as fits into a room. A bar shows if it is as wide as `least`.
  ChartBars(const std::vector<ChartRow>& rows, const ChartAxis& axis, const QRectF& room,
            const ChartView& view, double least);

  const ChartAxis& axis() const { return axis_; }
  // Far ones first: each hides what it stands before.
  const std::vector<Bar>& bars() const { return bars_; }
  // Rows for each bar.
  int rowsPerBar() const { return together_; }
  // The faces that show, of which none hides another one.
  std::vector<Face> facesOf(const Bar& bar) const;
  // The walls behind the bars and the ground below them.
  std::vector<Face> walls() const;
  // The line that a value has on the walls.
  QPolygonF gridLine(double value) const;
  // The row that shows at a point; -1 for none. What is too low to be hit is hit at its foot.
  int rowAt(const QPointF& point) const;
  // The middle of the upper (or, below 0, lower) end of a row's bar, and of its foot in front.
  QPointF tipOf(int row) const;
  QPointF footOf(const Bar& bar) const;
  QPolygonF frontOf(const Bar& bar) const;
  // The bar that shows a row.
  const Bar& barOf(int row) const;
  // Pixels between the middles of two bars.
  double pitch() const;
  double heightOf(double value) const;
  // A place in the room: along the row in pixels, up in values, away from the viewer in pixels.
  QPointF project(double along, double value, double away) const;

 private:
  void place(const std::vector<ChartRow>& rows, double least);
  void fit(const QRectF& room);
  double farSide() const { return sine_ <= 0 ? 0 : width_; }

  ChartAxis axis_;
  std::vector<Bar> bars_;
  QPointF origin_;
  double sine_;  // of the rotation
  double cosine_;
  double sineUp_;  // of the elevation
  double cosineUp_;
  double width_ = 0;  // of the row
  double depth_ = 0;  // of bars and ground
  double unit_ = 1;   // pixels for a value of 1
  int together_ = 1;
};

}  // namespace platform
