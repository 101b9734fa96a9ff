#pragma once

#include <QHash>
#include <QString>

#include "store/write_log.h"

namespace store {

// The keys of lists read lately, by the lists' texts. A list is good until one of the tables it
// reads has been written to.
class KeyCache final {
 public:
  using Keys = std::vector<quint64>;

  explicit KeyCache(const WriteLog& writes) : writes_(writes) {}

  // Null if the list is not kept or no longer good.
  const Keys* find(const QString& text) const;
  // `tables` are those whose rows decide what is in the list, and in which order.
  void keep(const QString& text, const Keys& keys, const std::vector<QByteArray>& tables);
  void forgetAll();

 private:
  struct Kept {
    Keys keys;
    std::vector<QByteArray> tables;
    quint64 at = 0;
  };

  const WriteLog& writes_;
  QHash<QString, Kept> lists_;
  std::size_t size_ = 0;
};

}  // namespace store
