#include "harm/archive_file.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <QFile>
#include <QTemporaryDir>
#include <stdexcept>

#include "store/page_checksum.h"
#include "store/sqlite_language.h"
#include "tools/archive_template.h"
#include "tools/generated_archive.h"

namespace harm {
namespace {

void execute(const QString& path, const QByteArray& statements,
             const char* layer = store::checkedFileLayer()) {
  SQLite::Database file(path.toStdString(), SQLite::OPEN_READWRITE, 0,
                        layer == nullptr ? "" : layer);
  store::addLanguage(file.getHandle());
  file.exec("PRAGMA synchronous = OFF; " + statements.toStdString());
}

}  // namespace

QByteArray bytesOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
    throw std::runtime_error("cannot write " + path.toStdString());
  }
}

QByteArray smallArchive(int records) {
  using namespace tavolix::builder;
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("buono.tvx"));
  buildArchive(qEnvironmentVariable("TAVOLIX_SOURCE") + QStringLiteral("/data"), path,
               [&](store::Database& database) {
                 addGeneratedRecords(database, {records, 3, {}});
               });
  execute(path, "DELETE FROM TAB WHERE ID % 10 > 0; UPDATE TAB SET ID = ID / 10; VACUUM");
  return bytesOf(path);
}

QByteArray after(const QByteArray& file, const std::vector<QByteArray>& parts,
                 Checksums checksums) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("altro.tvx"));
  write(path, file);
  for (const QByteArray& part : parts) {
    execute(path, part, checksums == Checksums::Kept ? store::checkedFileLayer() : nullptr);
  }
  return bytesOf(path);
}

QByteArray contentsOf(const QString& path, const QStringList& some) {
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

QVector<Row> rowsOf(const store::Recordset& rows) {
  QVector<Row> all(rows.RecordCount());
  for (qint64 row = 0; row < all.size(); ++row) {
    for (int field = 0; field < rows.Fields().size(); ++field) {
      all[row].append(rows.ValueAt(row, field));
    }
  }
  return all;
}

}  // namespace harm
