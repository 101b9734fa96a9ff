#include "platform/chart_pie.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace platform {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;
constexpr double kThickness = 0.3;   // of the radius
constexpr double kGatheredArc = 3;   // pixels: what rows too thin to be told apart make up
constexpr double kRightMost = 0.25;  // where the rim comes into view
constexpr double kLeftMost = 0.75;   // and where it goes out of it

double degreesOf(double turns) {
  return 90 - turns * 360;
}

}  // namespace

ChartPie::ChartPie(const std::vector<double>& shares, const QRectF& room, double elevation,
                   double least) {
  const double tilt = elevation / 360 * kTurn;
  const double high = 2 * std::sin(tilt) + kThickness * std::cos(tilt);
  across_ = std::max(1.0, std::min(room.width() / 2, room.height() / high));
  along_ = across_ * std::sin(tilt);
  thick_ = elevation < 90 ? across_ * kThickness * std::cos(tilt) : 0;
  center_ = room.center() - QPointF(0, thick_ / 2);
  double end = 0;
  for (const double share : shares) {
    starts_.push_back(end);
    end += std::max(0.0, share);
  }
  starts_.push_back(end);
  gather(least);
}

double ChartPie::spanOf(int row) const {
  const auto place = static_cast<std::size_t>(row);
  return starts_[place + 1] - starts_[place];
}

double ChartPie::arcOf(double span) const {
  return span * kTurn * across_;
}

void ChartPie::gather(double least) {
  bool open = false;  // the last wedge takes more thin ones
  for (int row = 0; row + 1 < static_cast<int>(starts_.size()); ++row) {
    const double span = spanOf(row);
    if (span <= 0) continue;
    const bool thin = arcOf(span) < least;
    if (thin && open) {
      wedges_.back().last = row;
      wedges_.back().span = startOf(row) + span - wedges_.back().start;
    } else {
      wedges_.push_back({row, row, startOf(row), span});
    }
    open = thin && arcOf(wedges_.back().span) < kGatheredArc;
  }
}

int ChartPie::gatheredRows() const {
  int rows = 0;
  for (const Wedge& wedge : wedges_) {
    for (int row = wedge.first; wedge.isGathered() && row <= wedge.last; ++row) {
      rows += spanOf(row) > 0 ? 1 : 0;
    }
  }
  return rows;
}

QPointF ChartPie::onEdge(double turns) const {
  return center_ + QPointF(across_ * std::sin(turns * kTurn), -along_ * std::cos(turns * kTurn));
}

QRectF ChartPie::ellipse() const {
  return {center_.x() - across_, center_.y() - along_, 2 * across_, 2 * along_};
}

QRectF ChartPie::bounds() const {
  return ellipse().adjusted(0, 0, 0, thick_);
}

QPainterPath ChartPie::face(double start, double span) const {
  QPainterPath path;
  if (span >= 1) {
    path.addEllipse(ellipse());
    return path;
  }
  path.moveTo(center_);
  path.arcTo(ellipse(), degreesOf(start), -span * 360);
  path.closeSubpath();
  return path;
}

QPainterPath ChartPie::rim(double start, double span) const {
  QPainterPath path;
  const double from = std::max(start, kRightMost);
  const double to = std::min(start + span, kLeftMost);
  if (thick_ <= 0 || from >= to) return path;
  const QRectF lower = ellipse().translated(0, thick_);
  path.moveTo(onEdge(from));
  path.arcTo(ellipse(), degreesOf(from), (from - to) * 360);
  path.lineTo(onEdge(to) + QPointF(0, thick_));
  path.arcTo(lower, degreesOf(to), (to - from) * 360);
  path.closeSubpath();
  return path;
}

int ChartPie::rowAtAngle(double turns) const {
  if (turns >= starts_.back()) turns = starts_.back() * (1 - 1e-12);
  const auto next = std::upper_bound(starts_.begin(), starts_.end(), turns);
  return static_cast<int>(next - starts_.begin()) - 1;
}

int ChartPie::rowAt(const QPointF& point) const {
  if (wedges_.empty()) return -1;
  const double x = (point.x() - center_.x()) / across_;
  const double y = (point.y() - center_.y()) / along_;
  if (x * x + y * y <= 1) {
    const double turns = std::atan2(x, -y) / kTurn;
    return rowAtAngle(turns < 0 ? turns + 1 : turns);
  }
  if (std::abs(x) > 1) return -1;
  const double edge = center_.y() + along_ * std::sqrt(1 - x * x);
  if (point.y() < edge || point.y() > edge + thick_) return -1;
  return rowAtAngle(0.5 - std::asin(x) / kTurn);
}

QPointF ChartPie::middleOf(int row, double depth) const {
  const double turns = startOf(row) + spanOf(row) / 2;
  return center_ + (onEdge(turns) - center_) * (spanOf(row) >= 1 ? 0 : depth);
}

}  // namespace platform
