#include "platform/key_sender.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QShortcut>

namespace platform {
namespace {

bool wantsItself(QWidget& receiver, const QKeyEvent& key) {
  QKeyEvent asked(QEvent::ShortcutOverride, key.key(), key.modifiers(), key.text());
  asked.ignore();
  QCoreApplication::sendEvent(&receiver, &asked);
  return asked.isAccepted();
}

bool triggerShortcut(const QWidget& window, const QKeyEvent& key) {
  const QKeySequence pressed(key.keyCombination());
  for (QAction* action : window.findChildren<QAction*>()) {
    if (!action->shortcuts().contains(pressed) || !action->isEnabled()) continue;
    action->trigger();
    return true;
  }
  for (QShortcut* shortcut : window.findChildren<QShortcut*>()) {
    if (!shortcut->keys().contains(pressed) || !shortcut->isEnabled()) continue;
    Q_EMIT shortcut->activated();
    return true;
  }
  QAbstractButton* button = buttonOf(window, key);
  if (button != nullptr) button->click();
  return button != nullptr;
}

}  // namespace

QAbstractButton* buttonOf(const QWidget& window, const QKeyEvent& key) {
  const QKeySequence pressed(key.keyCombination());
  for (QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
    const bool ready = button->isEnabled() && button->isVisible();
    if (ready && button->shortcut() == pressed) return button;
  }
  return nullptr;
}

void sendKey(QWidget& receiver, QKeyEvent& key) {
  if (key.type() == QEvent::KeyPress && !wantsItself(receiver, key) &&
      triggerShortcut(*receiver.window(), key)) {
    return;
  }
  QCoreApplication::sendEvent(&receiver, &key);
}

}  // namespace platform
