#pragma once

#include <QtGlobal>
#include <utility>
#include <vector>

struct sqlite3;

namespace store {

// The keys of one list as a table that queries can name: tvx_rows(first, second), its row number
// the place in the list. It is read from its beginning, or by `first`, whichever costs less.
class KeyTable final {
 public:
  // Makes the table known to an open file, for as long as that is open.
  void addTo(sqlite3* handle);
  // The list that the table shows; it has to stay as it is while a query reads it.
  void show(const std::vector<quint64>& keys);

  qint64 count() const { return keys_ == nullptr ? 0 : static_cast<qint64>(keys_->size()); }
  quint64 keyAt(qint64 place) const { return (*keys_)[static_cast<std::size_t>(place)]; }
  // Keys and places in the order of the keys; sorted when first asked for.
  using Places = std::vector<std::pair<quint64, qint64>>;
  const Places& sorted();

 private:
  const std::vector<quint64>* keys_ = nullptr;
  Places sorted_;
};

// The two row numbers, of 32 bits each, that a key is packed from.
qint64 firstKey(quint64 key);
qint64 secondKey(quint64 key);

}  // namespace store
