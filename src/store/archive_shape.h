#pragma once

#include <QByteArray>
#include <vector>

#include "store/page_rows.h"

namespace SQLite {
class Database;
}

namespace store {

// What the rows of an archive's tables look like, to know them by where nothing else tells.
struct ShapeColumn {
  QByteArray name;
  QByteArray type;  // as declared
  bool isText = false;
  bool isYesNo = false;
};
struct TableShape {
  QByteArray name;
  std::vector<ShapeColumn> columns;
  int keyColumn = -1;  // which a row's key stands for
  qint64 root = 0;     // 0 if it is not known

  int column(const QByteArray& named) const;  // without case; -1 if there is none
  // Whether a row may be one of this table's, by its number of columns alone or by their kinds.
  bool hasRoomFor(const StoredRow& row) const;
  bool fits(const StoredRow& row) const;
  // Whether a row that fits answers a yes or no: numbers of another meaning hardly would.
  bool answers(const StoredRow& row) const;
};
struct IndexShape {
  QByteArray name;
  QByteArray sql;
  int table = 0;
  std::vector<int> columns;  // of the table
  qint64 root = 0;
};
struct ArchiveShape {
  std::vector<TableShape> tables;
  std::vector<IndexShape> indexes;

  int table(const QByteArray& named) const;  // -1 if there is none
};

ArchiveShape shapeOf(SQLite::Database& database);
// Of a damaged archive: the model's tables and indexes, as its own schema says them as far as that
// can be read.
ArchiveShape shapeOf(const std::vector<StoredRow>& schema, const ArchiveShape& model);
// The table that holds the schema itself.
TableShape shapeOfSchema();

}  // namespace store
