#pragma once

#include <QString>

namespace store {

// Kind of a column, told by its declaration in the archive.
enum class FieldKind { Text, Number, Date, Time, YesNo, Long, Short, Counter };

// A column of a recordset. Values are QVariant: invalid for Null, QString for text, double or
// qlonglong for numbers. A date is its day number (day 0 is 30 December 1899), a time its
// seconds, yes/no is -1 and 0.
struct FieldInfo {
  QString name;    // as the recordset shows it; "TABLE.Column" where two tables share a name
  QString table;   // base table, empty for an expression
  QString column;  // column of the base table
  FieldKind kind = FieldKind::Text;
  int size = 0;       // most characters of a text, 0 without limit
  QString lookupKey;  // the recordset's field whose number selects this text from a joined list
  bool updatable = false;
};

}  // namespace store
