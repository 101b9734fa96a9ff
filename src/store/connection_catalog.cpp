#include <algorithm>

#include "store/connection.h"

namespace store {
namespace {

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
    found = tables_.insert(key, std::move(info));
  }
  return found->get();
}

void Connection::forgetTable(const QString& name) {
  if (auto former = tables_.take(name.toUpper())) formerTables_.push_back(std::move(former));
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
      if (name.startsWith(prefix, Qt::CaseInsensitive)) table.indexes.append(std::move(index));
    }
  });
  const auto first = [](const IndexInfo& index) { return index.name == QLatin1String("1u"); };
  if (table.keyColumn >= 0 && std::none_of(table.indexes.begin(), table.indexes.end(), first)) {
    table.indexes.append(IndexInfo{QStringLiteral("1u"), {table.keyColumn}, true, false});
  }
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
