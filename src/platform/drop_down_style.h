#pragma once

class QStyle;

namespace platform {

// The program's style for combo boxes: the list drops down below the box, and scrolls, where Fusion
// would lay it over the box in the height of the screen; and a box that was given a base of its own
// shows that, unshaded. To be set for the combo box itself; the style belongs to the application.
QStyle* dropDownStyle();

}  // namespace platform
