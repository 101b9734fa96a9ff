#include "platform/grid_editors.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QPainter>

#include "platform/date_box.h"
#include "platform/handlers.h"
#include "platform/masked_box.h"
#include "platform/popup_keys.h"
#include "platform/screen_reader.h"
#include "platform/text_box.h"
#include "platform/time_box.h"
#include "store/value_text.h"

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
    const std::optional<double> number = store::numberIn(text);
    return number ? QVariant(*number) : QVariant();
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
  return event->type() == QEvent::KeyPress &&
         leavesList(static_cast<const QKeyEvent*>(event)->key());
}

}  // namespace

CellList::CellList(DataCombo& combo) : QObject(&combo), combo_(combo) {
  // The key that closes the list goes on to the combo box, and is dealt with first.
  closing_.setSingleShot(true);
  connect(&closing_, &QTimer::timeout, this, [this] {
    if (combo_.isVisible()) Q_EMIT closed();
  });
  combo.installEventFilter(this);
  // The box has neither place nor value yet.
  opening_.setSingleShot(true);
  onSignal(&opening_, &QTimer::timeout, this, &CellList::open);
  opening_.start(0);
}

void CellList::open() {
  opened_ = true;
  if (!combo_.isVisible()) return;
  combo_.SetDroppedDown(true);
  combo_.view()->installEventFilter(this);
  for (const auto& key : keys_) QCoreApplication::sendEvent(combo_.view(), key.get());
}

bool CellList::eventFilter(QObject* watched, QEvent* event) {
  if (watched != &combo_) {
    if (event->type() == QEvent::Hide) closing_.start(0);
    return false;
  }
  const bool holds = event->type() == QEvent::KeyPress && !opened_;
  if (holds) keys_.emplace_back(event->clone());
  return holds;
}

CellDelegate::CellDelegate(Writer writer, QObject* parent)
    : QStyledItemDelegate(parent), writer_(std::move(writer)) {}

QWidget* CellDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                    const QModelIndex& index) const {
  const ColumnSetup& setup = setupOf(index);
  const QString caption =
      index.model()->headerData(index.column(), Qt::Horizontal, Qt::DisplayRole).toString();
  if (setup.list != nullptr) {
    QWidget* list = createList(setup, parent);
    nameControl(*list, caption);
    return list;
  }
  LineBox* line = createLine(setup, parent);
  nameControl(*line, caption);
  line->setFrame(false);
  line->setAlignment(Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt()));
  return line;
}

QWidget* CellDelegate::createList(const ColumnSetup& setup, QWidget* parent) const {
  auto* combo = new DataCombo(parent);
  combo->SetList(setup.list);
  // Views hand out their delegate as constant, and listen to what it tells.
  auto* self = const_cast<CellDelegate*>(this);
  connect(new CellList(*combo), &CellList::closed, self, [self, combo] {
    Q_EMIT self->commitData(combo);
    Q_EMIT self->closeEditor(combo, NoHint);
  });
  return combo;
}

void CellDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  BoundControl* box = BoundControl::of(editor);
  if (box != nullptr) guarded([&] { box->ShowValue(index.data(Qt::EditRole)); });
}

void CellDelegate::setModelData(QWidget* editor, QAbstractItemModel*,
                                const QModelIndex& index) const {
  const BoundControl* box = BoundControl::of(editor);
  if (box == nullptr || !box->DataChanged()) return;
  // What is no date clears the cell, like what is no number.
  const bool isDate = qobject_cast<DateBox*>(editor) != nullptr;
  if (isDate || box->IsValid()) writer_(index, box->Value());
}

void CellDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                        const QModelIndex&) const {
  QRect place = option.rect;
  // A list in a narrow column still has to show what it offers.
  if (qobject_cast<DataCombo*>(editor) != nullptr) {
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

// A time that is not complete can be left, but not confirmed.
bool CellDelegate::eventFilter(QObject* watched, QEvent* event) {
  const BoundControl* box = BoundControl::of(qobject_cast<QWidget*>(watched));
  const bool isDate = qobject_cast<DateBox*>(watched) != nullptr;
  if (box == nullptr || isDate || box->IsValid() || !confirms(event)) {
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
