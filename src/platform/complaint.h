#pragma once

class QString;
class QWidget;

namespace platform {

// Tells the user what is wrong with an entry, without stopping them: a beep, the status line of
// the window if it has one, and a tip above the box with what is wrong in short.
void complain(QWidget& box, const QString& message, const QString& tip);

}  // namespace platform
