#include "store/write_log.h"

namespace store {
namespace {

constexpr std::size_t kMostEntries = 1000;

}  // namespace

void WriteLog::wrote(const char* table, qint64 row) {
  if (entries_.size() == kMostEntries) wroteAll();
  entries_.push_back({table, row});
}

void WriteLog::wroteAll() {
  forgotten_ = now() + 1;
  entries_.clear();
}

std::optional<WriteLog::Rows> WriteLog::since(quint64 moment, const QByteArray& table) const {
  if (moment < forgotten_) return std::nullopt;
  Rows rows;
  for (std::size_t i = moment - forgotten_; i < entries_.size(); ++i) {
    if (entries_[i].table == table) rows.push_back(entries_[i].row);
  }
  return rows;
}

}  // namespace store
