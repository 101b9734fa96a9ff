#pragma once

class QKeyEvent;

namespace platform {

// What keys mean while the list of a combo box is open.

// A key that is for the window, whatever the list shows: a function key, a letter with Ctrl or Alt.
bool isCommand(const QKeyEvent& event);
bool isEnter(int key);
// A key that takes the row and leads to the next field.
bool leavesList(int key);

}  // namespace platform
