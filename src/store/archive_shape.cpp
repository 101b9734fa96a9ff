#include "store/archive_shape.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <optional>

#include "store/sqlite_language.h"

namespace store {
namespace {

using Kind = StoredValue::Kind;

enum SchemaColumn { kType, kName, kTable, kRoot, kSql, kSchemaColumns };

bool isSameName(const QByteArray& a, const QByteArray& b) {
  return a.compare(b, Qt::CaseInsensitive) == 0;
}

QByteArray textAt(SQLite::Statement& statement, int column) {
  const SQLite::Column value = statement.getColumn(column);
  return QByteArray(value.getText(), value.getBytes());
}

// As the engine tells it from the declaration.
bool isTextType(const QByteArray& type) {
  const QByteArray capitals = type.toUpper();
  if (capitals.contains("INT")) return false;
  return capitals.contains("CHAR") || capitals.contains("CLOB") || capitals.contains("TEXT");
}

TableShape tableShape(SQLite::Database& database, const QByteArray& name, qint64 root) {
  TableShape shape;
  shape.name = name;
  shape.root = root;
  SQLite::Statement columns(database, "SELECT name, type, pk FROM pragma_table_info(?)");
  columns.bind(1, name.toStdString());
  while (columns.executeStep()) {
    const QByteArray type = textAt(columns, 1);
    if (columns.getColumn(2).getInt() == 1 && isSameName(type, "INTEGER")) {
      shape.keyColumn = static_cast<int>(shape.columns.size());
    }
    shape.columns.push_back({textAt(columns, 0), type, isTextType(type), type == "YESNO"});
  }
  return shape;
}

void addIndexes(SQLite::Database& database, ArchiveShape& shape) {
  SQLite::Statement all(database,
                        "SELECT name, coalesce(sql, ''), tbl_name, rootpage FROM sqlite_schema "
                        "WHERE type = 'index'");
  while (all.executeStep()) {
    IndexShape index{textAt(all, 0),
                     textAt(all, 1),
                     shape.table(textAt(all, 2)),
                     {},
                     all.getColumn(3).getInt64()};
    if (index.table < 0) continue;
    SQLite::Statement columns(database, "SELECT cid FROM pragma_index_info(?)");
    columns.bind(1, index.name.toStdString());
    while (columns.executeStep()) index.columns.push_back(columns.getColumn(0).getInt());
    shape.indexes.push_back(std::move(index));
  }
}

// Of one statement of an archive's schema, which only declares: nothing is run but by a limit.
std::optional<TableShape> declared(const QByteArray& sql, const QByteArray& name) {
  SQLite::Database memory(":memory:", SQLite::OPEN_READWRITE);
  addLanguage(memory.getHandle());
  constexpr int kMostSteps = 10000;
  sqlite3_progress_handler(
      memory.getHandle(), kMostSteps, [](void*) { return 1; }, nullptr);
  if (!sql.startsWith("CREATE TABLE") || sql.contains(';')) return {};
  if (memory.tryExec(sql.toStdString()) != SQLITE_OK) return {};
  TableShape shape = tableShape(memory, name, 0);
  return shape.columns.empty() ? std::nullopt : std::optional(std::move(shape));
}

qint64 rootIn(const StoredRow& row) {
  const StoredValue& root = row.values[kRoot];
  return root.kind == Kind::Integer ? root.integer : 0;
}

const StoredRow* rowOf(const std::vector<StoredRow>& schema, const QByteArray& type,
                       const QByteArray& name) {
  const auto found = std::find_if(schema.begin(), schema.end(), [&](const StoredRow& row) {
    return row.values.size() == kSchemaColumns && row.values[kType].bytes == type &&
           isSameName(row.values[kName].bytes, name);
  });
  return found == schema.end() ? nullptr : &*found;
}

}  // namespace

int TableShape::column(const QByteArray& named) const {
  const auto found = std::find_if(columns.begin(), columns.end(), [&](const ShapeColumn& column) {
    return isSameName(column.name, named);
  });
  return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

// Rows written before a column was added have fewer.
bool TableShape::hasRoomFor(const StoredRow& row) const {
  const auto key = static_cast<std::size_t>(keyColumn);
  return row.values.size() <= columns.size() && !row.values.empty() &&
         (keyColumn < 0 || row.values.size() <= key || row.values[key].kind == Kind::Null);
}

bool TableShape::fits(const StoredRow& row) const {
  if (!hasRoomFor(row) || (row.values.size() != columns.size() && !row.isCut)) return false;
  for (std::size_t i = 0; i < row.values.size(); ++i) {
    const StoredValue& value = row.values[i];
    if (value.kind == Kind::Null) continue;
    if (value.kind == Kind::Blob || columns[i].isText == value.isNumber()) return false;
    if (columns[i].isYesNo && std::abs(value.number()) > 1) return false;
  }
  return true;
}

bool TableShape::answers(const StoredRow& row) const {
  bool found = false;
  for (std::size_t i = 0; i < std::min(columns.size(), row.values.size()); ++i) {
    if (!columns[i].isYesNo) continue;
    if (row.values[i].kind == Kind::Null) return false;
    found = true;
  }
  return found;
}

int ArchiveShape::table(const QByteArray& named) const {
  const auto found = std::find_if(tables.begin(), tables.end(), [&](const TableShape& table) {
    return isSameName(table.name, named);
  });
  return found == tables.end() ? -1 : static_cast<int>(found - tables.begin());
}

ArchiveShape shapeOf(SQLite::Database& database) {
  ArchiveShape shape;
  SQLite::Statement all(database, "SELECT name, rootpage FROM sqlite_schema WHERE type = 'table'");
  while (all.executeStep()) {
    shape.tables.push_back(tableShape(database, textAt(all, 0), all.getColumn(1).getInt64()));
  }
  addIndexes(database, shape);
  return shape;
}

ArchiveShape shapeOf(const std::vector<StoredRow>& schema, const ArchiveShape& model) {
  ArchiveShape shape = model;
  for (TableShape& table : shape.tables) {
    const StoredRow* const row = rowOf(schema, "table", table.name);
    table.root = row == nullptr ? 0 : rootIn(*row);
    if (row == nullptr || !row->isSure) continue;
    const qint64 root = table.root;
    table = declared(row->values[kSql].bytes, table.name).value_or(table);
    table.root = root;
  }
  for (IndexShape& index : shape.indexes) {
    const StoredRow* const row = rowOf(schema, "index", index.name);
    const bool isModels = row != nullptr && row->isSure && row->values[kSql].bytes == index.sql;
    index.root = isModels ? rootIn(*row) : 0;
    const auto table = static_cast<std::size_t>(index.table);
    for (int& column : index.columns) {
      if (column < 0) continue;
      const auto named = static_cast<std::size_t>(column);
      column = shape.tables[table].column(model.tables[table].columns[named].name);
      if (column < 0) index.root = 0;
    }
  }
  return shape;
}

TableShape shapeOfSchema() {
  return {"sqlite_schema",
          {{"type", "TEXT", true, false},
           {"name", "TEXT", true, false},
           {"tbl_name", "TEXT", true, false},
           {"rootpage", "INT", false, false},
           {"sql", "TEXT", true, false}},
          -1,
          1};
}

}  // namespace store
