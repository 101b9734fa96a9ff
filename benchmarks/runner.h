#pragma once

#include <QString>
#include <QVector>
#include <chrono>
#include <utility>

namespace bench {

enum class Unit { Seconds, Bytes };

// A line of the table: what was measured, what it is compared with (the other side, or the limit
// itself), and how many times as much it may be.
struct Reading {
  QString name;
  double ours = 0;
  double other = 0;
  double limit = 1;  // 0 for a line that is for information only
  Unit unit = Unit::Seconds;

  double ratio() const { return ours / other; }
  bool isOver() const { return limit > 0 && !(ratio() <= limit); }
};

void printHeading();
void print(const Reading& reading);

// Seconds or bytes, one for each round.
using Samples = QVector<double>;
double median(Samples samples);

// Seconds that a work takes.
template <typename Work>
double secondsOf(Work&& work) {
  const auto start = std::chrono::steady_clock::now();
  std::forward<Work>(work)();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

struct Sides {
  Samples ours;
  Samples other;
};

// Takes a sample of either side in each round, in turn which one comes first, so that both meet
// the same machine. A first round of both warms up and does not count.
template <typename Ours, typename Other>
Sides inTurn(int rounds, Ours&& ours, Other&& other) {
  Sides sides;
  ours();
  other();
  for (int i = 0; i < rounds; ++i) {
    if (i % 2 == 0) sides.ours.append(ours());
    sides.other.append(other());
    if (i % 2 != 0) sides.ours.append(ours());
  }
  return sides;
}

// Medians of the two sides.
Reading compared(const QString& name, const Sides& sides, double limit);

}  // namespace bench
