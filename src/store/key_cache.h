#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <vector>

namespace store {

// The keys of lists read lately, by the lists' texts. A list is good until one of the tables it
// reads has been written to.
class KeyCache final {
 public:
  using Keys = std::vector<quint64>;

  // Null if the list is not kept or no longer good.
  const Keys* find(const QString& text) const;
  // `tables` are those whose rows decide what is in the list, and in which order.
  void keep(const QString& text, const Keys& keys, const std::vector<QByteArray>& tables);

  void wrote(const char* table) { ++writes_[QByteArray(table)]; }
  // Anything may have been written, or stored queries changed.
  void wroteAll();

 private:
  struct Kept {
    Keys keys;
    std::vector<QByteArray> tables;
    quint64 at = 0;
  };
  // Writes to all of the tables: grows with each.
  quint64 writesTo(const std::vector<QByteArray>& tables) const;

  QHash<QString, Kept> lists_;
  QHash<QByteArray, quint64> writes_;
  std::size_t size_ = 0;
};

}  // namespace store
