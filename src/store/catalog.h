#pragma once

#include <QVector>
#include <optional>

#include "store/field_info.h"

namespace store {

struct ColumnInfo {
  QString name;
  FieldKind kind = FieldKind::Text;
  int size = 0;
};

struct IndexInfo {
  QString name;  // as the program names it: "1u", "2"
  QVector<int> columns;
  bool unique = false;
  bool stored = true;  // false for "1u" where that is the key column itself
};

struct TableInfo {
  QString name;
  QVector<ColumnInfo> columns;
  QVector<IndexInfo> indexes;
  int keyColumn = -1;  // the column that is the row's number in the file

  int findColumn(const QString& column) const;
};

// What an archive holds, as its own file tells it.
class Catalog {
 public:
  Catalog() = default;
  virtual ~Catalog() = default;
  Catalog(const Catalog&) = delete;
  Catalog& operator=(const Catalog&) = delete;

  // Null if there is no such table; names without case.
  virtual const TableInfo* table(const QString& name) const = 0;
  virtual std::optional<QString> querySql(const QString& name) const = 0;
};

}  // namespace store
