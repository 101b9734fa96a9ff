#pragma once

#include <functional>

#include "output/report_rows.h"

namespace tavolix::report {

// What a text of a band can ask for, at one place of the report.
struct Facts {
  const Rows* rows = nullptr;
  qint64 row = -1;                 // none
  const Totals* totals = nullptr;  // of what the band closes, or of the rows so far
  const Totals* whole = nullptr;   // of the whole report, for shares; null if not known
  int page = 0;
  int pages = 0;  // 0 while it is not known
  const struct Names* names = nullptr;
};

// What is the same all over a report.
struct Names {
  QString archive;
  QString title;
  QString filter;
  std::function<QString(qint64)> listText;  // the text of a lookup value by its key
};

// The text of some runs. `isEmpty`, where asked for: whether no field in it has a value.
QString textOf(const std::vector<Run>& runs, const Facts& facts, bool* isEmpty = nullptr);
bool holds(const Condition& condition, const Facts& facts);

// A field's text where nothing is said of its format.
QString usualText(const Facts& facts, int field);
// A value in a format, as the user's country writes it; empty for Null.
QString formatted(const QVariant& value, Format format, int decimals);

}  // namespace tavolix::report
