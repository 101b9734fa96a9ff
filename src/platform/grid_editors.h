#pragma once

#include <QEvent>
#include <QStyledItemDelegate>
#include <QTimer>
#include <functional>
#include <memory>
#include <vector>

#include "platform/data_combo.h"
#include "platform/record_model.h"

namespace platform {

// Drops down the list of a combo box that edits a cell, and tells when it has closed.
class CellList final : public QObject {
  Q_OBJECT
 public:
  explicit CellList(DataCombo& combo);

 Q_SIGNALS:
  void closed();

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void open();

  DataCombo& combo_;
  std::vector<std::unique_ptr<QEvent>> keys_;  // pressed before the list is there
  bool opened_ = false;
  QTimer opening_;
  QTimer closing_;
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
