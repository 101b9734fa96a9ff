#pragma once

#include <QAbstractListModel>
#include <QHash>
#include <functional>
#include <memory>

#include "store/recordset.h"

namespace platform {

// The values of one lookup list, shared by every combo that offers it: row 0 is the blank value
// with key 0, then the rows of a recordset in their order. It is opened when first shown, and holds
// no text but those asked for; until then single texts are asked for by key, so that a form opens
// at the same speed with any list.
class LookupList final : public QAbstractListModel {
  Q_OBJECT
 public:
  struct Source {
    // The values, ordered by their texts.
    std::function<store::RecordsetPtr()> open;
    QString keyField;
    QString textField;
    std::function<QString(qint64)> textOf;  // text of one key, empty if there is none
  };
  explicit LookupList(Source source, QObject* parent = nullptr);

  // Opens the list if that has not been done yet. Fails as `open` does; the list is then empty.
  void ensureLoaded();
  bool isLoaded() const { return rows_ != nullptr; }
  // Forgets the values (the list has changed); whoever shows one asks again (signal changed).
  void invalidate();

  QString text(qint64 key) const;  // empty for 0 and for unknown keys
  // Key and text of a row, 0 and empty outside the list. Fail as the store does.
  qint64 keyAt(int row) const;
  QString textAt(int row) const;
  // Searches open the list first, and fail as `open` does.
  int rowOfKey(qint64 key);            // -1 if missing
  int rowOfText(const QString& text);  // equal in the archive's sense; -1 if missing
  // First row whose text begins with `prefix` (case does not count), or else the first that does so
  // but for its accents; -1 if none.
  int rowOfPrefix(const QString& prefix);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 Q_SIGNALS:
  void changed();

 private:
  void drop();
  QVariant valueAt(int row, int field) const;
  int firstNotBefore(const QString& text) const;

  Source source_;
  store::RecordsetPtr rows_;
  int count_ = 0;
  int keyField_ = 0;
  int textField_ = 0;
  mutable QHash<qint64, QString> singleTexts_;
};

using LookupListPtr = std::shared_ptr<LookupList>;

}  // namespace platform
