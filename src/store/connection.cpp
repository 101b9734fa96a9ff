#include "store/connection.h"

#include <sqlite3.h>

#include <utility>

#include "store/open_snapshot.h"
#include "store/page_checksum.h"
#include "store/sqlite_language.h"
#include "store/text_bytes.h"

namespace store {
namespace {

constexpr qsizetype kMostStatements = 200;
constexpr qsizetype kLongestStatement = 1 << 16;  // that is kept
constexpr int kLongestValue = 1 << 26;            // bytes
constexpr int kStepsACall = 100000;

// An archive is data: nothing that its schema may hold is run.
void harden(sqlite3* handle) {
  sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_FKEY, 0, nullptr);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_limit(handle, SQLITE_LIMIT_ATTACHED, 0);
  sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, kLongestValue);
}

// A transaction gives back its locks last, the writer's for a reader's first: where just that
// fails, what was to be written is in the file.
bool isAboutLocks(int code) {
  return code == SQLITE_IOERR_UNLOCK || code == SQLITE_IOERR_RDLOCK;
}

QByteArray savepoint(int depth) {
  return "tvx" + QByteArray::number(depth);
}

}  // namespace

void bindValue(SQLite::Statement& statement, int place, const QVariant& value) {
  if (!value.isValid() || value.isNull()) {
    statement.bind(place);
  } else if (value.typeId() == QMetaType::QString) {
    statement.bind(place, bytesOf(value.toString()).toStdString());
  } else if (value.typeId() == QMetaType::Double) {
    statement.bind(place, value.toDouble());
  } else {
    statement.bind(place, static_cast<int64_t>(value.toLongLong()));
  }
}

QVariant columnValue(const SQLite::Statement& statement, int column) {
  const SQLite::Column value = statement.getColumn(column);
  switch (value.getType()) {
    case SQLITE_INTEGER:
      return static_cast<qlonglong>(value.getInt64());
    case SQLITE_FLOAT:
      return value.getDouble();
    case SQLITE_NULL:
      return {};
    default: {
      const char* text = value.getText();
      return textOf(text, value.getBytes());
    }
  }
}

Connection::Connection(const QString& path, int flags)
    // One thread uses it: SQLite's own locks would cost more than a look at a column.
    : path_(path),
      database_(path.toStdString(), flags | SQLite::OPEN_NOMUTEX, 0, checkedFileLayer()) {
  patience_.waitFor(database_.getHandle());
  harden(database_.getHandle());
  addLanguage(database_.getHandle());
  sqlite3_update_hook(
      database_.getHandle(),
      [](void* log, int, const char*, const char* table, sqlite3_int64 row) {
        static_cast<WriteLog*>(log)->wrote(table, row);
      },
      &writtenRows_);
  sqlite3_progress_handler(
      database_.getHandle(), kStepsACall,
      [](void* self) { return static_cast<Connection*>(self)->isTooMuchWork() ? 1 : 0; }, this);
  database_.exec(
      "PRAGMA synchronous = FULL; PRAGMA cell_size_check = ON; PRAGMA cache_size = -5000;"
      "PRAGMA ignore_check_constraints = ON;");
}

Connection::~Connection() {
  statements_.clear();
}

