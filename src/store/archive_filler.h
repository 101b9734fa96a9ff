#pragma once

#include <QVariant>
#include <QVector>
#include <memory>
#include <utility>

#include "store/field_info.h"

namespace store {

class Connection;

// Fills the tables of an archive that nobody else uses, keys included, in one transaction that ends
// with commit(). All fail with Failure.
class ArchiveFiller final {
 public:
  // `path` is empty or none; the archive is made like the one at `model`.
  ArchiveFiller(const QString& model, const QString& path);
  ~ArchiveFiller();
  ArchiveFiller(const ArchiveFiller&) = delete;
  ArchiveFiller& operator=(const ArchiveFiller&) = delete;

  // The columns of a table; none if there is no such table.
  QVector<FieldInfo> columns(const QString& table) const;
  void empty(const QString& table);
  // Removes the rows with a value in a column.
  void remove(const QString& table, const QString& column, const QVariant& value);
  // Values as convert() gives them. Fails with 3022 (duplicate key); the rows before stay.
  void insert(const QString& table, const QVector<std::pair<QString, QVariant>>& values);
  void commit();

  // A value as a column of the kind stores it. Fails with 3421 (of another kind), 6 (out of range),
  // 3163 (text too long).
  static QVariant convert(const QVariant& value, const FieldInfo& column);

 private:
  std::unique_ptr<Connection> connection_;
};

}  // namespace store
