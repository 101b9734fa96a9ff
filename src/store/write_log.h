#pragma once

#include <QByteArray>
#include <optional>
#include <vector>

namespace store {

// The rows written to lately, as far as that is known.
class WriteLog final {
 public:
  using Rows = std::vector<qint64>;

  void wrote(const char* table, qint64 row);
  // Anything may have been written.
  void wroteAll();

  quint64 now() const { return forgotten_ + entries_.size(); }
  // Numbers of the rows of a table that were written to since a moment; nullopt if that is not
  // known.
  std::optional<Rows> since(quint64 moment, const QByteArray& table) const;

 private:
  struct Entry {
    QByteArray table;
    qint64 row = 0;
  };
  std::vector<Entry> entries_;
  quint64 forgotten_ = 0;  // entries before those
};

}  // namespace store
