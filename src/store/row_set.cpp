#include "store/row_set.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <numeric>
#include <unordered_set>

#include "store/row_sorter.h"
#include "store/sqlite_language.h"

namespace store {
namespace {

constexpr std::size_t kMostRows = 512;
constexpr qint64 kAhead = 32;
constexpr std::size_t kRoom = 1 << 18;  // for keys while they are read; untouched it costs nothing

// Another program may have changed stored queries.
const Catalog& upToDate(Connection& connection) {
  connection.lookForWrites();
  return connection;
}

QVector<int> allFields(const Query& query) {
  QVector<int> fields(query.fields().size());
  std::iota(fields.begin(), fields.end(), 0);
  return fields;
}

bool fitsKey(qint64 number) {
  constexpr qint64 most = std::numeric_limits<qint32>::max();
  return number >= -most && number <= most;
}

}  // namespace

RowKey packKey(qint64 first, qint64 second) {
  if (!fitsKey(first) || !fitsKey(second)) {
    throw Failure(failure::kOverflow, QStringLiteral("Chiave di record fuori dai limiti"));
  }
  return (static_cast<RowKey>(static_cast<quint32>(first)) << 32) | static_cast<quint32>(second);
}

qint64 firstKey(RowKey key) {
  return static_cast<qint32>(key >> 32);
}

qint64 secondKey(RowKey key) {
  return static_cast<qint32>(key & 0xffffffffU);
}

RowSet::RowSet(std::shared_ptr<Connection> connection, const QString& source)
    : connection_(std::move(connection)), text_(source), query_(source, upToDate(*connection_)) {
  slots_ = QVector<int>(query_.fields().size(), -1);
  whole_.statement = query_.rowByKeys(allFields(query_));
  const Connection::Reading reading(*connection_);
  readAt_ = connection_->writtenRows().now();
  if (query_.keyTables().empty()) {
    readResults();
    return;
  }
  // A list that was left comes back at once, as long as nothing has been written to it since.
  if (const std::vector<RowKey>* kept = connection_->keptKeys().find(text_)) {
    keys_ = *kept;
    return;
  }
  readKeys();
  connection_->keptKeys().keep(text_, keys_, query_.tables());
}

std::shared_ptr<RowSet> RowSet::again() const {
  return std::make_shared<RowSet>(connection_, text_);
}

RowKey RowSet::keyIn(const SQLite::Statement& row) const {
  const bool two = query_.keyTables().size() == 2;
  return packKey(row.getColumn(0).getInt64(), two ? row.getColumn(1).getInt64() : 0);
}

// Where the first table points at all rows of the second one, and at each once, there is no need to
// look for their pairs.
void RowSet::readKeys() {
  if (const auto halves = query_.halves()) {
    const auto sum = connection_->prepare(halves->targets);
    const auto targets = guarded([&] {
      sum->executeStep();
      return static_cast<quint64>(sum->getColumn(0).getInt64());
    });
    if (read(halves->pointers, true) == targets) return;
  }
  read(query_.keys(), false);
}

// Returns the sum of the second keys' marks. Of pointers, what is no whole number, or none that a
// key can hold, points at no row of a list.
quint64 RowSet::read(const sql::Statement& statement, bool pointers) {
  quint64 sum = 0;
  keys_.clear();
  keys_.reserve(kRoom);
  RowSorter sorter(*connection_, query_.sortTerms());
  const bool sorts = query_.leavesSorting();
  const int values = static_cast<int>(query_.keyTables().size());
  const auto rows = connection_->prepare(statement);
  guarded([&] {
    while (rows->executeStep()) {
      qint64 second = 0;
      if (values == 2) {
        const SQLite::Column column = rows->getColumn(1);
        second = column.getInt64();
        if (pointers && (!column.isInteger() || !fitsKey(second))) continue;
      }
      const RowKey key = packKey(rows->getColumn(0).getInt64(), second);
      sum += keyMark(second);
      if (sorts) {
        sorter.add(key, *rows, values);
      } else {
        keys_.push_back(key);
      }
    }
  });
  if (sorts) keys_ = sorter.sorted();
  keys_.shrink_to_fit();
  return sum;
}

void RowSet::readResults() {
  results_ = std::make_unique<ResultTable>(*connection_, query_);
  keys_.resize(static_cast<std::size_t>(results_->count()));
  for (std::size_t i = 0; i < keys_.size(); ++i) keys_[i] = packKey(static_cast<qint64>(i) + 1, 0);
}

qint64 RowSet::placeOf(RowKey key, qint64 hint) const {
  if (hint >= 0 && hint < count() && keyAt(hint) == key) return hint;
  const auto found = std::find(keys_.begin(), keys_.end(), key);
  return found == keys_.end() ? -1 : found - keys_.begin();
}

void RowSet::append(RowKey key) {
  for (Place* place : places_) {
    if (!place->gone && place->row == count()) ++place->row;
  }
  keys_.push_back(key);
  hits_ = Hits();
}

void RowSet::remove(qint64 place) {
  whole_.rows.erase(keyAt(place));
  part_.rows.erase(keyAt(place));
  keys_.erase(keys_.begin() + place);
  hits_ = Hits();
  for (Place* other : places_) {
    if (other->row == place) other->gone = true;
    if (other->row > place) --other->row;
  }
}

QVector<QVariant> RowSet::fetch(RowKey key, const sql::Statement& statement) {
  QVector<QVariant> values;
  const auto lease = source().prepare(statement);
  guarded([&] {
    const int place = static_cast<int>(statement.values.size()) + 1;
    lease->bind(place, static_cast<int64_t>(firstKey(key)));
    if (query_.keyTables().size() == 2)
      lease->bind(place + 1, static_cast<int64_t>(secondKey(key)));
    if (!lease->executeStep()) return;
    const int columns = lease->getColumnCount();
    values.reserve(columns);
    for (int i = 0; i < columns; ++i) values.append(columnValue(*lease, i));
  });
  return values;
}

void RowSet::forgetIfWritten(Read& read) const {
  if (read.at == connection_->writes()) return;
  read.rows.clear();
  read.at = connection_->writes();
}

bool RowSet::isRead(const Read& read, qint64 place) const {
  return place >= 0 && place < count() && read.rows.count(keyAt(place)) != 0;
}

const QVector<QVariant>& RowSet::row(qint64 place) {
  return rowIn(whole_, place);
}

void RowSet::expect(const QVector<int>& fields) {
  bool grown = false;
  for (const int field : fields) {
    if (field < 0 || field >= slots_.size() || slots_[field] >= 0) continue;
    slots_[field] = 0;
    grown = true;
  }
  if (!grown) return;
  QVector<int> wanted;
  for (int field = 0; field < slots_.size(); ++field) {
    if (slots_[field] < 0) continue;
    slots_[field] = static_cast<int>(wanted.size());
    wanted.append(field);
  }
  part_.statement = query_.rowByKeys(wanted);
  part_.rows.clear();
}

QVariant RowSet::cell(qint64 place, int field) {
  if (slots_[field] < 0) expect({field});
  const QVector<QVariant>& values = rowIn(part_, place);
  return values.isEmpty() ? QVariant() : values[slots_[field]];
}

const QVector<QVariant>& RowSet::rowIn(Read& read, qint64 place) {
  forgetIfWritten(read);
  auto found = read.rows.find(keyAt(place));
  if (found == read.rows.end()) {
    fetchAround(read, place);
    found = read.rows.find(keyAt(place));
  }
  return found->second;
}

// Who has come from a row next to this one is likely to go on.
void RowSet::fetchAround(Read& read, qint64 place) {
  const Connection::Reading reading(*connection_);
  connection_->lookForWrites();
  forgetIfWritten(read);
  if (read.rows.size() > kMostRows) read.rows.clear();
  const bool back = isRead(read, place + 1);
  const bool on = isRead(read, place - 1);
  const qint64 first = back ? std::max<qint64>(place - kAhead + 1, 0) : place;
  const qint64 last = on ? std::min(place + kAhead, count()) - 1 : place;
  for (qint64 i = first; i <= last; ++i) {
    if (isRead(read, i)) continue;
    try {
      read.rows.emplace(keyAt(i), fetch(keyAt(i), read.statement));
    } catch (const Failure&) {
      // A neighbour on a damaged page is no fault of this row.
      if (i == place) throw;
    }
  }
}

void RowSet::refresh(qint64 place) {
  connection_->lookForWrites();
  whole_.rows.erase(keyAt(place));
  part_.rows.erase(keyAt(place));
}

const std::vector<qint64>& RowSet::hits(const QString& condition) {
  connection_->lookForWrites();
  if (hits_.condition != condition || hits_.writes != connection_->writes()) {
    std::vector<qint64> places = search(condition);
    hits_ = Hits{condition, connection_->writes(), std::move(places)};
  }
  return hits_.places;
}

// The rows of the list that its condition may say something else of than when it was read; nullopt
// if those are not known.
std::optional<std::vector<RowKey>> RowSet::written() const {
  const bool byRow = query_.listsByRow();
  std::array<WriteLog::Rows, 2> rows;
  for (const QByteArray& table : query_.tables()) {
    auto since = connection_->writtenRows().since(readAt_, table);
    if (!since || (!byRow && !since->empty())) return std::nullopt;
    for (std::size_t t = 0; t < query_.keyTables().size(); ++t) {
      if (query_.keyTables()[t]->table->name.toUtf8() == table) rows[t] = *since;
    }
  }
  for (WriteLog::Rows& each : rows) std::sort(each.begin(), each.end());
  const auto has = [](const WriteLog::Rows& sorted, qint64 row) {
    return std::binary_search(sorted.begin(), sorted.end(), row);
  };
  std::vector<RowKey> keys;
  if (rows[0].empty() && rows[1].empty()) return keys;
  std::copy_if(keys_.begin(), keys_.end(), std::back_inserter(keys), [&](RowKey key) {
    return has(rows[0], firstKey(key)) || has(rows[1], secondKey(key));
  });
  return keys;
}

// A row belongs to the list because its key does: of one that was written to since, it is not asked
// whether it would be listed again.
std::vector<qint64> RowSet::search(const QString& condition) {
  const sql::ExprPtr asked = query_.condition(condition, *connection_);
  const auto changed = written();
  std::unordered_set<RowKey> found;
  const auto rows = source().prepare(query_.keysWhere(asked, changed.has_value()));
  guarded([&] {
    while (rows->executeStep()) found.insert(keyIn(*rows));
  });
  if (changed && !changed->empty()) {
    const sql::Statement test = query_.testByKeys(asked);
    for (const RowKey key : *changed) {
      if (!fetch(key, test).isEmpty()) found.insert(key);
    }
  }
  std::vector<qint64> places;
  for (qint64 i = 0; !found.empty() && i < count(); ++i) {
    if (found.contains(keyAt(i))) places.push_back(i);
  }
  return places;
}

}  // namespace store
