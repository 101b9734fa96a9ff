#include "damage/tables.h"

#include <SQLiteCpp/Statement.h>

#include "store/connection.h"
#include "store/sqlite_language.h"

namespace damage {

Tables::Tables(const QString& path) : copy_(":memory:", SQLite::OPEN_READWRITE) {
  store::addLanguage(copy_.getHandle());
  copy_.tryExec("ATTACH '" + path.toStdString() + "' AS file");
  for (const char* table : {"MAIN", "LIB", "RIV", "AUD", "VID", "COM", "MED", "OGG", "PER",
                            "RIVSUB", "AUDSUB", "PERSUB", "TAB", "CFG", "GRDCONFIG", "QUERYDEF"}) {
    copy(table);
  }
}

// Columns of the copy have no type and no order of their own, so that values stay as they are. A
// page that is there twice gives each row twice.
void Tables::copy(const QByteArray& table) {
  const auto columns = found(
      "SELECT group_concat(format('+\"%w\" AS \"%w\"', name, name)), sum(name = 'ID')"
      " FROM pragma_table_info(?, 'file')",
      {QString::fromLatin1(table)});
  if (!columns) return;
  const QByteArray list = columns->front()[0].toString().toUtf8();
  copy_.tryExec("CREATE TABLE " + table + " AS SELECT DISTINCT " + list + " FROM file." + table +
                " NOT INDEXED");
  if (columns->front()[1] == 0) return;
  if (copy_.tryExec("CREATE UNIQUE INDEX " + table + "_1u ON " + table + " (ID)") != SQLite::OK) {
    copy_.tryExec("DROP TABLE main." + table);
  }
}

std::optional<QVector<harm::Row>> Tables::list(const QString& query, const QString& good) {
  const auto text = found("SELECT Sql FROM main.QUERYDEF WHERE Name = ?", {query});
  if (text != QVector<harm::Row>{{good}}) return {};
  // Behind the order that it asks for comes that of the main table's numbers.
  return found(good.left(good.lastIndexOf(u';')) + ", 1");
}

std::optional<QVector<harm::Row>> Tables::rows(const QString& table, const QStringList& columns,
                                               const QVariantList& values) {
  QStringList conditions;
  QStringList order;
  for (const QString& column : columns) order << u'[' + column + "] COLLATE ITALIANO";
  for (qsizetype i = 0; i < values.size(); ++i) conditions << order[i] + " = ?";
  return found("SELECT * FROM main." + table + " WHERE " + conditions.join(" AND ") + " ORDER BY " +
                   order.join(", ") + ", rowid",
               values);
}

std::optional<QVector<harm::Row>> Tables::found(const QString& query, const QVariantList& values) {
  try {
    SQLite::Statement statement(copy_, query.toStdString());
    for (int i = 0; i < values.size(); ++i) store::bindValue(statement, i + 1, values[i]);
    QVector<harm::Row> rows;
    while (statement.executeStep()) {
      rows.emplaceBack();
      for (int i = 0; i < statement.getColumnCount(); ++i) {
        rows.last().append(store::columnValue(statement, i));
      }
    }
    return rows;
  } catch (const SQLite::Exception&) {
    return {};
  }
}

}  // namespace damage
