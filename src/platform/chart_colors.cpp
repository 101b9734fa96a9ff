#include "platform/chart_colors.h"

#include <iterator>

namespace platform {
namespace {

// The hues of Okabe and Ito ("Color Universal Design", 2008), in an order that keeps those apart
// which are alike for one of the three.
constexpr QRgb kHues[] = {0xFF0072B2, 0xFFE69F00, 0xFF009E73, 0xFFF0E442,
                          0xFFD55E00, 0xFF56B4E9, 0xFFCC79A7};
constexpr int kCount = static_cast<int>(std::size(kHues));
// Each round through the hues is lighter or darker than the one before.
constexpr int kRounds[] = {100, 128, 78};
constexpr QRgb kGathered[] = {0xFF7F868E, 0xFFAEB4BB};

}  // namespace

QColor chartColor(int row, int rows) {
  // The last one touches the first: it takes the hue in the middle instead.
  const bool meetsFirst = rows > 1 && row == rows - 1 && row % kCount == 0;
  const int hue = meetsFirst ? kCount / 2 : row % kCount;
  const auto round = static_cast<std::size_t>(row / kCount) % std::size(kRounds);
  return QColor(kHues[hue]).lighter(kRounds[round]);
}

QColor gatheredColor(int place) {
  return QColor(kGathered[place % 2]);
}

QColor shaded(const QColor& color, double light) {
  return QColor::fromRgbF(static_cast<float>(color.redF() * light),
                          static_cast<float>(color.greenF() * light),
                          static_cast<float>(color.blueF() * light));
}

}  // namespace platform
