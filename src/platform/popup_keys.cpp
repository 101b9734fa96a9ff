#include "platform/popup_keys.h"

#include <QKeyEvent>

namespace platform {

bool isCommand(const QKeyEvent& event) {
  const auto modifiers = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier);
  const bool letter = event.key() >= Qt::Key_Space && event.key() <= Qt::Key_ydiaeresis;
  const bool function = event.key() >= Qt::Key_F1 && event.key() <= Qt::Key_F35;
  return (function && event.key() != Qt::Key_F4) || (modifiers != 0 && letter);
}

bool isEnter(int key) {
  return key == Qt::Key_Return || key == Qt::Key_Enter;
}

bool leavesList(int key) {
  return isEnter(key) || key == Qt::Key_Tab || key == Qt::Key_Backtab;
}

}  // namespace platform
