// What is put right in an archive when it is opened.

#include <sqlite3.h>

#include <QSet>
#include <algorithm>
#include <limits>

#include "store/connection.h"
#include "store/database.h"

namespace store {
namespace {

constexpr qint64 kMostKey = std::numeric_limits<qint32>::max();

// Names of a table's columns in capital letters; none if there is no such table.
QSet<QString> columnsOf(Connection& connection, const QString& table) {
  QSet<QString> names;
  const auto lease = connection.prepare("SELECT name FROM pragma_table_info(?)");
  guarded([&] {
    bindValue(*lease, 1, table);
    while (lease->executeStep()) names.insert(columnValue(*lease, 0).toString().toUpper());
  });
  return names;
}

QVector<TableColumn> missingOf(Connection& connection, const QVector<TableColumn>& wanted) {
  QHash<QString, QSet<QString>> tables;
  QVector<TableColumn> missing;
  for (const TableColumn& each : wanted) {
    if (!tables.contains(each.table)) tables.insert(each.table, columnsOf(connection, each.table));
    QSet<QString>& columns = tables[each.table];
    if (columns.contains(each.column.toUpper())) continue;
    columns.insert(each.column.toUpper());
    missing.append(each);
  }
  return missing;
}

// "Titolo" TEXT(150) COLLATE ITALIANO, as the schema says it.
QByteArray definitionOf(Connection& schema, const TableColumn& column) {
  const char* type = nullptr;
  const char* order = nullptr;
  const int code = sqlite3_table_column_metadata(
      schema.database().getHandle(), "main", column.table.toUtf8().constData(),
      column.column.toUtf8().constData(), &type, &order, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK || type == nullptr) {
    throw Failure(
        failure::kItemNotFound,
        QStringLiteral("la colonna %1.%2 non e' prevista").arg(column.table, column.column));
  }
  QByteArray definition = sql::quoteName(column.column) + ' ' + type + " COLLATE " + order;
  const auto lease = schema.prepare(
      "SELECT dflt_value FROM pragma_table_info(?) WHERE name = ? COLLATE NOCASE "
      "AND dflt_value IS NOT NULL");
  guarded([&] {
    bindValue(*lease, 1, column.table);
    bindValue(*lease, 2, column.column);
    if (lease->executeStep()) definition += " DEFAULT " + columnValue(*lease, 0).toByteArray();
  });
  return definition;
}

QString namesOf(const QVector<TableColumn>& columns) {
  QStringList names;
  for (const TableColumn& column : columns) names << column.table + u'.' + column.column;
  return names.join(QLatin1String(", "));
}

// The largest number in a column, by an index where one begins so; texts and what goes beyond keys
// are passed over.
qint64 largest(Connection& connection, const KeyColumn& key) {
  const QByteArray column = sql::quoteName(key.column);
  QByteArray text = "SELECT " + column + " FROM " + sql::quoteName(key.table) + " WHERE ";
  QVariantList values;
  if (!key.fixed.isEmpty()) {
    text += sql::quoteName(key.fixed) + " = ? AND ";
    values << key.value;
  }
  text += column + " <= ? ORDER BY " + column + " DESC LIMIT 1";
  const auto lease = connection.prepare(sql::Statement{text, values << kMostKey});
  return guarded(
      [&] { return lease->executeStep() ? qint64{lease->getColumn(0).getInt64()} : qint64{0}; });
}

}  // namespace

void Database::AddMissingColumns(const QVector<TableColumn>& wanted, const QByteArray& schema) {
  const QVector<TableColumn> missing = missingOf(connection(), wanted);
  if (missing.isEmpty()) return;
  try {
    Connection model(QStringLiteral(":memory:"), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    guarded([&] { model.database().exec(schema.toStdString()); });
    Transaction transaction(*this);
    for (const TableColumn& column : missing) {
      connection().execute("ALTER TABLE " + sql::quoteName(column.table) + " ADD COLUMN " +
                           definitionOf(model, column));
      connection().forgetTable(column.table);
    }
    transaction.Commit();
  } catch (const Failure& failure) {
    throw Failure(failure.number(),
                  QStringLiteral("All'archivio mancano le colonne %1 e non si possono aggiungere: "
                                 "%2")
                      .arg(namesOf(missing), failure.description()));
  }
}

void Database::RaiseCounter(const TableColumn& counter, const QVector<KeyColumn>& keys) {
  // Whoever needs the counter says what is missing.
  if (columnsOf(connection(), counter.table).isEmpty()) return;
  qint64 last = 0;
  for (const KeyColumn& key : keys) last = std::max(last, largest(connection(), key));
  const QByteArray table = sql::quoteName(counter.table);
  const QByteArray column = sql::quoteName(counter.column);
  const QByteArray first = "SELECT rowid, " + column + ", typeof(" + column +
                           ") = 'integer' FROM " + table + " ORDER BY rowid LIMIT 1";
  QVariant row;
  const bool isRight = guarded([&] {
    const auto lease = connection().prepare(first);
    if (!lease->executeStep()) return false;
    row = columnValue(*lease, 0);
    return lease->getColumn(2).getInt() != 0 && lease->getColumn(1).getInt64() >= last;
  });
  if (isRight) return;
  if (row.isValid()) {
    write("UPDATE " + table + " SET " + column + " = ? WHERE rowid = ?", {last, row});
  } else {
    write("INSERT INTO " + table + " (" + column + ") VALUES (?)", {last});
  }
}

}  // namespace store
