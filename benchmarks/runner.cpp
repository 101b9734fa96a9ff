#include "runner.h"

#include <algorithm>
#include <cstdio>

namespace bench {
namespace {

QByteArray written(double value, Unit unit) {
  if (unit == Unit::Bytes) return QByteArray::number(value / 1048576.0, 'f', 2) + " MiB";
  if (value >= 1) return QByteArray::number(value, 'f', 2) + " s";
  return QByteArray::number(value * 1000, 'f', value < 0.01 ? 3 : 1) + " ms";
}

}  // namespace

double median(Samples samples) {
  if (samples.isEmpty()) qFatal("nothing was measured");
  const auto middle = samples.begin() + samples.size() / 2;
  std::nth_element(samples.begin(), middle, samples.end());
  if (samples.size() % 2 != 0) return *middle;
  return (*middle + *std::max_element(samples.begin(), middle)) / 2;
}

Reading compared(const QString& name, const Sides& sides, double limit) {
  return {name, median(sides.ours), median(sides.other), limit};
}

void printHeading() {
  std::printf("%-18s %12s %12s %8s %8s\n", "figure", "ours", "other side", "ratio", "limit");
}

void print(const Reading& reading) {
  const bool counts = reading.limit > 0;
  const QByteArray limit = counts ? QByteArray::number(reading.limit, 'f', 1) + 'x' : "-";
  const char* verdict = !counts ? "info" : reading.isOver() ? "over" : "ok";
  std::printf("%-18s %12s %12s %7.2fx %8s %s\n", qPrintable(reading.name),
              written(reading.ours, reading.unit).constData(),
              written(reading.other, reading.unit).constData(), reading.ratio(), limit.constData(),
              verdict);
  std::fflush(stdout);
}

}  // namespace bench
