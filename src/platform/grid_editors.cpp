#include "platform/grid_editors.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLocale>
#include <QPainter>

#include "platform/date_box.h"
#include "platform/masked_box.h"
#include "platform/text_box.h"
#include "platform/time_box.h"

namespace platform {

using store::FieldKind;

namespace {

constexpr int kListCharacters = 24;

const ColumnSetup& setupOf(const QModelIndex& index) {
  return static_cast<const RecordModel*>(index.model())->columns().at(index.column()).setup;
}

// Any number, with decimals. A text that is none counts as nothing entered.
class NumberBox final : public LineBox {
 public:
  using LineBox::LineBox;
  bool IsValid() const override { return true; }

 protected:
  QVariant parsed(const QString& text) const override {
    bool isNumber = false;
    double value = QLocale().toDouble(text, &isNumber);
    if (!isNumber) value = QLocale::c().toDouble(text, &isNumber);
    return isNumber ? QVariant(value) : QVariant();
  }
  QString shown(const QVariant& value) const override { return cellText(value, FieldKind::Number); }
};

LineBox* createLine(const ColumnSetup& setup, QWidget* parent) {
  if (setup.kind == FieldKind::Date) return new DateBox(parent);
  if (setup.kind == FieldKind::Time) return new TimeBox(parent);
  if (setup.kind == FieldKind::Text) {
    auto* box = new TextBox(parent);
    if (setup.maxLength > 0) box->setMaxLength(setup.maxLength);
    return box;
  }
  if (setup.mask.isEmpty()) return new NumberBox(parent);
  auto* box = new MaskedBox(parent);
  box->SetMask(setup.mask);
  return box;
}

bool confirms(const QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const int key = static_cast<const QKeyEvent*>(event)->key();
  return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab ||
         key == Qt::Key_Backtab;
}

}  // namespace

LookupView::LookupView(LookupListPtr list, QWidget* parent)
    : QListView(parent), list_(std::move(list)) {
  setUniformItemSizes(true);
}

void LookupView::keyboardSearch(const QString& typed) {
  const bool anew =
      !lastTyped_.isValid() || lastTyped_.elapsed() > QApplication::keyboardInputInterval();
  prefix_ = anew ? typed : prefix_ + typed;
  lastTyped_.start();
  const int row = list_->rowOfPrefix(prefix_);
  if (row >= 0) setCurrentIndex(list_->index(row));
}

bool LookupView::focusNextPrevChild(bool next) {
  Q_EMIT tabPressed(next);
  return true;
}

LookupCombo::LookupCombo(LookupListPtr list, QWidget* parent)
    : QComboBox(parent), list_(std::move(list)) {
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
  list_->ensureLoaded();
  setModel(list_.get());
  auto* values = new LookupView(list_, this);
  setView(values);
  // Keys select too while the list is still to open: only what is picked in it is a choice.
  connect(this, &QComboBox::activated, this, [this] {
    if (opened_) choose(QAbstractItemDelegate::NoHint);
  });
  connect(values, &LookupView::tabPressed, this, [this, values](bool forward) {
    setCurrentIndex(values->currentIndex().row());
    choose(forward ? QAbstractItemDelegate::EditNextItem : QAbstractItemDelegate::EditPreviousItem);
    hidePopup();
  });
}

void LookupCombo::choose(QAbstractItemDelegate::EndEditHint next) {
  chosen_ = true;
  Q_EMIT chosen(next);
}

void LookupCombo::showEvent(QShowEvent* event) {
  QComboBox::showEvent(event);
  // The key that opened the editor comes first.
  QMetaObject::invokeMethod(this, &QComboBox::showPopup, Qt::QueuedConnection);
}

void LookupCombo::showPopup() {
  QComboBox::showPopup();
  opened_ = view()->isVisible();
}

void LookupCombo::hidePopup() {
  const bool wasOpen = view()->isVisible();
  QComboBox::hidePopup();
  if (!wasOpen) return;
  // A choice is told only after the list has closed.
  const auto conclude = [this] {
    if (!chosen_) Q_EMIT givenUp();
  };
  QMetaObject::invokeMethod(this, conclude, Qt::QueuedConnection);
}

CellDelegate::CellDelegate(Writer writer, QObject* parent)
    : QStyledItemDelegate(parent), writer_(std::move(writer)) {}

QWidget* CellDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                    const QModelIndex& index) const {
  const ColumnSetup& setup = setupOf(index);
  if (setup.list != nullptr) return createList(setup, parent);
  LineBox* line = createLine(setup, parent);
  line->setFrame(false);
  line->setAlignment(Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt()));
  return line;
}

