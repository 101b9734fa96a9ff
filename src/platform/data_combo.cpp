#include "platform/data_combo.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QListView>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>
#include <QWheelEvent>
#include <algorithm>

#include "platform/complaint.h"
#include "platform/drop_down_style.h"
#include "platform/handlers.h"

namespace platform {
namespace {

constexpr int kVisibleRows = 15;
constexpr int kMeasuredRows = 200;
constexpr int kContentsLetters = 8;

bool movesRow(int key) {
  switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
      return true;
    default:
      return false;
  }
}

bool opensList(int key) {
  return key == Qt::Key_F4 || key == Qt::Key_Space;
}

}  // namespace

DataCombo::DataCombo(QWidget* parent) : QComboBox(parent) {
  setStyle(dropDownStyle());
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_InputMethodEnabled);
  setMaxVisibleItems(kVisibleRows);
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(kContentsLetters);
  onSignal(this, &QComboBox::activated, this, [this](int row) { onActivated(row); });
  useOwnText();
}

void DataCombo::SetList(LookupListPtr list) {
  disconnect(listChanged_);
  list_ = std::move(list);
  if (list_ != nullptr) {
    listChanged_ = onSignal(list_.get(), &LookupList::changed, this, [this] { useOwnText(); });
  }
  useOwnText();
}

void DataCombo::useOwnText() {
  if (DroppedDown()) hidePopup();
  endSearch();
  const QStringList text{list_ == nullptr ? QString() : list_->text(key_)};
  if (model() == &ownText_ && ownText_.stringList() == text) return;
  ownText_.setStringList(text);
  if (model() != &ownText_) setModel(&ownText_);
  setCurrentIndex(0);
}

// The current text stays the same, so nobody is told.
void DataCombo::useList() {
  if (list_ == nullptr || usesList()) return;
  list_->ensureLoaded();
  const QSignalBlocker silence(this);
  setModel(list_.get());
  setCurrentIndex(list_->rowOfKey(key_));
}

void DataCombo::setContent(const QVariant& value) {
  key_ = value.toLongLong();
  useOwnText();
  missedText_.clear();
}

void DataCombo::onActivated(int row) {
  missedText_.clear();
  if (!usesList() || list_->keyAt(row) == key_) return;
  key_ = list_->keyAt(row);
  contentEdited();
}

void DataCombo::choose(int row) {
  setCurrentIndex(row);
  Q_EMIT activated(row);
}

bool DataCombo::SelectText(const QString& text) {
  if (list_ == nullptr) return false;
  useList();
  const int row = list_->rowOfText(text);
  choose(std::max(row, 0));
  return row >= 0;
}

void DataCombo::SetDroppedDown(bool down) {
  if (down) {
    open();
  } else {
    hidePopup();
  }
}

void DataCombo::showPopup() {
  guarded([this] { open(); });
}

void DataCombo::open() {
  if (!keys_.makeReady()) return;
  endSearch();
  useList();
  remember();
  prepareView();
  QComboBox::showPopup();
}

void DataCombo::prepareView() {
  if (!viewReady_) {
    if (auto* rows = qobject_cast<QListView*>(view())) rows->setUniformItemSizes(true);
    viewReady_ = true;
  }
  int widest = 0;
  for (int row = 0; row < std::min(count(), kMeasuredRows); ++row) {
    widest = std::max(widest, fontMetrics().horizontalAdvance(itemText(row)));
  }
  const int margin = fontMetrics().averageCharWidth() * 3;
  view()->setMinimumWidth(widest + margin + view()->verticalScrollBar()->sizeHint().width());
}

void DataCombo::keyPressEvent(QKeyEvent* event) {
  guarded([&] { pressKey(event); });
}

void DataCombo::pressKey(QKeyEvent* event) {
  if (typeKey(*event) || showValues(event->key())) return;
  if (!movesRow(event->key()) && !opensList(event->key())) {
    event->ignore();
    return;
  }
  dropSearch();
  // The key that has opened the list moves in it, and does not change the value behind it.
  if (keys_.press(*event)) return;
  useList();
  QComboBox::keyPressEvent(event);
}

