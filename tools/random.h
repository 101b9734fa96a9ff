#pragma once

#include <QtGlobal>

namespace tavolix::builder {

// Pseudo-random numbers that are the same everywhere for the same seed (SplitMix64, Steele, Lea and
// Flood 2014).
class Random final {
 public:
  explicit Random(quint64 seed) : state_(seed) {}

  quint64 next() {
    state_ += 0x9e3779b97f4a7c15;
    quint64 mixed = state_;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111eb;
    return mixed ^ (mixed >> 31);
  }
  // From 0 to `count` - 1; `count` is at least 1.
  qint64 below(qint64 count) { return static_cast<qint64>(next() % static_cast<quint64>(count)); }
  qint64 between(qint64 least, qint64 most) { return least + below(most - least + 1); }
  bool chance(int percent) { return below(100) < percent; }

 private:
  quint64 state_;
};

}  // namespace tavolix::builder
