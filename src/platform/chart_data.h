#pragma once

#include <QString>
#include <vector>

namespace platform {

// The kinds of a chart, by the codes that its users know them by.
enum class ChartType { Bars3D = 0, Bars = 1, Pie3D = 13, Pie = 14 };

inline bool isPie(ChartType type) {
  return type == ChartType::Pie3D || type == ChartType::Pie;
}
inline bool isSolid(ChartType type) {
  return type == ChartType::Pie3D || type == ChartType::Bars3D;
}

struct ChartRow {
  QString label;
  double value = 0;
};

struct ChartData {
  std::vector<ChartRow> rows;
  ChartType type = ChartType::Pie3D;
  QString title;
  QString footnote;
  // From where a solid chart is seen, in degrees: above the ground, and how far it is turned
  // counterclockwise as seen from above.
  double elevation = 60;
  double rotation = 345;
};

// Each row's share of the whole. The whole is the sum of the values above 0; where there are none,
// that of all values. Nothing has a share of 0.
std::vector<double> sharesOf(const std::vector<ChartRow>& rows);

}  // namespace platform
