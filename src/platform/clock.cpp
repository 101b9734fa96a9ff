#include "platform/clock.h"

namespace platform {
namespace {

// Invalid: the clock runs.
QDateTime& fixedMoment() {
  static QDateTime moment;
  return moment;
}

}  // namespace

QDateTime now() {
  return fixedMoment().isValid() ? fixedMoment() : QDateTime::currentDateTime();
}

QDate today() {
  return now().date();
}

void ClockSeam::setFixed(const QDateTime& moment) {
  fixedMoment() = moment;
}

void ClockSeam::clear() {
  fixedMoment() = {};
}

}  // namespace platform
