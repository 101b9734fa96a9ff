#pragma once

#include <QSize>

class QWidget;

namespace platform {

// What a window may take of the main screen, without its frame, in pixels.
QSize roomOnScreen();
// Width in pixels of so many characters in the widget's font. A hundred never need more than the
// screen has, so that a window of large letters stays on it.
int widthOfCharacters(const QWidget* widget, int characters);

}  // namespace platform
