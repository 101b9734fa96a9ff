#pragma once

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <stdexcept>

#include "store/sqlite_language.h"
#include "tools/archive_template.h"
#include "tools/generated_archive.h"

// Archives as files: their bytes, and what they hold as SQLite alone sees it.
namespace plain {

inline QByteArray bytesOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline void write(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
    throw std::runtime_error("cannot write " + path.toStdString());
  }
}

// A number that the environment may set.
inline int setting(const char* name, int usual) {
  bool ok = false;
  const int value = qEnvironmentVariableIntValue(name, &ok);
  return ok ? value : usual;
}

// An archive with some records, and lookup lists of five texts or so.
inline QByteArray smallArchive(int records) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("buono.tvx"));
  tavolix::builder::buildArchive(
      qEnvironmentVariable("TAVOLIX_SOURCE") + QStringLiteral("/data"), path,
      [&](store::Database& database) {
        tavolix::builder::addGeneratedRecords(database, {records, 3, {}});
      });
  {
    SQLite::Database file(path.toStdString(), SQLite::OPEN_READWRITE);
    store::addLanguage(file.getHandle());
    file.exec("DELETE FROM TAB WHERE ID % 10 > 0; UPDATE TAB SET ID = ID / 10; VACUUM");
  }
  return bytesOf(path);
}

// Everything that the tables hold, or some of them: a row a line, in the order of their numbers.
inline QByteArray contentsOf(const QString& path, const QStringList& some = {}) {
  SQLite::Database file(path.toStdString(), SQLite::OPEN_READWRITE);
  QByteArray all;
  SQLite::Statement tables(file, "SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY 1");
  while (tables.executeStep()) {
    const std::string name = tables.getColumn(0).getString();
    if (!some.isEmpty() && !some.contains(QString::fromStdString(name))) continue;
    SQLite::Statement rows(file, "SELECT rowid, * FROM \"" + name + "\" NOT INDEXED ORDER BY 1");
    while (rows.executeStep()) {
      all.append(name.c_str());
      for (int i = 0; i < rows.getColumnCount(); ++i) {
        const SQLite::Column value = rows.getColumn(i);
        all.append('|').append(value.getText(), value.getBytes());
      }
      all += '\n';
    }
  }
  return all;
}

}  // namespace plain
