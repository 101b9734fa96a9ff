#include "store/key_cache.h"

#include <algorithm>

namespace store {
namespace {

constexpr std::size_t kMostKeys = 1 << 20;

}  // namespace

const KeyCache::Keys* KeyCache::find(const QString& text) const {
  const auto found = lists_.constFind(text);
  if (found == lists_.constEnd()) return nullptr;
  const std::vector<QByteArray>& tables = found->tables;
  const bool good = std::all_of(tables.begin(), tables.end(), [&](const QByteArray& table) {
    const auto written = writes_.since(found->at, table);
    return written && written->empty();
  });
  return good ? &found->keys : nullptr;
}

void KeyCache::keep(const QString& text, const Keys& keys, const std::vector<QByteArray>& tables) {
  if (const auto replaced = lists_.constFind(text); replaced != lists_.constEnd()) {
    size_ -= replaced->keys.size();
    lists_.erase(replaced);
  }
  if (size_ + keys.size() > kMostKeys) forgetAll();
  size_ += keys.size();
  lists_.insert(text, {keys, tables, writes_.now()});
}

void KeyCache::forgetAll() {
  lists_.clear();
  size_ = 0;
}

}  // namespace store
