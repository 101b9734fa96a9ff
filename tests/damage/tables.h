#pragma once

#include <SQLiteCpp/Database.h>

#include <QString>
#include <optional>

#include "harm/archive_file.h"

namespace damage {

// An archive's lists as they follow from its tables alone. Every table is read from end to end,
// with no index to help, into a copy in memory, and SQLite puts the lists together there. Nothing
// where a table cannot be read or holds two rows of one number: then there is no telling.
class Tables final {
 public:
  explicit Tables(const QString& path);

  // What a stored query lists, if the archive still holds its `good` text.
  std::optional<QVector<harm::Row>> list(const QString& query, const QString& good);
  // Rows of a table with some values in its first columns, in the order of all these columns.
  std::optional<QVector<harm::Row>> rows(const QString& table, const QStringList& columns,
                                         const QVariantList& values);

 private:
  void copy(const QByteArray& table);
  std::optional<QVector<harm::Row>> found(const QString& query, const QVariantList& values = {});

  SQLite::Database copy_;
};

}  // namespace damage
