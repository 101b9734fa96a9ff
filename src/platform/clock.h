#pragma once

#include <QDate>
#include <QDateTime>

namespace platform {

// Local time, and the day it falls on. Everything that asks for the time asks here.
QDateTime now();
QDate today();

// Holds the clock still, for tests.
class ClockSeam final {
 public:
  static void setFixed(const QDateTime& moment);
  static void clear();
};

}  // namespace platform
