#include "platform/lookup_list.h"

#include <algorithm>

namespace platform {

LookupList::LookupList(Source source, QObject* parent)
    : QAbstractListModel(parent), source_(std::move(source)) {}

void LookupList::addItem(const QString& text, qint64 key) {
  if (!rows_.contains(key)) rows_.insert(key, static_cast<int>(keys_.size()));
  texts_.append(text);
  keys_.append(key);
}

void LookupList::clear() {
  texts_.clear();
  keys_.clear();
  rows_.clear();
  singleTexts_.clear();
}

void LookupList::ensureLoaded() {
  if (loaded_) return;
  clear();  // what an earlier attempt that failed has left
  addItem(QString(), 0);
  source_.load(*this);
  beginResetModel();
  loaded_ = true;
  endResetModel();
}

void LookupList::invalidate() {
  beginResetModel();
  loaded_ = false;
  clear();
  endResetModel();
  Q_EMIT changed();
}

QString LookupList::text(qint64 key) const {
  if (key == 0) return {};
  if (loaded_) return textAt(rows_.value(key, -1));
  auto known = singleTexts_.constFind(key);
  if (known == singleTexts_.constEnd()) known = singleTexts_.insert(key, source_.textOf(key));
  return *known;
}

qint64 LookupList::keyAt(int row) const {
  return keys_.value(row, 0);
}

QString LookupList::textAt(int row) const {
  return texts_.value(row);
}

int LookupList::rowOfKey(qint64 key) {
  ensureLoaded();
  return rows_.value(key, -1);
}

template <typename Matches>
int LookupList::firstRow(Matches matches) {
  ensureLoaded();
  const auto found = std::find_if(texts_.cbegin(), texts_.cend(), matches);
  return found == texts_.cend() ? -1 : static_cast<int>(found - texts_.cbegin());
}

int LookupList::rowOfText(const QString& text) {
  return firstRow([&text](const QString& candidate) {
    return candidate.compare(text, Qt::CaseInsensitive) == 0;
  });
}

int LookupList::rowOfPrefix(const QString& prefix) {
  return firstRow([&prefix](const QString& candidate) {
    return candidate.startsWith(prefix, Qt::CaseInsensitive);
  });
}

int LookupList::rowCount(const QModelIndex& parent) const {
  return parent.isValid() || !loaded_ ? 0 : static_cast<int>(texts_.size());
}

QVariant LookupList::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  if (role != Qt::DisplayRole && role != Qt::EditRole) return {};
  return textAt(index.row());
}

}  // namespace platform
