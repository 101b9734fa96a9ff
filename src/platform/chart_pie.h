#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <vector>

namespace platform {

// A round slab of slices seen from a height, without perspective: what is on top keeps its shares.
// Angles are told in turns, clockwise from the far side.
class ChartPie final {
 public:
  // What is painted as one: a row, or some in a row that are too thin to be told apart.
  struct Wedge {
    int first;
    int last;
    double start;
    double span;
    bool isGathered() const { return last > first; }
  };

  // The largest pie in a room, seen from an elevation in degrees (90: from above, flat). Shares
  // below 0 have no slice. A slice shows if its arc is as wide as `least`.
  ChartPie(const std::vector<double>& shares, const QRectF& room, double elevation, double least);

  const std::vector<Wedge>& wedges() const { return wedges_; }
  // Rows that are painted together with others.
  int gatheredRows() const;
  // The upper face, and what shows of the rim (empty at the far side).
  QPainterPath face(double start, double span) const;
  QPainterPath rim(double start, double span) const;
  double arcOf(double span) const;
  // The row that shows at a point, upper face or rim; -1 for none.
  int rowAt(const QPointF& point) const;
  // A point of a row's upper face: at `depth` of the radius, on its middle line.
  QPointF middleOf(int row, double depth) const;
  double startOf(int row) const { return starts_[static_cast<std::size_t>(row)]; }
  double spanOf(int row) const;
  QRectF bounds() const;
  double radius() const { return across_; }
  QPointF center() const { return center_; }

 private:
  void gather(double least);
  int rowAtAngle(double turns) const;
  QPointF onEdge(double turns) const;
  QRectF ellipse() const;

  std::vector<double> starts_;  // of each row, and the end
  std::vector<Wedge> wedges_;
  QPointF center_;
  double across_ = 0;  // half of the width
  double along_ = 0;   // half of the height of the upper face
  double thick_ = 0;
};

}  // namespace platform
