#include "raw_file.h"

#include <sqlite3.h>

namespace bench {

RawFile::RawFile(const QString& path, const char* fileLayer) {
  const int result =
      sqlite3_open_v2(path.toUtf8().constData(), &handle_, SQLITE_OPEN_READWRITE, fileLayer);
  if (result != SQLITE_OK) qFatal("%s: %s", qPrintable(path), sqlite3_errstr(result));
  run("PRAGMA synchronous = FULL; PRAGMA cell_size_check = ON; PRAGMA cache_size = -16384;");
}

RawFile::~RawFile() {
  sqlite3_close(handle_);
}

void RawFile::run(const char* sql) {
  if (sqlite3_exec(handle_, sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
    qFatal("%s: %s", sql, sqlite3_errmsg(handle_));
  }
}

RawStatement::RawStatement(const RawFile& file, const QByteArray& sql) {
  if (sqlite3_prepare_v2(file.handle(), sql.constData(), -1, &handle_, nullptr) != SQLITE_OK) {
    qFatal("%s: %s", sql.constData(), sqlite3_errmsg(file.handle()));
  }
}

RawStatement::~RawStatement() {
  sqlite3_finalize(handle_);
}

void RawStatement::fail() const {
  qFatal("%s: %s", sqlite3_sql(handle_), sqlite3_errmsg(sqlite3_db_handle(handle_)));
}

void RawStatement::bind(int place, qint64 value) {
  sqlite3_bind_int64(handle_, place, value);
}

void RawStatement::bind(int place, const QByteArray& value) {
  sqlite3_bind_text(handle_, place, value.constData(), static_cast<int>(value.size()),
                    SQLITE_TRANSIENT);
}

bool RawStatement::step() {
  const int result = sqlite3_step(handle_);
  if (result == SQLITE_ROW) return true;
  if (result != SQLITE_DONE) fail();
  reset();
  return false;
}

void RawStatement::execute() {
  if (step()) fail();
}

void RawStatement::reset() {
  sqlite3_reset(handle_);
}

int RawStatement::columns() const {
  return sqlite3_column_count(handle_);
}

const char* RawStatement::name(int column) const {
  return sqlite3_column_name(handle_, column);
}

qint64 RawStatement::number(int column) const {
  return sqlite3_column_int64(handle_, column);
}

const char* RawStatement::text(int column) const {
  return reinterpret_cast<const char*>(sqlite3_column_text(handle_, column));
}

}  // namespace bench