QWidget* CellDelegate::createList(const ColumnSetup& setup, QWidget* parent) const {
  auto* combo = new LookupCombo(setup.list, parent);
  // Views hand out their delegate as constant, and listen to what it tells.
  auto* self = const_cast<CellDelegate*>(this);
  connect(combo, &LookupCombo::chosen, self, [self, combo](EndEditHint next) {
    Q_EMIT self->commitData(combo);
    Q_EMIT self->closeEditor(combo, next);
  });
  connect(combo, &LookupCombo::givenUp, self,
          [self, combo] { Q_EMIT self->closeEditor(combo, RevertModelCache); });
  return combo;
}

void CellDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  const QVariant value = index.data(Qt::EditRole);
  if (auto* combo = qobject_cast<LookupCombo*>(editor)) {
    combo->setKey(value.toLongLong());
  } else if (BoundControl* box = BoundControl::of(editor)) {
    box->ShowValue(value);
  }
}

void CellDelegate::setModelData(QWidget* editor, QAbstractItemModel*,
                                const QModelIndex& index) const {
  if (auto* combo = qobject_cast<LookupCombo*>(editor)) {
    const qint64 key = combo->hasKey() ? combo->key() : index.data(Qt::EditRole).toLongLong();
    if (key != index.data(Qt::EditRole).toLongLong()) writer_(index, key);
  } else if (const BoundControl* box = BoundControl::of(editor)) {
    if (box->DataChanged() && box->IsValid()) writer_(index, box->Value());
  }
}

void CellDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                        const QModelIndex&) const {
  QRect place = option.rect;
  // A list in a narrow column still has to show what it offers.
  if (qobject_cast<LookupCombo*>(editor) != nullptr) {
    place.setWidth(qMax(place.width(), editor->fontMetrics().averageCharWidth() * kListCharacters));
  }
  editor->setGeometry(place);
}

void CellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  QStyleOptionViewItem plain = option;
  plain.state &= ~QStyle::State_HasFocus;
  QStyledItemDelegate::paint(painter, plain, index);
  if (!option.state.testFlag(QStyle::State_HasFocus)) return;
  // The row is marked as a whole; a frame tells which of its cells the keys are for.
  painter->save();
  painter->setPen(QPen(option.palette.color(QPalette::HighlightedText), 2));
  painter->drawRect(option.rect.adjusted(2, 2, -2, -2));
  painter->restore();
}

// A date or time that is not complete can be left, but not confirmed.
bool CellDelegate::eventFilter(QObject* watched, QEvent* event) {
  const BoundControl* box = BoundControl::of(qobject_cast<QWidget*>(watched));
  if (box == nullptr || box->IsValid() || !confirms(event)) {
    return QStyledItemDelegate::eventFilter(watched, event);
  }
  QApplication::beep();
  return true;
}

bool CellDelegate::editorEvent(QEvent* event, QAbstractItemModel*, const QStyleOptionViewItem&,
                               const QModelIndex& index) {
  if (!index.flags().testFlag(Qt::ItemIsUserCheckable)) return false;
  const bool space =
      event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space;
  if (!space && event->type() != QEvent::MouseButtonDblClick) return false;
  writer_(index, index.data(Qt::EditRole).toInt() != 0 ? 0 : -1);
  return true;
}

}  // namespace platform
