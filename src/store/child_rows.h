#pragma once

#include <memory>

#include "store/database.h"

namespace store {

// The rows of a source that belong to a row elsewhere: those whose key column has its value, in the
// source's order. One prepared statement reads them, for one value after the other; only some of
// the rows are kept.
class ChildRows {
 public:
  ChildRows() = default;
  virtual ~ChildRows() = default;
  ChildRows(const ChildRows&) = delete;
  ChildRows& operator=(const ChildRows&) = delete;

  virtual const QVector<FieldInfo>& fields() const = 0;
  // The fields that are read from now on: value() knows them by their place in this list.
  virtual void read(const QVector<int>& fields) = 0;
  // Goes to the rows of a value; Null has none.
  virtual void seek(const QVariant& value) = 0;
  virtual bool has(qint64 row) = 0;
  // Null where there is no such row.
  virtual QVariant value(qint64 row, int place) = 0;
};

// Fails as Database::OpenRecordset does; with 3075 for a key that is no column.
std::unique_ptr<ChildRows> openChildRows(const Database& database, const QString& source,
                                         const QString& key);

}  // namespace store
