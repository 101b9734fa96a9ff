#include "store/key_cache.h"

namespace store {
namespace {

constexpr std::size_t kMostKeys = 1 << 20;

}  // namespace

quint64 KeyCache::writesTo(const std::vector<QByteArray>& tables) const {
  quint64 sum = 0;
  for (const QByteArray& table : tables) sum += writes_.value(table);
  return sum;
}

const KeyCache::Keys* KeyCache::find(const QString& text) const {
  const auto found = lists_.constFind(text);
  if (found == lists_.constEnd() || found->at != writesTo(found->tables)) return nullptr;
  return &found->keys;
}

void KeyCache::keep(const QString& text, const Keys& keys, const std::vector<QByteArray>& tables) {
  if (const auto replaced = lists_.constFind(text); replaced != lists_.constEnd()) {
    size_ -= replaced->keys.size();
    lists_.erase(replaced);
  }
  if (size_ + keys.size() > kMostKeys) wroteAll();
  size_ += keys.size();
  lists_.insert(text, {keys, tables, writesTo(tables)});
}

void KeyCache::wroteAll() {
  lists_.clear();
  size_ = 0;
}

}  // namespace store
