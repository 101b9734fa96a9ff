#include "store/row_set.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include "store/row_sorter.h"

namespace store {
namespace {

constexpr std::size_t kMostRows = 512;
constexpr qint64 kAhead = 32;

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

// Adds to the sum of keys that does not depend on their order: the same for the same keys only.
quint64 mixed(qint64 key) {
  quint64 value = static_cast<quint64>(key) + 0x9e3779b97f4a7c15;
  value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9;
  value = (value ^ (value >> 27)) * 0x94d049bb133111eb;
  return value ^ (value >> 31);
}

}  // namespace

RowKey packKey(qint64 first, qint64 second) {
  constexpr qint64 most = std::numeric_limits<qint32>::max();
  if (first > most || second > most || first < -most || second < -most) {
    throw Failure(failure::kOverflow, QStringLiteral("Chiave di record fuori dai limiti"));
  }
  return (static_cast<RowKey>(static_cast<quint32>(first)) << 32) | static_cast<quint32>(second);
}

RowSet::RowSet(std::shared_ptr<Connection> connection, const QString& source)
    : connection_(std::move(connection)), text_(source), query_(source, upToDate(*connection_)) {
  slots_ = QVector<int>(query_.fields().size(), -1);
  whole_.statement = query_.rowByKeys(allFields(query_));
  const Connection::Reading reading(*connection_);
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
    quint64 targets = 0;
    const auto rows = connection_->prepare(halves->targets);
    guarded([&] {
      while (rows->executeStep()) targets += mixed(rows->getColumn(0).getInt64());
    });
    if (read(halves->pointers) == targets) return;
  }
  read(query_.keys());
}

// Returns the sum of the second keys.
quint64 RowSet::read(const sql::Statement& statement) {
  quint64 sum = 0;
  keys_.clear();
  RowSorter sorter(*connection_, query_.sortTerms());
  const bool sorts = query_.leavesSorting();
  const int values = static_cast<int>(query_.keyTables().size());
  const auto rows = connection_->prepare(statement);
  guarded([&] {
    while (rows->executeStep()) {
      const RowKey key = keyIn(*rows);
      sum += mixed(secondKey(key));
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

// A row belongs to the list because its key does: whether it would be listed again is not asked.
std::vector<qint64> RowSet::search(const QString& condition) {
  const sql::ExprPtr asked = query_.condition(condition, *connection_);
  source().keyTable().show(keys_);
  const auto found = source().prepare(query_.placesWhere(asked));
  std::vector<qint64> places;
  guarded([&] {
    while (found->executeStep()) places.push_back(found->getColumn(0).getInt64());
  });
  std::sort(places.begin(), places.end());
  return places;
}

}  // namespace store
