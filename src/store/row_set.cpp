#include "store/row_set.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include "store/hot_statement.h"
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

}  // namespace

RowKey packKey(qint64 first, qint64 second) {
  constexpr qint64 most = std::numeric_limits<qint32>::max();
  if (first > most || second > most || first < -most || second < -most) {
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
  whole_ = query_.rowByKeys(allFields(query_));
  const Connection::Reading reading(*connection_);
  if (query_.keyTables().empty()) {
    readResults();
  } else if (query_.sortTerms().empty()) {
    readKeys();
  } else {
    readSorted();
  }
}

std::shared_ptr<RowSet> RowSet::again() const {
  return std::make_shared<RowSet>(connection_, text_);
}

RowKey RowSet::keyIn(const HotStatement& row) const {
  return packKey(row.integer(0), query_.keyTables().size() == 2 ? row.integer(1) : 0);
}

void RowSet::readKeys() {
  std::vector<RowKey> keys;
  keys.reserve(keys_.size());
  if (const auto halves = query_.halves()) {
    mergeKeys(*halves, keys);
  } else {
    HotStatement rows(*connection_, query_.keys(false));
    while (rows.step()) keys.push_back(keyIn(rows));
  }
  keys.shrink_to_fit();
  keys_ = std::move(keys);
}

// Both tables are walked side by side in the order of their common number: that spares a search
// in the one for each row of the other.
void RowSet::mergeKeys(const Query::Halves& halves, std::vector<RowKey>& keys) {
  HotStatement pointers(*connection_, halves.pointers);
  HotStatement targets(*connection_, halves.targets);
  bool more = targets.step();
  while (more && pointers.step()) {
    // Null points at no row, neither does a text.
    if (!pointers.isInteger(0)) continue;
    const qint64 wanted = pointers.integer(0);
    while (more && targets.integer(0) < wanted) more = targets.step();
    if (more && targets.integer(0) == wanted) keys.push_back(packKey(pointers.integer(1), wanted));
  }
}

void RowSet::readSorted() {
  RowSorter sorter(*connection_, query_.sortTerms());
  HotStatement rows(*connection_, query_.keys(true));
  const int values = query_.keyTables().size() == 2 ? 2 : 1;
  while (rows.step()) sorter.add(keyIn(rows), rows, values);
  keys_ = sorter.sorted();
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
  read_.erase(keyAt(place));
  current_.valid = false;
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

void RowSet::forgetIfWritten() {
  if (readAt_ == connection_->writes()) return;
  read_.clear();
  readAt_ = connection_->writes();
}

bool RowSet::isRead(qint64 place) const {
  return place >= 0 && place < count() && read_.count(keyAt(place)) != 0;
}

const QVector<QVariant>& RowSet::row(qint64 place) {
  const RowKey key = keyAt(place);
  if (!current_.valid || current_.key != key || current_.readAt != connection_->writes()) {
    connection_->lookForWrites();
    current_ = {key, connection_->writes(), true, fetch(key, whole_)};
  }
  return current_.values;
}

void RowSet::expect(const QVector<int>& fields) {
  bool grown = false;
  for (const int field : fields) {
    if (field < 0 || slots_[field] >= 0) continue;
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
  part_ = query_.rowByKeys(wanted);
  read_.clear();
}

QVariant RowSet::cell(qint64 place, int field) {
  expect({field});
  forgetIfWritten();
  auto found = read_.find(keyAt(place));
  if (found == read_.end()) {
    fetchAround(place);
    found = read_.find(keyAt(place));
  }
  return found->second.isEmpty() ? QVariant() : found->second[slots_[field]];
}

// Who has come from a row next to this one is likely to go on.
void RowSet::fetchAround(qint64 place) {
  const Connection::Reading reading(*connection_);
  connection_->lookForWrites();
  forgetIfWritten();
  if (read_.size() > kMostRows) read_.clear();
  const qint64 first = isRead(place + 1) ? std::max<qint64>(place - kAhead + 1, 0) : place;
  const qint64 last = isRead(place - 1) ? std::min(place + kAhead, count()) - 1 : place;
  for (qint64 i = first; i <= last; ++i) {
    if (!isRead(i)) read_.emplace(keyAt(i), fetch(keyAt(i), part_));
  }
}

void RowSet::refresh(qint64 place) {
  connection_->lookForWrites();
  forgetIfWritten();
  read_.erase(keyAt(place));
  current_.valid = false;
}

const std::vector<qint64>& RowSet::hits(const QString& condition) {
  connection_->lookForWrites();
  if (hits_.condition != condition || hits_.writes != connection_->writes()) {
    std::vector<qint64> places = search(condition);
    hits_ = Hits{condition, connection_->writes(), std::move(places)};
  }
  return hits_.places;
}

std::vector<qint64> RowSet::search(const QString& condition) {
  std::vector<RowKey> found;
  const auto lease = source().prepare(query_.keysWhere(query_.condition(condition, *connection_)));
  const bool two = query_.keyTables().size() == 2;
  guarded([&] {
    while (lease->executeStep()) {
      found.push_back(
          packKey(lease->getColumn(0).getInt64(), two ? lease->getColumn(1).getInt64() : 0));
    }
  });
  std::sort(found.begin(), found.end());
  std::vector<qint64> places;
  for (qint64 i = 0; !found.empty() && i < count(); ++i) {
    if (std::binary_search(found.begin(), found.end(), keyAt(i))) places.push_back(i);
  }
  return places;
}

}  // namespace store
