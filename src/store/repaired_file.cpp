#include "store/repaired_file.h"

#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

#include <QFileInfo>
#include <QUrl>
#include <algorithm>

#include "store/connection.h"
#include "store/file_failure.h"
#include "store/page_checksum.h"
#include "store/sqlite_language.h"

namespace store {
namespace {

using Kind = StoredValue::Kind;

const QByteArray kQueries = "QUERYDEF";
const QByteArray kSequences = "sqlite_sequence";
constexpr qint64 kRowsAtATime = 500;

void bind(SQLite::Statement& statement, int place, const StoredValue& value) {
  switch (value.kind) {
    case Kind::Null:
      statement.bind(place);
      return;
    case Kind::Integer:
      statement.bind(place, static_cast<int64_t>(value.integer));
      return;
    case Kind::Real:
      statement.bind(place, value.real);
      return;
    case Kind::Text:
      statement.bind(place, value.bytes.toStdString());
      return;
    case Kind::Blob:
      statement.bind(place, value.bytes.constData(), static_cast<int>(value.bytes.size()));
  }
}

// A number of a row, 0 if the column holds none.
qint64 numberIn(const TableShape& shape, const StoredRow& row, const QString& named) {
  const int column = shape.column(named.toUtf8());
  if (column == shape.keyColumn && column >= 0) return row.key;
  const auto place = static_cast<std::size_t>(column);
  const bool isThere = column >= 0 && place < row.values.size();
  return isThere && row.values[place].kind == Kind::Integer ? row.values[place].integer : 0;
}

// The engine's own message would not name the file.
std::string requireModel(const QString& path) {
  if (!QFileInfo(path).isFile()) failAtFile(file_failure::kNotFound, path);
  return path.toStdString();
}

QByteArray quoted(const QString& name) {
  return sql::quoteName(name);
}

}  // namespace

// Pages that the cache has no room for are written before the one that says that they have
// checksums.
RepairedFile::RepairedFile(const QString& path, const RepairPlan& plan)
    : plan_(plan),
      file_((QUrl::fromLocalFile(path).toEncoded() + "?checksums=1").toStdString(),
            SQLite::OPEN_READWRITE | SQLite::OPEN_URI, 0, checkedFileLayer()) {
  addLanguage(file_.getHandle());
  reserveChecksums(file_.getHandle());
  {
    SQLite::Database model(requireModel(plan.model), SQLite::OPEN_READONLY, 0, checkedFileLayer());
    addLanguage(model.getHandle());
    model_ = shapeOf(model);
  }
  file_.exec(
      "PRAGMA journal_mode = MEMORY; PRAGMA synchronous = OFF; PRAGMA cache_size = -20000;"
      "PRAGMA ignore_check_constraints = ON");
  run("ATTACH ? AS model", {plan.model});
  file_.exec("BEGIN; PRAGMA main.application_id = " + std::to_string(kApplicationId));
  createTables();
}

void RepairedFile::run(const QByteArray& statement, const QVariantList& values) {
  SQLite::Statement prepared(file_, statement.toStdString());
  for (int i = 0; i < values.size(); ++i) bindValue(prepared, i + 1, values[i]);
  while (prepared.executeStep()) {
  }
}

QVariantList RepairedFile::firstRow(const QByteArray& query, const QVariantList& values) {
  SQLite::Statement prepared(file_, query.toStdString());
  for (int i = 0; i < values.size(); ++i) bindValue(prepared, i + 1, values[i]);
  QVariantList row;
  if (!prepared.executeStep()) return row;
  for (int i = 0; i < prepared.getColumnCount(); ++i) row.append(columnValue(prepared, i));
  return row;
}

// What is to be unique is so while rows come in: of two that cannot both be right the surer stays.
void RepairedFile::createTables() {
  SQLite::Statement all(file_,
                        "SELECT sql FROM model.sqlite_schema WHERE name NOT LIKE 'sqlite\\_%' "
                        "ESCAPE '\\' AND (type = 'table' OR sql LIKE 'CREATE UNIQUE INDEX%') "
                        "ORDER BY type = 'index', rowid");
  while (all.executeStep()) file_.exec(all.getColumn(0).getString());
}

void RepairedFile::createIndexes() {
  SQLite::Statement all(file_,
                        "SELECT sql FROM model.sqlite_schema WHERE type = 'index' AND sql LIKE "
                        "'CREATE INDEX%'");
  while (all.executeStep()) file_.exec(all.getColumn(0).getString());
}

// Those that the model does not have.
void RepairedFile::addColumns(const TableShape& shape) {
  const int known = model_.table(shape.name);
  for (const ShapeColumn& column : shape.columns) {
    if (model_.tables[static_cast<std::size_t>(known)].column(column.name) >= 0) continue;
    run("ALTER TABLE " + quoted(QString::fromUtf8(shape.name)) + " ADD COLUMN " +
        quoted(QString::fromUtf8(column.name)) + ' ' + quoted(QString::fromUtf8(column.type)));
  }
}

void RepairedFile::fill(const Salvage& salvage, const std::function<bool()>& goesOn) {
  takeFromModel(kQueries);
  for (const FoundTable& found : salvage.tables()) {
    if (found.shape.name == kSequences) continue;
    addColumns(found.shape);
    fillTable(salvage, found, goesOn);
  }
  for (const FoundTable& found : salvage.tables()) {
    if (found.shape.name == kSequences) raiseSequences(salvage, found);
    if (QString::fromUtf8(found.shape.name) == plan_.lookupTable) addLookups(found);
    if (plan_.settings.contains(QString::fromUtf8(found.shape.name)) && !found.gaps.empty()) {
      takeFromModel(found.shape.name);
    }
  }
}

// A row's key is that of its table where a column stands for it; else it says nothing.
bool RepairedFile::insert(const TableShape& shape, const StoredRow& row, Statements& statements) {
  std::shared_ptr<SQLite::Statement>& statement = statements[row.values.size()];
  const bool hasKey = shape.keyColumn >= 0;
  if (!statement) {
    QByteArrayList names;
    for (std::size_t i = 0; i < row.values.size(); ++i) {
      if (static_cast<int>(i) == shape.keyColumn) continue;
      names.append(quoted(QString::fromUtf8(shape.columns[i].name)));
    }
    if (hasKey) names.append("rowid");
    const QByteArray marks = QByteArray("?,").repeated(names.size());
    const QByteArray text = "INSERT OR IGNORE INTO main." + quoted(QString::fromUtf8(shape.name)) +
                            " (" + names.join(',') + ") VALUES (" + marks.chopped(1) + ')';
    statement = std::make_shared<SQLite::Statement>(file_, text.toStdString());
  }
  int place = 0;
  for (std::size_t i = 0; i < row.values.size(); ++i) {
    if (static_cast<int>(i) != shape.keyColumn) bind(*statement, ++place, row.values[i]);
  }
  if (hasKey) statement->bind(++place, static_cast<int64_t>(row.key));
  statement->executeStep();
  statement->reset();
  return file_.getChanges() > 0;
}

void RepairedFile::fillTable(const Salvage& salvage, const FoundTable& found,
                             const std::function<bool()>& goesOn) {
  RepairReport::Table counts{QString::fromUtf8(found.shape.name), 0, 0, 0, found.isLostKnown};
  const auto lookups = lookupsOf(found.shape);
  Statements statements;
  qint64 done = 0;
  const auto take = [&](const StoredRow& row, Trust trust) {
    if (++done % kRowsAtATime == 0 && !goesOn()) interrupted();
    if (!insert(found.shape, row, statements)) return;
    if (trust == Trust::Sure) {
      ++counts.sure;
      for (const auto& [column, lookup] : lookups) {
        const auto place = static_cast<std::size_t>(column);
        if (column < 0 || place >= row.values.size() || row.values[place].integer <= 0) continue;
        if (!used_.contains(row.values[place].integer))
          used_.insert(row.values[place].integer, lookup);
      }
    } else {
      ++counts.doubtful;
      tell(RepairedRow::State::Doubtful, found, row);
    }
  };
  for (const Trust trust : {Trust::Sure, Trust::Doubtful}) {
    for (const FoundRow& row : found.rows) {
      if (row.trust == trust) take(salvage.row(found, row), trust);
    }
    if (trust != Trust::Sure) continue;
    for (const StoredRow& row : found.restored) take(row, trust);
  }
  counts.lost = std::ssize(found.lost);
  for (const StoredRow& row : found.lost) tell(RepairedRow::State::Lost, found, row);
  // Neither is missed: the one comes from the model, the other follows from the keys.
  if (found.shape.name == kQueries || counts.name == plan_.counter.table) return;
  report_.tables.append(counts);
}

// Keys that were given once are not given again.
void RepairedFile::raiseSequences(const Salvage& salvage, const FoundTable& found) {
  for (const FoundRow& each : found.rows) {
    const StoredRow row = salvage.row(found, each);
    if (each.trust != Trust::Sure || !found.shape.fits(row)) continue;
    const QVariantList values{QString::fromUtf8(row.values[0].bytes),
                              static_cast<qlonglong>(row.values[1].integer)};
    run("INSERT INTO main.sqlite_sequence SELECT ?1, 0 WHERE ?1 IN (SELECT name FROM "
        "main.sqlite_schema WHERE sql LIKE '%AUTOINCREMENT%') AND ?1 NOT IN (SELECT name FROM "
        "main.sqlite_sequence)",
        {values[0]});
    run("UPDATE main.sqlite_sequence SET seq = ?2 WHERE name = ?1 AND seq < ?2", values);
  }
}

void RepairedFile::takeFromModel(const QByteArray& table) {
  QByteArrayList names;
  for (const ShapeColumn& column :
       model_.tables[static_cast<std::size_t>(model_.table(table))].columns) {
    names.append(quoted(QString::fromUtf8(column.name)));
  }
  QByteArray text = "INSERT OR IGNORE INTO main." + table + " (" + names.join(',') + ") SELECT " +
                    names.join(',') + " FROM model." + table;
  if (QString::fromUtf8(table) == plan_.guard.table) {
    return run(text + " WHERE " + quoted(plan_.guard.column) + " <> ?", {plan_.guardName});
  }
  run(text);
}

// Places of a table's columns that hold keys of lookup values, with their place in the plan.
std::vector<std::pair<int, int>> RepairedFile::lookupsOf(const TableShape& shape) const {
  std::vector<std::pair<int, int>> places;
  for (int i = 0; i < plan_.lookups.size(); ++i) {
    const TableColumn& column = plan_.lookups[i].column;
    if (column.table != QString::fromUtf8(shape.name)) continue;
    places.emplace_back(shape.column(column.column.toUtf8()), i);
  }
  return places;
}

void RepairedFile::addLookup(qint64 key, const QVariantList& values) {
  run("INSERT OR IGNORE INTO main." + quoted(plan_.lookupTable) + " (" + quoted(plan_.lookupKey) +
          ',' + quoted(plan_.lookupList) + ',' + quoted(plan_.lookupCollection) + ',' +
          quoted(plan_.lookupText) + ") VALUES (?, ?, ?, ?)",
      QVariantList{key} + values);
}

// Lookup values that are used but lost: those that an index holds are not.
void RepairedFile::addLookups(const FoundTable& found) {
  if (found.gaps.empty()) return;
  for (const StoredRow& row : found.lost) {
    const auto text = static_cast<std::size_t>(found.shape.column(plan_.lookupText.toUtf8()));
    const auto list = static_cast<std::size_t>(found.shape.column(plan_.lookupList.toUtf8()));
    if (row.values[text].kind != Kind::Text) continue;
    addLookup(row.key, {QString::fromUtf8(row.values[list].bytes),
                        numberIn(found.shape, row, plan_.lookupCollection),
                        QString::fromUtf8(row.values[text].bytes)});
  }
  if (found.isLostKnown) return;
  for (auto use = used_.constBegin(); use != used_.constEnd(); ++use) {
    const bool isLost = std::any_of(found.gaps.begin(), found.gaps.end(),
                                    [&](const KeyRange& gap) { return gap.holds(use.key()); });
    const bool isThere = !firstRow("SELECT 1 FROM main." + quoted(plan_.lookupTable) + " WHERE " +
                                       quoted(plan_.lookupKey) + " = ?",
                                   {use.key()})
                              .isEmpty();
    if (!isLost || isThere) continue;
    const RepairPlan::Lookup& lookup = plan_.lookups[use.value()];
    addLookup(use.key(),
              {lookup.list, lookup.collection, QStringLiteral("(voce perduta %1)").arg(use.key())});
    ++report_.placeholders;
  }
}

// Which record a row is a part of.
void RepairedFile::tell(RepairedRow::State state, const FoundTable& found, const StoredRow& row) {
  RepairedRow told{state, QString::fromUtf8(found.shape.name), row.key, -1, 0, {}};
  if (told.table == plan_.mainTable) {
    const int column = found.shape.column(plan_.mainCollection.toUtf8());
    const auto place = static_cast<std::size_t>(column);
    if (column >= 0 && place < row.values.size() && row.values[place].kind == Kind::Integer) {
      told.collection = static_cast<int>(row.values[place].integer);
    }
    told.record = numberIn(found.shape, row, plan_.mainKey);
  }
  for (const QVector<RepairPlan::Part>* parts : {&plan_.details, &plan_.children}) {
    for (const RepairPlan::Part& part : *parts) {
      if (part.key.table != told.table) continue;
      told.collection = part.collection;
      told.record = numberIn(found.shape, row, part.key.column);
    }
  }
  if (state == RepairedRow::State::Lost) lastLostKey_ = std::max(lastLostKey_, told.record);
  report_.rows.append(told);
}

void RepairedFile::findGuard() {
  const auto table =
      std::find_if(report_.tables.begin(), report_.tables.end(),
                   [&](const RepairReport::Table& each) { return each.name == plan_.guard.table; });
  if (table == report_.tables.end() || (table->isLostKnown && table->lost == 0)) return;
  report_.isGuardLost = firstRow("SELECT 1 FROM main." + quoted(plan_.guard.table) + " WHERE " +
                                     quoted(plan_.guard.column) + " = ?",
                                 {plan_.guardName})
                            .isEmpty();
}

// Lists join the two parts of a record: what has one alone is in none.
void RepairedFile::findHalves() {
  const QByteArray main = quoted(plan_.mainTable);
  for (const RepairPlan::Part& part : plan_.details) {
    const QByteArray table = quoted(part.key.table);
    const QByteArray key = quoted(part.key.column);
    const QByteArray number = QByteArray::number(part.collection);
    const QByteArray ofMain = "SELECT rowid, " + quoted(plan_.mainKey) + " FROM main." + main +
                              " WHERE " + quoted(plan_.mainCollection) + " = " + number;
    const QByteArray ofDetail = "SELECT rowid, " + key + " FROM main." + table;
    const auto add = [&](const QString& named, const QByteArray& query) {
      SQLite::Statement rows(file_, query.toStdString());
      while (rows.executeStep()) {
        report_.rows.append({RepairedRow::State::Half,
                             named,
                             rows.getColumn(0).getInt64(),
                             part.collection,
                             rows.getColumn(1).getInt64(),
                             {}});
      }
    };
    add(plan_.mainTable, ofMain + " AND " + quoted(plan_.mainKey) + " NOT IN (SELECT " + key +
                             " FROM main." + table + " WHERE " + key + " IS NOT NULL)");
    add(part.key.table, ofDetail + " WHERE " + key + " NOT IN (SELECT " + quoted(plan_.mainKey) +
                            " FROM main." + main + " WHERE " + quoted(plan_.mainCollection) +
                            " = " + number + " AND " + quoted(plan_.mainKey) + " IS NOT NULL)");
  }
}

void RepairedFile::findTitles() {
  const QByteArray query = "SELECT " + quoted(plan_.mainTitle) + " FROM main." +
                           quoted(plan_.mainTable) + " WHERE " + quoted(plan_.mainCollection) +
                           " = ? AND " + quoted(plan_.mainKey) + " = ?";
  for (RepairedRow& row : report_.rows) {
    if (row.collection < 0) continue;
    row.title = firstRow(query, {row.collection, row.record}).value(0).toString();
  }
}

RepairReport RepairedFile::finish() {
  createIndexes();
  findGuard();
  findHalves();
  findTitles();
  const QByteArray counter = quoted(plan_.counter.table);
  const QByteArray column = quoted(plan_.counter.column);
  run("UPDATE main." + counter + " SET " + column + " = ?1 WHERE " + column + " < ?1",
      {lastLostKey_});
  file_.exec("COMMIT; DETACH model");
  if (firstRow("PRAGMA integrity_check(1)").value(0).toString() != QLatin1String("ok")) {
    throw Failure(failure::kDamaged, QStringLiteral("Il file riparato non e' in ordine"));
  }
  return report_;
}

}  // namespace store
