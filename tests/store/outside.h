#pragma once

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <QStringList>

#include "store/page_checksum.h"
#include "store/sqlite_language.h"

namespace store {

// Another program's connection to an archive, which knows the order of texts and keeps checksums.
class Outside final : public SQLite::Database {
 public:
  explicit Outside(const QString& path, int flags = SQLite::OPEN_READWRITE)
      : Database(path.toStdString(), flags, 2000, checkedFileLayer()) {
    addLanguage(getHandle());
  }

  // What a statement gives, fields and rows parted by these signs, Null as "-".
  QString found(const QString& query, QChar fieldEnd, QChar rowEnd) {
    SQLite::Statement statement(*this, query.toStdString());
    QStringList rows;
    while (statement.executeStep()) {
      QStringList fields;
      for (int i = 0; i < statement.getColumnCount(); ++i) {
        const SQLite::Column value = statement.getColumn(i);
        fields << (value.isNull() ? "-" : QString::fromStdString(value.getString()));
      }
      rows << fields.join(fieldEnd);
    }
    return rows.join(rowEnd);
  }
};

}  // namespace store
