#include "store/database.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "store/cursor.h"
#include "store/journal.h"
#include "store/open_snapshot.h"
#include "store/page_checksum.h"
#include "store/query.h"
#include "store/sql_parser.h"

namespace store {
namespace {

// Never destroyed: a handle may live as long as the process.
QVector<Database*>& openDatabases() {
  static auto* const databases = new QVector<Database*>;
  return *databases;
}

[[noreturn]] void unknownFormat(const QString& path) {
  throw Failure(failure::kUnknownFormat,
                QStringLiteral("Il file %1 non e' un archivio riconosciuto").arg(path));
}

[[noreturn]] void damaged(const QString& path) {
  throw Failure(failure::kDamaged, QStringLiteral("L'archivio %1 e' danneggiato").arg(path));
}

qint64 pragma(Connection& connection, const QByteArray& name) {
  const auto lease = connection.prepare("PRAGMA " + name);
  return lease->executeStep() ? lease->getColumn(0).getInt64() : 0;
}

bool isSound(Connection& connection) {
  const auto lease = connection.prepare("PRAGMA integrity_check(1)");
  return guarded([&] {
    return lease->executeStep() && columnValue(*lease, 0).toString() == QLatin1String("ok");
  });
}

// With the first read, an interrupted write of an earlier run is rolled back; within one read the
// file's size cannot change.
void checkArchive(Connection& connection) {
  const Connection::Reading reading(connection);
  if (pragma(connection, "application_id") != kApplicationId) unknownFormat(connection.path());
  const qint64 size = QFileInfo(connection.path()).size();
  if (size != pragma(connection, "page_count") * pragma(connection, "page_size")) {
    damaged(connection.path());
  }
  // What another tool has made proves itself only as a whole.
  if (!hasChecksums(connection.database().getHandle()) && !isSound(connection)) {
    damaged(connection.path());
  }
}

// Some tools leave an archive in a mode in which the file alone lacks what was confirmed last.
void leaveWriteAheadLog(Connection& connection) {
  const auto set = [&](const QByteArray& pragma) {
    const auto lease = connection.prepare("PRAGMA " + pragma);
    return lease->executeStep() ? columnValue(*lease, 0).toString() : QString();
  };
  if (set("journal_mode") != QLatin1String("wal")) return;
  try {
    if (set("journal_mode = DELETE") == QLatin1String("delete")) return;
  } catch (const SQLite::Exception&) {
    // The message below says what there is to do.
  }
  throw Failure(failure::kLocked,
                QStringLiteral("L'archivio %1 e' in modo WAL e non si puo' riportare al giornale "
                               "normale: un altro programma lo tiene aperto, o la cartella non e' "
                               "scrivibile")
                    .arg(connection.path()));
}

// A file that is open is neither opened nor looked into a second time: to close it again would
// take away the locks that the process holds on it.
std::shared_ptr<Connection> sharedConnection(const QString& path) {
  static QHash<QString, std::weak_ptr<Connection>> connections;
  std::shared_ptr<Connection> connection = connections.value(path).lock();
  if (connection && connection->holdsPath()) return connection;
  const QString setAside = setAsideForeignJournal(path);
  connection = std::make_shared<Connection>(path, SQLite::OPEN_READWRITE);
  connection->setJournalSetAside(setAside);
  leaveWriteAheadLog(*connection);
  checkArchive(*connection);
  connections.insert(path, connection);
  return connection;
}

// A file that is removed again unless it gets finished.
class NewFile final {
 public:
  explicit NewFile(QString path) : path_(std::move(path)) {}
  ~NewFile() {
    if (!finished_) QFile::remove(path_);
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  void finish() { finished_ = true; }

 private:
  QString path_;
  bool finished_ = false;
};

}  // namespace

Database::Database(std::shared_ptr<Connection> connection)
    : connection_(std::move(connection)),
      clones_(std::make_shared<QVector<std::weak_ptr<Recordset>>>()) {
  openDatabases().append(this);
}

Database::~Database() {
  Close();
  openDatabases().removeOne(this);
}

// Handles on one file share its connection.
std::shared_ptr<Connection> connectionOf(const Database& database) {
  if (!database.IsOpen()) throw Failure(failure::kClosed, QStringLiteral("L'archivio e' chiuso"));
  return sharedConnection(database.Name());
}

Connection& Database::connection() const {
  if (!connection_) throw Failure(failure::kClosed, QStringLiteral("L'archivio e' chiuso"));
  return *connection_;
}

QString Database::Name() const {
  return connection_ ? connection_->path() : QString();
}

QString Database::JournalSetAside() const {
  return connection().journalSetAside();
}

void Database::Close() {
  // Who hears that a recordset closes may let go of this handle.
  const std::shared_ptr<Database> keep = weak_from_this().lock();
  for (const RecordsetPtr& recordset : Recordsets()) recordset->Close();
  const QVector<std::weak_ptr<Recordset>> clones = *clones_;
  for (const auto& weak : clones) {
    if (const RecordsetPtr clone = weak.lock()) clone->Close();
  }
  recordsets_.clear();
  clones_->clear();
  while (transactions_ > 0) Rollback();
  if (connection_) endSnapshot(*connection_);
  connection_.reset();
}

RecordsetPtr Database::OpenRecordset(const QString& source, RecordsetType type) {
  connection();
  auto cursor = type == RecordsetType::Table ? makeTableCursor(connection_, source)
                                             : makeKeysetCursor(connection_, source);
  auto recordset = std::make_shared<Recordset>(type, std::move(cursor), clones_);
  recordsets_.append(recordset);
  return recordset;
}

QVector<RecordsetPtr> Database::Recordsets() const {
  QVector<RecordsetPtr> open;
  for (const auto& weak : recordsets_) {
    RecordsetPtr recordset = weak.lock();
    if (recordset && recordset->IsOpen()) open.append(std::move(recordset));
  }
  recordsets_.clear();
  for (const RecordsetPtr& recordset : open) recordsets_.append(recordset);
  return open;
}

// By itself a statement would not tell whether a lock failed before it wrote or behind.
int Database::write(const QByteArray& statement, const QVariantList& values) {
  Transaction transaction(*this);
  const int rows = connection().execute(statement, values);
  transaction.Commit();
  return rows;
}

void Database::CreateQueryDef(const QString& name, const QString& sql) {
  const bool select = sql::looksLikeSelect(sql);
  if (select) {
    sql::parseSelect(sql);
  } else {
    sql::parseAction(sql);
  }
  if (connection().table(name) != nullptr || connection().querySql(name)) {
    throw Failure(failure::kNameTaken, QStringLiteral("L'oggetto '%1' esiste gia'").arg(name));
  }
  write("INSERT INTO QUERYDEF (Name, Sql) VALUES (?, ?)", {name, sql});
  connection().forgetQueries();
}

void Database::DeleteQueryDef(const QString& name) {
  const int deleted = write("DELETE FROM QUERYDEF WHERE Name = ? COLLATE NOCASE", {name});
  connection().forgetQueries();
  if (deleted == 0) {
    throw Failure(failure::kItemNotFound, QStringLiteral("Query '%1' inesistente").arg(name));
  }
}

QStringList Database::QueryDefs() const {
  QStringList names;
  const auto lease = connection().prepare("SELECT Name FROM QUERYDEF ORDER BY Name");
  guarded([&] {
    while (lease->executeStep()) names.append(columnValue(*lease, 0).toString());
  });
  return names;
}

QString Database::QueryDefSql(const QString& name) const {
  const std::optional<QString> sql = connection().querySql(name);
  if (!sql)
    throw Failure(failure::kItemNotFound, QStringLiteral("Query '%1' inesistente").arg(name));
  return *sql;
}

void Database::Execute(const QString& query) {
  const sql::Statement statement =
      sql::printAction(sql::resolveAction(sql::parseAction(QueryDefSql(query)), connection()));
  write(statement.text, statement.values);
}

void Database::BeginTrans() {
  connection().begin();
  ++transactions_;
}

void Database::CommitTrans() {
  if (transactions_ == 0) {
    throw Failure(failure::kNoTransaction, QStringLiteral("Nessuna transazione da confermare"));
  }
  --transactions_;
  connection().commit();
}

void Database::Rollback() {
  if (transactions_ == 0) return;
  --transactions_;
  connection().rollback();
}

QString Database::ExplainSql(const QString& source) const {
  const Query query(source, connection());
  if (query.keyTables().empty()) return QString::fromUtf8(query.everything().text);
  return QString::fromUtf8(query.keys().text + "\n" + query.rowByKeys({0}).text);
}

bool Database::IntegrityCheck() const {
  return isSound(connection());
}

Transaction::~Transaction() {
  if (!done_) database_.Rollback();
}

void Transaction::Commit() {
  done_ = true;
  database_.CommitTrans();
}

DatabasePtr OpenDatabase(const QString& path) {
  const QFileInfo file(path);
  if (!file.isFile()) {
    throw Failure(failure::kFileNotFound, QStringLiteral("File %1 non trovato").arg(path));
  }
  return guarded(
      [&] { return std::make_shared<Database>(sharedConnection(file.canonicalFilePath())); });
}

// Each database closes others where a listener lets go of them: the list is looked at anew.
void CloseWorkspace() {
  const auto open = [](const Database* database) { return database->IsOpen(); };
  const QVector<Database*>& all = openDatabases();
  for (auto next = std::find_if(all.begin(), all.end(), open); next != all.end();
       next = std::find_if(all.begin(), all.end(), open)) {
    (*next)->Close();
  }
}

DatabasePtr CreateDatabase(const QString& path, const QByteArray& schema) {
  const QString full = QFileInfo(path).absoluteFilePath();
  if (QFileInfo::exists(full)) {
    throw Failure(failure::kFileExists, QStringLiteral("Il file %1 esiste gia'").arg(path));
  }
  NewFile file(full);
  guarded([&] {
    Connection connection(full, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    SQLite::Database& target = connection.database();
    reserveChecksums(target.getHandle());
    target.exec("BEGIN; PRAGMA application_id = " + std::to_string(kApplicationId));
    target.exec(
        "CREATE TABLE QUERYDEF (Name TEXT(64) PRIMARY KEY COLLATE NOCASE, Sql TEXT NOT NULL)");
    target.exec(schema.toStdString());
    target.exec("COMMIT");
  });
  DatabasePtr database = OpenDatabase(full);
  file.finish();
  return database;
}

}  // namespace store
