#pragma once

#include <QVector>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "store/connection.h"
#include "store/query.h"
#include "store/result_table.h"

namespace store {

// The keys of a row: the row numbers of its one or two tables, packed into eight bytes.
using RowKey = quint64;
RowKey packKey(qint64 first, qint64 second);
qint64 firstKey(RowKey key);
qint64 secondKey(RowKey key);

// Where a cursor stands in its rows: on a row, before the first (-1), behind the last, or where
// its row was until it was deleted: the next one has come there.
struct Place {
  qint64 row = -1;
  bool gone = false;
};

// The rows of a dynaset or snapshot: their keys in order, and the values last shown. Cursors on
// the same rows share one.
class RowSet final {
 public:
  RowSet(std::shared_ptr<Connection> connection, const QString& source);
  RowSet(const RowSet&) = delete;
  RowSet& operator=(const RowSet&) = delete;

  const Query& query() const { return query_; }
  Connection& connection() const { return *connection_; }

  // The same query, read anew into a set of its own.
  std::shared_ptr<RowSet> again() const;
  qint64 count() const { return static_cast<qint64>(keys_.size()); }
  RowKey keyAt(qint64 place) const { return keys_[static_cast<std::size_t>(place)]; }
  // Place of a key, -1 if it is not in the set; looks near `hint` first.
  qint64 placeOf(RowKey key, qint64 hint) const;

  // Rows come and go; the places of all cursors follow.
  void attach(Place* place) { places_.push_back(place); }
  void detach(Place* place) { std::erase(places_, place); }
  void append(RowKey key);
  void remove(qint64 place);

  // All values of a row, for the row that is worked on; empty if it has gone from the archive.
  const QVector<QVariant>& row(qint64 place);
  // One value of a row, for a list of many; Null if the row has gone. Only the fields that were
  // expected, or asked for before, are read for the rows around.
  QVariant cell(qint64 place, int field);
  void expect(const QVector<int>& fields);
  // Forgets what was read before, and reads one row again.
  void refresh(qint64 place);
  // Places of the rows that meet a condition, in order; kept until something is written.
  const std::vector<qint64>& hits(const QString& condition);

 private:
  Connection& source() { return results_ ? results_->connection() : *connection_; }
  RowKey keyIn(const SQLite::Statement& row) const;
  void readKeys();
  quint64 read(const sql::Statement& statement, bool pointers);
  void readResults();

  // Rows read lately by one statement.
  struct Read {
    sql::Statement statement;
    std::unordered_map<RowKey, QVector<QVariant>> rows;
    quint64 at = 0;  // Connection::writes() then
  };
  const QVector<QVariant>& rowIn(Read& read, qint64 place);
  QVector<QVariant> fetch(RowKey key, const sql::Statement& statement);
  void fetchAround(Read& read, qint64 place);
  bool isRead(const Read& read, qint64 place) const;
  void forgetIfWritten(Read& read) const;
  std::optional<std::vector<RowKey>> written() const;
  std::vector<qint64> search(const QString& condition);

  std::shared_ptr<Connection> connection_;
  QString text_;
  Query query_;
  Read whole_;
  Read part_;           // of the fields in slots_
  QVector<int> slots_;  // place of a field in what is read for lists, -1 if it is not read
  std::unique_ptr<ResultTable> results_;  // of a query without keys
  std::vector<RowKey> keys_;
  quint64 readAt_ = 0;  // moment of Connection::writtenRows() when they were read
  std::vector<Place*> places_;
  struct Hits {
    QString condition;
    quint64 writes = 0;
    std::vector<qint64> places;
  } hits_;
};

}  // namespace store