void DataCombo::inputMethodEvent(QInputMethodEvent* event) {
  if (event->commitString().isEmpty()) return;
  guarded([&] { search(search_ + event->commitString()); });
}

// True if the key belongs to the text that is searched for.
bool DataCombo::typeKey(const QKeyEvent& event) {
  if (event.key() == Qt::Key_Backspace) {
    if (!search_.isEmpty()) search(search_.chopped(1));
    return true;
  }
  const QString typed = event.text();
  const bool command =
      (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
  if (command || typed.isEmpty() || !typed.at(0).isPrint()) return false;
  if (search_.isEmpty() && event.key() == Qt::Key_Space) return false;
  search(search_ + typed);
  return true;
}

// What stands in the control before the list is opened, or a text is typed.
void DataCombo::remember() {
  keyBefore_ = key_;
  rowBefore_ = currentIndex();
  changedBefore_ = DataChanged();
}

void DataCombo::putBack() {
  key_ = keyBefore_;
  SetDataChanged(changedBefore_);
  setCurrentIndex(rowBefore_);
  if (DroppedDown()) view()->setCurrentIndex(list_->index(rowBefore_));
}

void DataCombo::search(const QString& text) {
  if (list_ == nullptr) return;
  useList();
  if (search_.isEmpty() && !DroppedDown()) remember();
  search_ = text;
  update();
  const int row = text.isEmpty() ? -1 : list_->rowOfPrefix(text);
  missing_ = row < 0 && !text.isEmpty();
  if (missing_) QApplication::beep();
  if (row < 0) return putBack();
  if (DroppedDown()) view()->setCurrentIndex(list_->index(row));
  if (row != currentIndex()) choose(row);
}

// A text that was missed is told after the rest of the event: a click in the list still chooses.
void DataCombo::endSearch() {
  if (missing_) {
    missedText_ = search_;
    QTimer::singleShot(0, this, [this, text = search_] { tellMissed(text); });
  }
  dropSearch();
}

void DataCombo::dropSearch() {
  if (!search_.isEmpty()) update();
  missing_ = false;
  search_.clear();
}

void DataCombo::tellMissed(const QString& text) {
  if (missedText_ != text) return;
  const QString missed = QStringLiteral("\"%1\" non è nell'elenco").arg(text);
  const QString key = QStringLiteral(": F2 apre la finestra delle voci");
  complain(*this, openValues_ ? missed + key : missed, missed);
}

// While the list is open, or nothing in it fits, the box shows what has been typed.
void DataCombo::initStyleOption(QStyleOptionComboBox* option) const {
  QComboBox::initStyleOption(option);
  if (!search_.isEmpty() && (missing_ || DroppedDown())) option->currentText = search_;
}

// True if the key shows the window of the list's values.
bool DataCombo::showValues(int key) {
  if (key != Qt::Key_F2 || !openValues_) return false;
  if (missing_) missedText_ = search_;
  dropSearch();
  hidePopup();
  openValues_();
  return true;
}

bool DataCombo::typed(const QKeyEvent& event) {
  if (showValues(event.key()) || typeKey(event)) return true;
  if (movesRow(event.key())) dropSearch();
  return event.key() == Qt::Key_Space;
}

void DataCombo::takeRow(int) {
  const int row = view()->currentIndex().row();
  endSearch();
  hidePopup();
  if (row >= 0 && row != currentIndex()) choose(row);
}

void DataCombo::giveUp() {
  dropSearch();
  missedText_.clear();
  hidePopup();
  putBack();
}

void DataCombo::focusInEvent(QFocusEvent* event) {
  endSearch();
  QComboBox::focusInEvent(event);
}

void DataCombo::focusOutEvent(QFocusEvent* event) {
  endSearch();
  QComboBox::focusOutEvent(event);
  if (!DroppedDown()) focusLeft(*event);
}

// What stands in the control is changed by those who mean it; the wheel scrolls the page.
void DataCombo::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace platform
