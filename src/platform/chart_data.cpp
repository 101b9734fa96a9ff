#include "platform/chart_data.h"

namespace platform {

std::vector<double> sharesOf(const std::vector<ChartRow>& rows) {
  double above = 0;
  double all = 0;
  for (const ChartRow& row : rows) {
    all += row.value;
    if (row.value > 0) above += row.value;
  }
  const double whole = above > 0 ? above : all;
  std::vector<double> shares;
  shares.reserve(rows.size());
  for (const ChartRow& row : rows) shares.push_back(whole == 0 ? 0 : row.value / whole);
  return shares;
}

}  // namespace platform
