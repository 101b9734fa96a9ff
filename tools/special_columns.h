#pragma once

#include <QVariant>

#include "tools/random.h"

namespace tavolix::builder {

// A made-up record in the making: later fields follow earlier ones.
struct NewRecord {
  Random& random;
  int collection;
  qint64 number;  // counts the collection's records from 0
  qint64 place;   // counts the records of one parent from 0
  qint64 year = 1975;
  qint64 bought = 0;
  qint64 town = 0;
};

// How a column is filled whose values are more than a text, number or date of its kind.
struct SpecialColumn {
  const char* column;
  QVariant (*make)(NewRecord&);
  bool always;  // never left empty
};

// Null if the column is none of them.
const SpecialColumn* findSpecialColumn(const QString& column);

// The first day of a year, as an archive stores it.
qint64 firstDayOf(int year);

}  // namespace tavolix::builder