bool Connection::holdsPath() const {
  int moved = 0;
  sqlite3_file_control(database_.getHandle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  return moved == 0;
}

Connection::Lease::~Lease() {
  if (!statement_) return;
  statement_->tryReset();
  statement_->clearBindings();
}

bool Connection::isTooMuchWork() {
  work_ += kStepsACall;
  return work_ > mostSteps;
}

Connection::Lease Connection::prepare(const QByteArray& text) const {
  beginWork();
  const auto found = statements_.constFind(text);
  // A statement that is in use elsewhere is not shared: use counts tell.
  if (found != statements_.constEnd() && found->use_count() == 1) return Lease(*found);
  return guarded([&] {
    auto statement = std::make_shared<SQLite::Statement>(database_, text.toStdString());
    if (text.size() > kLongestStatement) return Lease(std::move(statement));
    if (statements_.size() >= kMostStatements) statements_.clear();
    if (!statements_.contains(text)) statements_.insert(text, statement);
    return Lease(std::move(statement));
  });
}

Connection::Lease Connection::prepare(const sql::Statement& statement) const {
  Lease lease = prepare(statement.text);
  guarded([&] {
    int place = 0;
    for (const QVariant& value : statement.values) bindValue(*lease, ++place, value);
  });
  return lease;
}

int Connection::execute(const QByteArray& text, const QVariantList& values) {
  requireTransaction();
  ++writes_;
  const Lease lease = prepare(sql::Statement{text, values});
  return run(*lease);
}

int Connection::run(SQLite::Statement& statement) const {
  const bool began = isInTransaction();
  const int code = statement.tryExecuteStep();
  const bool ended = began && !isInTransaction();
  if (code != SQLITE_DONE && !(ended && isAboutLocks(database_.getExtendedErrorCode()))) {
    throwFailure(SQLite::Exception(database_.getHandle(), code));
  }
  return database_.getChanges();
}

qint64 Connection::lastInsertKey() const {
  return database_.getLastInsertRowid();
}

// Transactions change nothing by themselves: they leave the count of writes alone.
void Connection::control(const QByteArray& text) const {
  const Lease lease = prepare(text);
  run(*lease);
}

bool Connection::isInTransaction() const {
  return sqlite3_get_autocommit(database_.getHandle()) == 0;
}

// After some disk errors SQLite rolls back by itself: what is written on would stand alone.
void Connection::requireTransaction() const {
  if (depth_ > 0 && !isInTransaction()) {
    throw Failure(failure::kDiskError, QStringLiteral("La transazione e' stata annullata"));
  }
}

void Connection::begin() {
  requireTransaction();
  if (depth_ == 0) endSnapshot(*this);
  control(depth_ == 0 ? QByteArray("BEGIN IMMEDIATE") : "SAVEPOINT " + savepoint(depth_));
  ++depth_;
}

void Connection::commit() {
  if (depth_ == 0) {
    throw Failure(failure::kNoTransaction, QStringLiteral("Nessuna transazione da confermare"));
  }
  try {
    requireTransaction();
    control(depth_ == 1 ? QByteArray("COMMIT") : "RELEASE " + savepoint(depth_ - 1));
    if (--depth_ == 0) patience_.restore();
  } catch (const Failure&) {
    // A commit that failed must leave nothing half done and no transaction open.
    rollback();
    throw;
  }
}

void Connection::rollback() {
  if (depth_ > 0) rollbackTo(--depth_);
}

void Connection::rollbackTo(int depth) {
  ++writes_;
  forgetQueries();
  if (!isInTransaction()) return;
  const QByteArray name = savepoint(depth);
  const QByteArray text =
      depth == 0 ? QByteArray("ROLLBACK") : "ROLLBACK TO " + name + "; RELEASE " + name;
  database_.tryExec(text.toStdString());
}

Connection::Reading::Reading(const Connection& connection) : connection_(connection) {
  if (connection_.isInTransaction()) return;
  connection_.control("BEGIN");
  began_ = true;
}

Connection::Reading::~Reading() {
  if (began_) connection_.database_.tryExec("COMMIT");
}

void Connection::lookForWrites() {
  const Lease lease = prepare("PRAGMA data_version");
  const qint64 version = guarded([&] {
    return lease->executeStep() ? static_cast<qint64>(lease->getColumn(0).getInt64()) : 0;
  });
  if (version == dataVersion_) return;
  dataVersion_ = version;
  ++writes_;
  forgetQueries();
}

void Connection::forgetQueries() {
  queries_.clear();
  writtenRows_.wroteAll();
  keptKeys_.forgetAll();
}

}  // namespace store
