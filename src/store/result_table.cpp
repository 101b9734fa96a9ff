#include "store/result_table.h"

namespace store {

ResultTable::ResultTable(Connection& archive, const Query& query)
    : memory_(QStringLiteral(":memory:"), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE) {
  create(query);
  fill(archive, query);
}

void ResultTable::create(const Query& query) {
  QByteArray columns;
  for (int i = 0; i < query.fields().size(); ++i) {
    columns += (i > 0 ? ", " : "") + sql::quoteName(Query::resultColumn(i));
    if (query.fields()[i].kind == FieldKind::Text) columns += " COLLATE ITALIANO";
  }
  memory_.execute("CREATE TABLE " + sql::quoteName(Query::resultName()) + " (" + columns + ")");
}

void ResultTable::fill(Connection& archive, const Query& query) {
  QByteArray places;
  for (int i = 0; i < query.fields().size(); ++i) places += i > 0 ? ", ?" : "?";
  const auto rows = archive.prepare(query.everything());
  const auto target = memory_.prepare("INSERT INTO " + sql::quoteName(Query::resultName()) +
                                      " VALUES (" + places + ")");
  memory_.begin();
  guarded([&] {
    while (rows->executeStep()) {
      for (int i = 0; i < query.fields().size(); ++i) {
        bindValue(*target, i + 1, columnValue(*rows, i));
      }
      target->exec();
      target->reset();
      ++count_;
    }
  });
  memory_.commit();
}

}  // namespace store
