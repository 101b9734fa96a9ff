#pragma once

class QKeyEvent;
class QWidget;

namespace platform {

// Sends a key that came to another window on to a widget, as the window system would have: what it
// is the shortcut of in the widget's window, an action or a button by its letter, comes first
// unless the widget wants the key for itself.
void sendKey(QWidget& receiver, QKeyEvent& key);

}  // namespace platform
