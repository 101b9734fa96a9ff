#include "store/row_sorter.h"

#include <sqlite3.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <numeric>

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

// The whole number that ordered() was made of.
int64_t wholeNumber(quint64 value) {
  const quint64 sortable = value << 1;
  const quint64 bits = (sortable >> 63) != 0 ? sortable & ~(1ULL << 63) : ~sortable;
  return static_cast<int64_t>(std::bit_cast<double>(bits));
}

// The first bytes of a text's key as a number: they decide most comparisons.
quint64 leading(std::string_view key) {
  quint64 value = 0;
  for (std::size_t i = 0; i < 8; ++i) {
    value = (value << 8) | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
  }
  return value;
}

struct RankedText {
  quint64 leading;
  std::string_view key;
  quint32 row;
};

bool before(const RankedText& a, const RankedText& b) {
  if (a.leading != b.leading) return a.leading < b.leading;
  return a.key < b.key;
}

// Writes each text's rank over its row's value; equal texts share a rank.
void rank(std::vector<RankedText>& texts, std::vector<quint64>& values) {
  std::sort(texts.begin(), texts.end(), before);
  quint64 next = 1ULL << 63;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (i > 0 && before(texts[i - 1], texts[i])) ++next;
    values[texts[i].row] = next;
  }
}

}  // namespace

RowSorter::RowSorter(Connection& connection, const std::vector<Query::SortTerm>& terms)
    : connection_(connection), terms_(terms), columns_(terms.size()) {
  for (std::size_t t = 0; t < terms.size(); ++t) columns_[t].ofList = terms[t].list != nullptr;
}

void RowSorter::add(quint64 key, const SQLite::Statement& row, int column) {
  keys_.push_back(key);
  for (Column& target : columns_) addValue(target, row.getColumn(column++));
}

void RowSorter::addValue(Column& column, const SQLite::Column& value) {
  const int type = value.getType();
  if (type == SQLITE_INTEGER || type == SQLITE_FLOAT) {
    column.values.push_back(ordered(value.getDouble()));
  } else if (type == SQLITE_NULL || column.ofList) {
    // A text where the key of a list should be selects nothing.
    column.values.push_back(kNull);
  } else {
    const char* text = value.getText();
    appendSortKey({text, static_cast<std::size_t>(value.getBytes())}, column.texts);
    column.values.push_back((1ULL << 63) + column.textEnds.size());
    column.textEnds.push_back(column.texts.size());
  }
}

void RowSorter::rankTexts(Column& column) {
  std::vector<RankedText> texts;
  texts.reserve(column.textEnds.size());
  for (std::size_t i = 0; i < column.values.size(); ++i) {
    const quint64 value = column.values[i];
    if (value < (1ULL << 63)) continue;
    const auto place = static_cast<std::size_t>(value - (1ULL << 63));
    const std::size_t begin = place == 0 ? 0 : column.textEnds[place - 1];
    const std::string_view key =
        std::string_view(column.texts).substr(begin, column.textEnds[place] - begin);
    texts.push_back({leading(key), key, static_cast<quint32>(i)});
  }
  rank(texts, column.values);
}

// The column holds keys of a list: each is replaced by the rank of its text.
void RowSorter::rankList(Column& column, const Query::SortTerm& term) {
  std::vector<quint64> distinct(column.values);
  std::sort(distinct.begin(), distinct.end());
  distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
  std::vector<std::string> keys(distinct.size());
  std::vector<RankedText> texts;
  const auto lease = connection_.prepare(
      "SELECT " + sql::quoteName(term.listColumn) + " FROM " +
      sql::quoteName(term.list->table->name) + " WHERE rowid = ?");
  for (std::size_t i = 0; i < distinct.size(); ++i) {
    if (distinct[i] == kNull) continue;
    lease->reset();
    lease->bind(1, wholeNumber(distinct[i]));
    if (!lease->executeStep() || lease->getColumn(0).isNull()) continue;
    const SQLite::Column value = lease->getColumn(0);
    const char* text = value.getText();
    appendSortKey({text, static_cast<std::size_t>(value.getBytes())}, keys[i]);
    texts.push_back({leading(keys[i]), keys[i], static_cast<quint32>(i)});
  }
  std::vector<quint64> ranks(distinct.size(), kNull);
  rank(texts, ranks);
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
  std::transform(rows.begin(), rows.end(), result.begin(), [this](const Row& row) { return keys_[row.place]; });
  return result;
}

}  // namespace store
