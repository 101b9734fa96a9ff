#pragma once

class QAbstractButton;
class QKeyEvent;
class QWidget;

namespace platform {

// Sends a key that came to another window on to a widget, as the window system would have: what it
// is the shortcut of in the widget's window, an action or a button by its letter, comes first
// unless the widget wants the key for itself.
void sendKey(QWidget& receiver, QKeyEvent& key);
// The button of a window that a key presses, null if there is none.
QAbstractButton* buttonOf(const QWidget& window, const QKeyEvent& key);

}  // namespace platform
