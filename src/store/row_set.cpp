#include "store/row_set.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include "store/hot_statement.h"
#include "store/pairing.h"
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

RowSet::RowSet(std::shared_ptr<Connection> connection, const QString& source)
    : connection_(std::move(connection)), text_(source), query_(source, upToDate(*connection_)) {
  readAt_ = connection_->writes();
  slots_ = QVector<int>(query_.fields().size(), -1);
  whole_.statement = query_.rowByKeys(allFields(query_));
  const Connection::Reading reading(*connection_);
  for (const TableInfo* table : query_.indexedTables()) connection_->trustIndexes(*table);
  const auto halves = query_.halves();
  if (!halves) trustIndexes(nullptr);
  if (query_.keyTables().empty()) {
    readResults();
    return;
  }
  // A list that was left comes back at once, as long as nothing has been written to it since.
  if (const std::vector<RowKey>* kept = connection_->keptKeys().find(text_)) {
    keys_ = *kept;
    return;
  }
  if (const auto walk = query_.walk()) {
    takeKeys(*walk);
  } else if (query_.sortTerms().empty()) {
    readKeys(halves);
  } else {
    readSorted(halves);
  }
  connection_->keptKeys().keep(text_, keys_, query_.tables());
}

std::shared_ptr<RowSet> RowSet::again() const {
  return std::make_shared<RowSet>(connection_, text_);
}

RowKey RowSet::keyIn(const HotStatement& row) const {
  return packKey(row.integer(0), query_.keyTables().size() == 2 ? row.integer(1) : 0);
}

// Those that may be used for the query's rows, or for the ones among them that meet a condition.
void RowSet::trustIndexes(const sql::ExprPtr& condition) const {
  for (const auto& [table, index] : query_.usableIndexes(condition)) {
    connection_->trustIndex(*table, *index);
  }
}

void RowSet::readKeys(const std::optional<Query::Halves>& halves) {
  if (halves) {
    mergeKeys(*halves);
  } else {
    HotStatement rows(*connection_, query_.keys());
    while (rows.step()) keys_.push_back(keyIn(rows));
    const auto grows = [](RowKey a, RowKey b) { return firstKey(a) < firstKey(b); };
    if (query_.keysGrow() && !std::is_sorted(keys_.begin(), keys_.end(), grows)) {
      throwDamaged(query_.keyTables().front()->table->name, QStringLiteral("record non ordinati"));
    }
  }
  keys_.shrink_to_fit();
}

void RowSet::takeKeys(const sql::Statement& walk) {
  const std::vector<qint64> taken = connection_->take(walk);
  keys_.resize(taken.size());
  std::transform(taken.begin(), taken.end(), keys_.begin(),
                 [](qint64 key) { return packKey(key, 0); });
}

void RowSet::mergeKeys(const Query::Halves& halves) {
  const std::vector<qint64> pointers = connection_->take(halves.pointers);  // number, key, ...
  const std::vector<qint64> targets = connection_->take(halves.targets);
  keys_.reserve(std::min(pointers.size() / 2, targets.size()));
  Pairing pairing(targets);
  for (std::size_t i = 0; i < pointers.size(); i += 2) {
    if (pairing.meets(pointers[i], pointers[i + 1])) {
      keys_.push_back(packKey(pointers[i + 1], pointers[i]));
    }
  }
  requireWhole(pairing, halves);
}

// Both sides come from indexes. A row without a partner is rare: the tables are asked, for it may
// be the index that lacks it.
void RowSet::requireWhole(const Pairing& pairing, const Query::Halves& halves) {
  const QString& table = query_.keyTables().front()->table->name;
  if (!pairing.inOrder()) throwDamaged(table, QStringLiteral("indice non ordinato"));
  if (!pairing.isComplete()) {
    HotStatement count(*connection_, query_.pairCount());
    if (!count.step() || count.integer(0) != pairing.pairs()) {
      throwDamaged(table, QStringLiteral("indice incompleto"));
    }
  }
  for (const auto& [of, index] : halves.indexes) connection_->trust(*of, *index);
}

void RowSet::readSorted(const std::optional<Query::Halves>& halves) {
  RowSorter sorter(*connection_, query_.sortTerms());
  if (halves) {
    addPointers(*halves, sorter);
  } else {
    HotStatement rows(*connection_, query_.keys());
    const int values = static_cast<int>(query_.keyTables().size());
    while (rows.step()) sorter.add(keyIn(rows), rows, values);
  }
  keys_ = sorter.sorted();
}

void RowSet::addPointers(const Query::Halves& halves, RowSorter& sorter) {
  const std::vector<qint64> targets = connection_->take(halves.targets);
  HotStatement pointers(*connection_, halves.pointers);
  Pairing pairing(targets);
  while (pointers.step()) {
    // Null points at no row, neither does a text.
    if (!pointers.isInteger(0)) continue;
    const qint64 target = pointers.integer(0);
    const qint64 pointer = pointers.integer(1);
    if (pairing.meets(target, pointer)) sorter.add(packKey(pointer, target), pointers, 2);
  }
  requireWhole(pairing, halves);
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
    QVector<QVariant> values = fetch(keyAt(i), read.statement);
    // Nobody has written: it was an index that said there is such a row.
    const bool isThere = !values.isEmpty() && (results_ || values.last().toBool());
    if (!isThere && readAt_ == connection_->writes()) {
      throwDamaged(query_.keyTables().front()->table->name, QStringLiteral("indice errato"));
    }
    read.rows.emplace(keyAt(i), std::move(values));
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
  trustIndexes(asked);
  source().keyTable().show(keys_);
  HotStatement found(source(), query_.placesWhere(asked));
  std::vector<qint64> places;
  while (found.step()) places.push_back(found.integer(0));
  std::sort(places.begin(), places.end());
  return places;
}

}  // namespace store
