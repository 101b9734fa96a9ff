#pragma once

#include <QAbstractListModel>
#include <QHash>
#include <QVector>
#include <functional>
#include <memory>

namespace platform {

// The values of one lookup list, shared by every combo that offers it: row 0 is the blank value
// with key 0, then text and key in the list's order. It is filled when first shown; until then
// single texts are asked for by key, so that a form opens at the same speed with any list.
class LookupList final : public QAbstractListModel {
  Q_OBJECT
 public:
  struct Source {
    std::function<void(LookupList&)> load;  // fills the list with addItem
    std::function<QString(qint64)> textOf;  // text of one key, empty if there is none
  };
  explicit LookupList(Source source, QObject* parent = nullptr);

  // For `load`: adds a value at the end.
  void addItem(const QString& text, qint64 key);
  // Reads the list if that has not been done yet. Fails as `load` does; the list is then empty.
  void ensureLoaded();
  bool isLoaded() const { return loaded_; }
  // Forgets the values (the list has changed); whoever shows one asks again (signal changed).
  void invalidate();

  QString text(qint64 key) const;  // empty for 0 and for unknown keys
  qint64 keyAt(int row) const;
  QString textAt(int row) const;
  // Searches read the list first, and fail as `load` does.
  int rowOfKey(qint64 key);            // -1 if missing
  int rowOfText(const QString& text);  // exact but for case; -1 if missing
  // First row whose text begins with `prefix` (case does not count); -1 if none.
  int rowOfPrefix(const QString& prefix);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 Q_SIGNALS:
  void changed();

 private:
  void clear();
  template <typename Matches>
  int firstRow(Matches matches);

  Source source_;
  bool loaded_ = false;
  QVector<QString> texts_;
  QVector<qint64> keys_;
  QHash<qint64, int> rows_;
  mutable QHash<qint64, QString> singleTexts_;  // asked for before the list was read
};

using LookupListPtr = std::shared_ptr<LookupList>;

}  // namespace platform
