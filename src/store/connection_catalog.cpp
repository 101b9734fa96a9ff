#include <sqlite3.h>

#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

#include "store/connection.h"

namespace store {
namespace {

constexpr qint64 kMostBytesChecked = 1 << 24;
constexpr qint64 kNumberBytes = 8;

FieldKind kindOfDeclaration(const QString& declaration) {
  static const QHash<QString, FieldKind> kinds = {
      {QStringLiteral("TEXT"), FieldKind::Text},    {QStringLiteral("DOUBLE"), FieldKind::Number},
      {QStringLiteral("DATE"), FieldKind::Date},    {QStringLiteral("TIME"), FieldKind::Time},
      {QStringLiteral("YESNO"), FieldKind::YesNo},  {QStringLiteral("LONG"), FieldKind::Long},
      {QStringLiteral("INTEGER"), FieldKind::Long}, {QStringLiteral("SHORT"), FieldKind::Short},
  };
  return kinds.value(declaration.section(u'(', 0, 0).trimmed().toUpper(), FieldKind::Text);
}

int sizeOfDeclaration(const QString& declaration) {
  return declaration.section(u'(', 1, 1).section(u')', 0, 0).toInt();
}

// A schema may hold what is worked out whenever rows are read or written: none of ours does.
[[noreturn]] void refuse(const TableInfo& table, const QString& what) {
  throw Failure(
      failure::kUnknownFormat,
      QStringLiteral("La tabella %1 non e' quella di un archivio: %2").arg(table.name, what));
}

bool isPlainDefault(const QVariant& value) {
  bool isNumber = false;
  const QString text = value.toString();
  text.toDouble(&isNumber);
  return !value.isValid() || isNumber ||
         text.compare(QLatin1String("NULL"), Qt::CaseInsensitive) == 0;
}

}  // namespace

int TableInfo::findColumn(const QString& column) const {
  const auto found = std::find_if(columns.begin(), columns.end(), [&](const ColumnInfo& info) {
    return info.name.compare(column, Qt::CaseInsensitive) == 0;
  });
  return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

const TableInfo* Connection::table(const QString& name) const {
  const QString key = name.toUpper();
  auto found = tables_.constFind(key);
  if (found == tables_.constEnd()) {
    auto info = std::make_shared<TableInfo>();
    info->name = name;
    readTable(*info);
    if (info->columns.isEmpty()) return nullptr;
    readIndexes(*info);
    checkSmall(*info, "quick_check");
    found = tables_.insert(key, std::move(info));
  }
  return found->get();
}

void Connection::readTable(TableInfo& table) const {
  guarded([&] {
    const Lease schema = prepare(
        "SELECT name, sql LIKE '%AUTOINCREMENT%' FROM sqlite_schema WHERE type = 'table' "
        "AND name = ? COLLATE NOCASE AND name NOT LIKE 'sqlite~_%' ESCAPE '~' "
        "AND sql LIKE 'CREATE TABLE%'");
    bindValue(*schema, 1, table.name);
    if (!schema->executeStep()) return;
    table.name = columnValue(*schema, 0).toString();
    const bool counter = schema->getColumn(1).getInt() != 0;
    const Lease columns =
        prepare("SELECT name, type, pk, hidden, dflt_value FROM pragma_table_xinfo(?)");
    bindValue(*columns, 1, table.name);
    while (columns->executeStep()) {
      const QString type = columnValue(*columns, 1).toString();
      ColumnInfo info{columnValue(*columns, 0).toString(), kindOfDeclaration(type),
                      sizeOfDeclaration(type)};
      if (columns->getColumn(3).getInt() != 0) {
        refuse(table, QStringLiteral("la colonna %1 e' calcolata").arg(info.name));
      }
      if (!isPlainDefault(columnValue(*columns, 4))) {
        refuse(table, QStringLiteral("la colonna %1 ha un valore predefinito").arg(info.name));
      }
      // Statements name a row's number so.
      if (info.name.compare(QLatin1String("rowid"), Qt::CaseInsensitive) == 0) {
        refuse(table, QStringLiteral("la colonna %1 non e' ammessa").arg(info.name));
      }
      if (columns->getColumn(2).getInt() == 1 &&
          type.compare(QLatin1String("INTEGER"), Qt::CaseInsensitive) == 0) {
        table.keyColumn = static_cast<int>(table.columns.size());
        if (counter) info.kind = FieldKind::Counter;
      }
      table.columns.append(std::move(info));
    }
  });
}

// The indexes of a table MAIN are MAIN_1u, MAIN_2, ...; "1u" may be the key column itself.
void Connection::readIndexes(TableInfo& table) const {
  guarded([&] {
    const Lease list = prepare("SELECT name, \"unique\", partial FROM pragma_index_list(?)");
    bindValue(*list, 1, table.name);
    const QString prefix = table.name + u'_';
    while (list->executeStep()) {
      const QString name = columnValue(*list, 0).toString();
      IndexInfo index{name.mid(prefix.size()), {}, list->getColumn(1).getInt() != 0};
      const Lease columns = prepare("SELECT name FROM pragma_index_info(?)");
      bindValue(*columns, 1, name);
      while (columns->executeStep()) {
        index.columns.append(table.findColumn(columnValue(*columns, 0).toString()));
      }
      if (list->getColumn(2).getInt() != 0 || index.columns.contains(-1)) {
        refuse(table, QStringLiteral("l'indice %1 e' calcolato").arg(name));
      }
      probeIndex(table, name, index.columns);
      if (name.startsWith(prefix, Qt::CaseInsensitive)) table.indexes.append(std::move(index));
    }
  });
  const auto first = [](const IndexInfo& index) { return index.name == QLatin1String("1u"); };
  if (table.keyColumn >= 0 && std::none_of(table.indexes.begin(), table.indexes.end(), first)) {
    table.indexes.append(IndexInfo{QStringLiteral("1u"), {table.keyColumn}, true, false});
  }
}

// An index that is another one's, or of other columns than the schema says, is so from its first
// entries on.
void Connection::probeIndex(const TableInfo& table, const QString& index,
                            const QVector<int>& columns) const {
  QByteArray entry = "rowid AS n";
  QByteArray order;
  QByteArray differs;
  for (qsizetype i = 0; i < columns.size(); ++i) {
    const QByteArray column = sql::quoteName(table.columns[columns[i]].name);
    const QByteArray value = "v" + QByteArray::number(i);
    entry += ", " + column + " AS " + value;
    order += (i > 0 ? ", " : "") + column;
    differs += (i > 0 ? " OR t." : "t.") + column + " IS NOT s." + value;
    // A column of texts turns numbers into texts: such a one is declared as what it is not.
    const bool text = table.columns[columns[i]].kind == FieldKind::Text;
    if (text) differs += " OR typeof(s." + value + ") IN ('integer', 'real')";
  }
  const QByteArray name = sql::quoteName(table.name);
  const Lease found =
      prepare("SELECT 1 FROM (SELECT " + entry + " FROM " + name + " INDEXED BY " +
              sql::quoteName(index) + " ORDER BY " + order + " LIMIT 16) AS s LEFT JOIN " + name +
              " AS t ON t.rowid = s.n WHERE " + differs + " LIMIT 1");
  if (found->executeStep()) throwDamaged(table.name, QStringLiteral("indice %1 errato").arg(index));
}

// Lists are read by indexes, which damage may have made lie.
void Connection::trustIndexes(const TableInfo& table) const {
  if (trusted_.contains(table.name)) return;
  trusted_.insert(table.name, checkSmall(table, "integrity_check"));
}

void Connection::trustIndex(const TableInfo& table, const IndexInfo& index) const {
  trustIndexes(table);
  if (trusted_.value(table.name) || !index.stored) return;
  const QString name = table.name + u'_' + index.name;
  if (trustedIndexes_.contains(name)) return;
  const QByteArray byIndex = "INDEXED BY " + sql::quoteName(name);
  if (digest(table, index, byIndex) != digest(table, index, "NOT INDEXED")) {
    throwDamaged(table.name, QStringLiteral("indice %1 errato").arg(index.name));
  }
  trust(table, index);
}

void Connection::trust(const TableInfo& table, const IndexInfo& index) const {
  trustedIndexes_.insert(table.name + u'_' + index.name);
}

// Of the columns of an index in all rows.
qint64 Connection::digest(const TableInfo& table, const IndexInfo& index,
                          const QByteArray& how) const {
  QByteArray columns = "rowid";
  for (const int column : index.columns) {
    columns += ", " + sql::quoteName(table.columns[column].name);
  }
  const Lease sum =
      prepare("SELECT tvx_digest(" + columns + ") FROM " + sql::quoteName(table.name) + ' ' + how);
  return guarded(
      [&] { return sum->executeStep() ? static_cast<qint64>(sum->getColumn(0).getInt64()) : 0; });
}

// A table of a few thousand rows is looked through in milliseconds. False for a larger one.
bool Connection::checkSmall(const TableInfo& table, const char* how) const {
  return guarded([&] {
    const QByteArray name = sql::quoteName(table.name);
    const Lease last = prepare("SELECT max(rowid) FROM " + name);
    if (!last->executeStep()) return false;
    const qint64 rows = last->getColumn(0).getInt64();
    if (rows > mostRowsChecked || mostBytesOf(table, rows) > kMostBytesChecked) return false;
    const Lease check = prepare(QByteArray("PRAGMA ") + how + "(" + name + ")");
    if (!check->executeStep()) return false;
    const QString found = columnValue(*check, 0).toString();
    if (found == QLatin1String("ok")) return true;
    static const QRegularExpression unread(QStringLiteral("error code=(\\d+)"));
    const int code = unread.match(found).captured(1).toInt();
    if ((code & 0xff) == SQLITE_IOERR) throw SQLite::Exception(found.toStdString(), code);
    throwDamaged(table.name, QStringLiteral("struttura errata"));
  });
}

qint64 Connection::mostBytesOf(const TableInfo& table, qint64 rows) const {
  qint64 row = 0;
  for (const ColumnInfo& column : table.columns) row += std::max<qint64>(column.size, kNumberBytes);
  return std::min(rows * row, QFileInfo(path_).size());
}

void throwDamaged(const QString& table, const QString& found) {
  ++misreadings;
  throw Failure(
      failure::kDamaged,
      QStringLiteral("L'archivio e' danneggiato: tabella %1 (%2)").arg(table, found.simplified()));
}

std::optional<QString> Connection::querySql(const QString& name) const {
  const QString key = name.toUpper();
  const auto found = queries_.constFind(key);
  if (found != queries_.constEnd()) return *found;
  std::optional<QString> sql;
  if (table(QStringLiteral("QUERYDEF")) != nullptr) {
    guarded([&] {
      const Lease lease = prepare("SELECT Sql FROM QUERYDEF WHERE Name = ? COLLATE NOCASE");
      bindValue(*lease, 1, name);
      if (lease->executeStep()) sql = columnValue(*lease, 0).toString();
    });
  }
  // Names that lead nowhere are not kept: they may be of any number and length.
  if (sql) queries_.insert(key, *sql);
  return sql;
}

}  // namespace store
