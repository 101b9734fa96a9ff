#include "store/row_sorter.h"

#include <sqlite3.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

#include "store/text_order.h"

namespace store {
namespace {

// Null, then numbers, then texts: each in a range of its own, hence 63 bits for a number. Whole
// numbers up to 52 bits and amounts of money order exactly.
constexpr quint64 kNull = 0;

quint64 ordered(double number) {
  const auto bits = std::bit_cast<quint64>(number + 0.0);
  const quint64 sortable = (bits >> 63) != 0 ? ~bits : bits | (1ULL << 63);
  return std::max<quint64>(sortable >> 1, 1);
}

// The key of a list that ordered() was made of; a number that no row has for what is none.
int64_t listKey(quint64 value) {
  const quint64 sortable = value << 1;
  const quint64 bits = (sortable >> 63) != 0 ? sortable & ~(1ULL << 63) : ~sortable;
  const auto number = std::bit_cast<double>(bits);
  constexpr double kMost = 9007199254740992.0;
  return number > -kMost && number < kMost && number == std::floor(number)
             ? static_cast<int64_t>(number)
             : std::numeric_limits<int64_t>::min();
}

constexpr std::size_t kLeading = 8;

// Some bytes of a text's key as a number, from a place on.
quint64 leading(std::string_view key, std::size_t from) {
  quint64 value = 0;
  for (std::size_t i = from; i < from + kLeading; ++i) {
    value = (value << 8) | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
  }
  return value;
}

struct Text {
  quint64 leading;
  std::string_view key;
  quint32 row;
};

// Ranks texts, each text's rank written over its row's value; equal ones share a rank.
class Ranking final {
 public:
  explicit Ranking(std::vector<quint64>& values) : values_(values) {}

  void add(std::string_view key, std::size_t row) {
    texts_.push_back({leading(key, 0), key, static_cast<quint32>(row)});
  }
  void finish() { rank(texts_.begin(), texts_.end(), 0); }

 private:
  using Place = std::vector<Text>::iterator;

  // Sorts by a few bytes at a time: comparing numbers spares most looks at the texts.
  void rank(Place first, Place last, std::size_t from) {
    std::sort(first, last, [](const Text& a, const Text& b) { return a.leading < b.leading; });
    while (first != last) {
      const quint64 shared = first->leading;
      const auto end =
          std::find_if(first, last, [&](const Text& t) { return t.leading != shared; });
      // A key has no byte 0: behind one all are at their end.
      if (end - first == 1 || (shared & 0xff) == 0) {
        for (auto text = first; text != end; ++text) values_[text->row] = next_;
        ++next_;
      } else {
        for (auto text = first; text != end; ++text) {
          text->leading = leading(text->key, from + kLeading);
        }
        rank(first, end, from + kLeading);
      }
      first = end;
    }
  }

  std::vector<quint64>& values_;
  std::vector<Text> texts_;
  quint64 next_ = 1ULL << 63;
};

}  // namespace

RowSorter::RowSorter(Connection& connection, const std::vector<Query::SortTerm>& terms)
    : connection_(connection), terms_(terms), columns_(terms.size()) {
  for (std::size_t t = 0; t < terms.size(); ++t) columns_[t].ofList = terms[t].list != nullptr;
}

void RowSorter::add(quint64 key, const SQLite::Statement& row, int column) {
  keys_.push_back(key);
  for (Column& target : columns_) addValue(target, row, column++);
}

void RowSorter::addValue(Column& target, const SQLite::Statement& row, int column) {
  const SQLite::Column value = row.getColumn(column);
  const int type = value.getType();
  if (type == SQLITE_INTEGER || type == SQLITE_FLOAT) {
    target.values.push_back(ordered(value.getDouble()));
  } else if (type == SQLITE_NULL || target.ofList) {
    // A text where the key of a list should be selects nothing.
    target.values.push_back(kNull);
  } else {
    const char* text = value.getText();
    appendSortKey({text, static_cast<std::size_t>(value.getBytes())}, target.texts);
    target.values.push_back((1ULL << 63) + target.textEnds.size());
    target.textEnds.push_back(target.texts.size());
  }
}

void RowSorter::rankTexts(Column& column) {
  Ranking ranking(column.values);
  for (std::size_t i = 0; i < column.values.size(); ++i) {
    const quint64 value = column.values[i];
    if (value < (1ULL << 63)) continue;
    const auto place = static_cast<std::size_t>(value - (1ULL << 63));
    const std::size_t begin = place == 0 ? 0 : column.textEnds[place - 1];
    const std::string_view key =
        std::string_view(column.texts).substr(begin, column.textEnds[place] - begin);
    ranking.add(key, i);
  }
  ranking.finish();
}

// The column holds keys of a list: each is replaced by the rank of its text.
void RowSorter::rankList(Column& column, const Query::SortTerm& term) {
  std::vector<quint64> distinct(column.values);
  std::sort(distinct.begin(), distinct.end());
  distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
  std::vector<std::string> keys(distinct.size());
  std::vector<quint64> ranks(distinct.size(), kNull);
  Ranking ranking(ranks);
  const auto lease =
      connection_.prepare("SELECT " + sql::quoteName(term.listColumn) + " FROM " +
                          sql::quoteName(term.list->table->name) + " WHERE rowid = ?");
  guarded([&] {
    for (std::size_t i = 0; i < distinct.size(); ++i) {
      if (distinct[i] == kNull) continue;
      lease->reset();
      lease->bind(1, listKey(distinct[i]));
      if (!lease->executeStep() || lease->getColumn(0).isNull()) continue;
      const SQLite::Column value = lease->getColumn(0);
      const char* text = value.getText();
      appendSortKey({text, static_cast<std::size_t>(value.getBytes())}, keys[i]);
      ranking.add(keys[i], i);
    }
  });
  ranking.finish();
  for (quint64& value : column.values) {
    const auto found = std::lower_bound(distinct.begin(), distinct.end(), value);
    value = ranks[static_cast<std::size_t>(found - distinct.begin())];
  }
}

std::vector<quint64> RowSorter::sorted() {
  for (std::size_t t = 0; t < columns_.size(); ++t) {
    Column& column = columns_[t];
    if (column.ofList) rankList(column, terms_[t]);
    if (!column.textEnds.empty()) rankTexts(column);
    if (terms_[t].descending) {
      for (quint64& value : column.values) value = ~value;
    }
  }
  struct Row {
    quint64 first;
    quint32 place;
  };
  std::vector<Row> rows(keys_.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    rows[i] = {columns_.front().values[i], static_cast<quint32>(i)};
  }
  std::sort(rows.begin(), rows.end(), [this](const Row& a, const Row& b) {
    if (a.first != b.first) return a.first < b.first;
    for (std::size_t t = 1; t < columns_.size(); ++t) {
      const quint64 left = columns_[t].values[a.place];
      const quint64 right = columns_[t].values[b.place];
      if (left != right) return left < right;
    }
    return a.place < b.place;
  });
  std::vector<quint64> result(rows.size());
  std::transform(rows.begin(), rows.end(), result.begin(),
                 [this](const Row& row) { return keys_[row.place]; });
  return result;
}

}  // namespace store
