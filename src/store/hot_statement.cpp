#include "store/hot_statement.h"

#include <SQLiteCpp/Exception.h>
#include <sqlite3.h>

#include "store/text_bytes.h"

namespace store {

HotStatement::HotStatement(Connection& connection, const sql::Statement& statement)
    : connection_(connection) {
  connection_.beginWork();
  const int code =
      sqlite3_prepare_v2(connection_.database().getHandle(), statement.text.constData(),
                         static_cast<int>(statement.text.size()), &statement_, nullptr);
  if (code != SQLITE_OK) fail();
  bind(statement.values);
}

HotStatement::~HotStatement() {
  sqlite3_finalize(statement_);
}

void HotStatement::fail() const {
  throwFailure(SQLite::Exception(connection_.database().getHandle()));
}

void HotStatement::bind(const QVariantList& values) {
  int place = 0;
  for (const QVariant& value : values) {
    ++place;
    if (!value.isValid()) {
      sqlite3_bind_null(statement_, place);
    } else if (value.typeId() == QMetaType::QString) {
      const QByteArray text = bytesOf(value.toString());
      sqlite3_bind_text(statement_, place, text.constData(), static_cast<int>(text.size()),
                        SQLITE_TRANSIENT);
    } else if (value.typeId() == QMetaType::Double) {
      sqlite3_bind_double(statement_, place, value.toDouble());
    } else {
      sqlite3_bind_int64(statement_, place, value.toLongLong());
    }
  }
}

bool HotStatement::step() {
  const int code = sqlite3_step(statement_);
  if (code != SQLITE_ROW && code != SQLITE_DONE) fail();
  return code == SQLITE_ROW;
}

qint64 HotStatement::integer(int column) const {
  return sqlite3_column_int64(statement_, column);
}

double HotStatement::real(int column) const {
  return sqlite3_column_double(statement_, column);
}

bool HotStatement::isNull(int column) const {
  return sqlite3_column_type(statement_, column) == SQLITE_NULL;
}

bool HotStatement::isNumber(int column) const {
  const int type = sqlite3_column_type(statement_, column);
  return type == SQLITE_INTEGER || type == SQLITE_FLOAT;
}

bool HotStatement::isInteger(int column) const {
  return sqlite3_column_type(statement_, column) == SQLITE_INTEGER;
}

std::string_view HotStatement::text(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  return text == nullptr
             ? std::string_view()
             : std::string_view(text,
                                static_cast<std::size_t>(sqlite3_column_bytes(statement_, column)));
}

}  // namespace store
