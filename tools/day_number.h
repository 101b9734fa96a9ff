#pragma once

#include <QDate>

namespace tavolix::builder {

// A date as an archive stores it: days since 30 December 1899.
inline qint64 dayNumber(const QDate& date) {
  return QDate(1899, 12, 30).daysTo(date);
}

}  // namespace tavolix::builder
