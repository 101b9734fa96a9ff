#include "platform/chart_bars.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace platform {
namespace {

constexpr double kBarShare = 0.7;    // of the room of each
constexpr double kWidest = 90;       // pixels
constexpr double kGapFrom = 4;       // pixels a bar: narrower ones touch
constexpr double kLeastDepth = 8;    // pixels
constexpr double kMostDepth = 0.12;  // of the row's width
constexpr double kReach = 5;         // pixels around the foot of a bar too low to be hit
constexpr double kTopLight = 1;
constexpr double kFrontLight = 0.86;
constexpr double kSideLight = 0.66;

double radians(double degrees) {
  return degrees / 180 * std::numbers::pi;
}

// 1, 2 or 5 times a power of ten, not below the width.
double easyStep(double width) {
  const double ten = std::pow(10, std::floor(std::log10(width)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (width <= ten * factor * (1 + 1e-9)) return ten * factor;
  }
  return ten * 10;
}

}  // namespace

ChartAxis axisFor(const std::vector<ChartRow>& rows, int steps) {
  double low = 0;
  double high = 0;
  for (const ChartRow& row : rows) {
    low = std::min(low, row.value);
    high = std::max(high, row.value);
  }
  if (low == high) high = 1;
  ChartAxis axis;
  axis.step = easyStep((high - low) / std::max(1, steps));
  axis.low = std::floor(low / axis.step + 1e-9) * axis.step;
  axis.high = std::ceil(high / axis.step - 1e-9) * axis.step;
  return axis;
}

ChartBars::ChartBars(const std::vector<ChartRow>& rows, const ChartAxis& axis, const QRectF& room,
                     const ChartView& view, double least)
    : axis_(axis),
      sine_(std::sin(radians(view.rotation))),
      cosine_(std::cos(radians(view.rotation))),
      sineUp_(std::sin(radians(view.elevation))),
      cosineUp_(std::cos(radians(view.elevation))) {
  if (!view.isFlat() && !rows.empty()) {
    const double each = room.width() / static_cast<double>(rows.size());
    depth_ =
        std::clamp(each * kBarShare, kLeastDepth, std::max(kLeastDepth, room.width() * kMostDepth));
  }
  fit(room);
  place(rows, least);
}

void ChartBars::fit(const QRectF& room) {
  width_ = std::max(1.0, (room.width() - depth_ * std::abs(sine_)) / cosine_);
  const double nearest = std::min(0.0, width_ * sine_);
  const double farthest = depth_ * cosine_ + std::max(0.0, width_ * sine_);
  const double height = std::max(1.0, room.height() - (farthest - nearest) * sineUp_) / cosineUp_;
  unit_ = height / (axis_.high - axis_.low);
  origin_ = {room.left() + std::max(0.0, depth_ * sine_),
             room.bottom() + axis_.low * unit_ * cosineUp_ + nearest * sineUp_};
}

QPointF ChartBars::project(double along, double value, double away) const {
  const double far = along * sine_ + away * cosine_;
  return origin_ +
         QPointF(along * cosine_ - away * sine_, -(value * unit_ * cosineUp_ + far * sineUp_));
}

void ChartBars::place(const std::vector<ChartRow>& rows, double least) {
  if (rows.empty()) return;
  const int count = static_cast<int>(rows.size());
  together_ = std::max(1, static_cast<int>(std::ceil(least * count / width_)));
  const double each = width_ / count;
  for (int first = 0; first < count; first += together_) {
    const int end = std::min(count, first + together_);
    int shown = first;
    for (int row = first; row < end; ++row) {
      const auto size = [&](int i) { return std::abs(rows[static_cast<std::size_t>(i)].value); };
      if (size(row) > size(shown)) shown = row;
    }
    const double room = each * (end - first);
    const double wide = room < kGapFrom ? room : std::min(kWidest, room * kBarShare);
    const double middle = each * (first + end) / 2;
    bars_.push_back(
        {shown, middle - wide / 2, middle + wide / 2, rows[static_cast<std::size_t>(shown)].value});
  }
  // Turned so that their right sides show, the right ones are nearer.
  if (sine_ > 0) std::reverse(bars_.begin(), bars_.end());
}

std::vector<ChartBars::Face> ChartBars::facesOf(const Bar& bar) const {
  const double low = std::min(0.0, bar.value);
  const double high = std::max(0.0, bar.value);
  const auto at = [this](double x, double y, double z) { return project(x, y, z); };
  std::vector<Face> faces;
  if (depth_ > 0) {
    const double side = sine_ <= 0 ? bar.right : bar.left;
    faces.push_back(
        {{{at(side, low, 0), at(side, low, depth_), at(side, high, depth_), at(side, high, 0)}},
         kSideLight});
    faces.push_back({{{at(bar.left, high, 0), at(bar.right, high, 0), at(bar.right, high, depth_),
                       at(bar.left, high, depth_)}},
                     kTopLight});
  }
  faces.push_back({frontOf(bar), depth_ > 0 ? kFrontLight : kTopLight});
  return faces;
}

QPolygonF ChartBars::frontOf(const Bar& bar) const {
  const double low = std::min(0.0, bar.value);
  const double high = std::max(0.0, bar.value);
  return {{project(bar.left, low, 0), project(bar.right, low, 0), project(bar.right, high, 0),
           project(bar.left, high, 0)}};
}

std::vector<ChartBars::Face> ChartBars::walls() const {
  const auto at = [this](double x, double y, double z) { return project(x, y, z); };
  const double side = farSide();
  std::vector<Face> faces{{{{at(0, axis_.low, depth_), at(width_, axis_.low, depth_),
                             at(width_, axis_.high, depth_), at(0, axis_.high, depth_)}},
                           1}};
  if (depth_ <= 0) return faces;
  faces.push_back({{{at(side, axis_.low, 0), at(side, axis_.low, depth_),
                     at(side, axis_.high, depth_), at(side, axis_.high, 0)}},
                   0.95});
  faces.push_back({{{at(0, axis_.low, 0), at(width_, axis_.low, 0), at(width_, axis_.low, depth_),
                     at(0, axis_.low, depth_)}},
                   0.9});
  return faces;
}

QPolygonF ChartBars::gridLine(double value) const {
  const double side = farSide();
  return {{project(side, value, 0), project(side, value, depth_),
           project(width_ - side, value, depth_)}};
}

double ChartBars::pitch() const {
  return bars_.empty() ? 0 : width_ * cosine_ / static_cast<double>(bars_.size());
}

double ChartBars::heightOf(double value) const {
  return std::abs(value) * unit_ * cosineUp_;
}

const ChartBars::Bar& ChartBars::barOf(int row) const {
  const int last = static_cast<int>(bars_.size()) - 1;
  const int place = std::clamp(row / together_, 0, last);
  return bars_[static_cast<std::size_t>(sine_ > 0 ? last - place : place)];
}

QPointF ChartBars::footOf(const Bar& bar) const {
  return project((bar.left + bar.right) / 2, axis_.low, 0);
}

QPointF ChartBars::tipOf(int row) const {
  const Bar& bar = barOf(row);
  return project((bar.left + bar.right) / 2, bar.value, bar.value > 0 ? depth_ / 2 : 0);
}

int ChartBars::rowAt(const QPointF& point) const {
  for (auto bar = bars_.rbegin(); bar != bars_.rend(); ++bar) {
    for (const Face& face : facesOf(*bar)) {
      if (face.shape.containsPoint(point, Qt::OddEvenFill)) return bar->row;
    }
  }
  for (const Bar& bar : bars_) {
    if (heightOf(bar.value) >= kReach) continue;
    const QRectF front = frontOf(bar).boundingRect();
    if (front.adjusted(0, -kReach, 0, kReach).contains(point)) return bar.row;
  }
  return -1;
}

}  // namespace platform
