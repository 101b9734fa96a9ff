#include "platform/popup_keys.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <memory>

#include "platform/handlers.h"
#include "platform/key_sender.h"

namespace platform {
namespace {

bool isCommand(const QKeyEvent& event) {
  const auto modifiers = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier);
  const bool letter = event.key() >= Qt::Key_Space && event.key() <= Qt::Key_ydiaeresis;
  const bool function = event.key() >= Qt::Key_F1 && event.key() <= Qt::Key_F35;
  return (function && event.key() != Qt::Key_F4) || (modifiers != 0 && letter);
}

}  // namespace

bool isEnter(int key) {
  return key == Qt::Key_Return || key == Qt::Key_Enter;
}

bool leavesList(int key) {
  return isEnter(key) || key == Qt::Key_Tab || key == Qt::Key_Backtab;
}

bool PopupKeys::makeReady() {
  if (handingOn_ || isOpen()) return false;
  if (!watching_) combo_.view()->installEventFilter(this);
  watching_ = true;
  // The mark of the box that has the focus is not the list's.
  combo_.view()->parentWidget()->setPalette(QApplication::palette());
  return true;
}

bool PopupKeys::isOpen() const {
  return watching_ && combo_.view()->isVisible();
}

bool PopupKeys::press(QKeyEvent& event) {
  if (!isOpen()) return false;
  // The key that opens a list has just done so.
  if (event.key() != Qt::Key_F4) QCoreApplication::sendEvent(combo_.view(), &event);
  return true;
}

bool PopupKeys::eventFilter(QObject*, QEvent* event) {
  return guarded([&] { return filtered(*event); });
}

bool PopupKeys::filtered(QEvent& event) {
  const bool asks = event.type() == QEvent::ShortcutOverride;
  if (!asks && event.type() != QEvent::KeyPress) return false;
  const auto& key = static_cast<const QKeyEvent&>(event);
  if (!asks) return pressInList(key);
  const bool own = leavesList(key.key()) || key.key() == Qt::Key_Escape;
  if (own) event.accept();
  return own;
}

// The closed box gets a key that goes on before the next one comes: it may lead to the next field,
// or to another window.
bool PopupKeys::pressInList(const QKeyEvent& event) {
  if (event.key() == Qt::Key_Escape) {
    box_.giveUp();
    return true;
  }
  if (!leavesList(event.key())) {
    if (box_.typed(event)) return true;
    if (!isCommand(event)) return false;
  }
  const std::unique_ptr<QKeyEvent> key(event.clone());
  const QScopedValueRollback<bool> guard(handingOn_, true);
  box_.takeRow(key->key());
  if (!isEnter(key->key()) || !box_.enterStays()) sendKey(combo_, *key);
  return true;
}

}  // namespace platform
