#pragma once

#include "store/cursor.h"

namespace store {

// Writes a row of one table: the statements name just the columns that change.

// Returns the new row's number.
qint64 insertInto(Connection& connection, const TableInfo& table,
                  const QVector<std::pair<QString, QVariant>>& values);
// Fails with 3167 if the row is gone, 3164 for the row's own key.
void updateIn(Connection& connection, const TableInfo& table, qint64 key,
              const QVector<std::pair<QString, QVariant>>& values);
void deleteFrom(Connection& connection, const TableInfo& table, qint64 key);

// A value as a column of the kind stores it. Fails with 3421 (of another kind), 6 (out of the
// kind's range), 3163 (text too long).
QVariant toKind(const QVariant& value, const FieldInfo& field);

}  // namespace store
