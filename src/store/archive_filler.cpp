#include "store/archive_filler.h"

#include "store/connection.h"
#include "store/row_writer.h"
#include "store/write_anew.h"

namespace store {

ArchiveFiller::ArchiveFiller(const QString& model, const QString& path) {
  writeAnew(model, path, [] { return true; });
  connection_ = guarded([&] { return std::make_unique<Connection>(path, SQLite::OPEN_READWRITE); });
  connection_->begin();
}

ArchiveFiller::~ArchiveFiller() {
  connection_->rollback();
}

QVector<FieldInfo> ArchiveFiller::columns(const QString& table) const {
  QVector<FieldInfo> columns;
  const TableInfo* info = connection_->table(table);
  if (info == nullptr) return columns;
  for (const ColumnInfo& column : info->columns) {
    columns.append({column.name, info->name, column.name, column.kind, column.size, {}, true});
  }
  return columns;
}

void ArchiveFiller::empty(const QString& table) {
  guarded([&] { connection_->execute("DELETE FROM " + sql::quoteName(table)); });
}

void ArchiveFiller::remove(const QString& table, const QString& column, const QVariant& value) {
  guarded([&] {
    connection_->execute(
        "DELETE FROM " + sql::quoteName(table) + " WHERE " + sql::quoteName(column) + " = ?",
        {value});
  });
}

void ArchiveFiller::insert(const QString& table,
                           const QVector<std::pair<QString, QVariant>>& values) {
  guarded([&] { insertInto(*connection_, *connection_->table(table), values); });
}

void ArchiveFiller::commit() {
  guarded([&] { connection_->commit(); });
}

QVariant ArchiveFiller::convert(const QVariant& value, const FieldInfo& column) {
  return toKind(value, column);
}

}  // namespace store
