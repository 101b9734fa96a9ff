#pragma once

#include <QComboBox>
#include <QElapsedTimer>
#include <QListView>
#include <QStyledItemDelegate>
#include <functional>

#include "platform/record_model.h"

namespace platform {

// The values of a lookup list; what is typed in quick succession leads to the first value that
// begins with it.
class LookupView final : public QListView {
  Q_OBJECT
 public:
  LookupView(LookupListPtr list, QWidget* parent);
  void keyboardSearch(const QString& typed) override;

 Q_SIGNALS:
  void tabPressed(bool forward);

 protected:
  bool focusNextPrevChild(bool next) override;

 private:
  LookupListPtr list_;
  QString prefix_;
  QElapsedTimer lastTyped_;
};

// Cell editor of a lookup column: opens dropped down, and is done with when the list closes.
class LookupCombo final : public QComboBox {
  Q_OBJECT
 public:
  LookupCombo(LookupListPtr list, QWidget* parent);
  qint64 key() const { return list_->keyAt(currentIndex()); }
  bool hasKey() const { return currentIndex() >= 0; }
  void setKey(qint64 key) { setCurrentIndex(list_->rowOfKey(key)); }
  void showPopup() override;
  void hidePopup() override;

 Q_SIGNALS:
  void chosen(QAbstractItemDelegate::EndEditHint next);
  void givenUp();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void choose(QAbstractItemDelegate::EndEditHint next);

  LookupListPtr list_;
  bool opened_ = false;
  bool chosen_ = false;
};

// Shows and edits the cells of a RecordModel. What the user has changed goes to the writer.
class CellDelegate final : public QStyledItemDelegate {
  Q_OBJECT
 public:
  using Writer = std::function<void(const QModelIndex& cell, const QVariant& value)>;
  CellDelegate(Writer writer, QObject* parent);

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model,
                    const QModelIndex& index) const override;
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

 private:
  QWidget* createList(const ColumnSetup& setup, QWidget* parent) const;

  Writer writer_;
};

}  // namespace platform
