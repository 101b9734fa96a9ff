#pragma once

class QStyle;

namespace platform {

// The program's style with one difference: the list of a combo box drops down below the box, and
// scrolls, where Fusion would lay it over the box in the height of the screen. To be set for the
// combo box itself; the style belongs to the application.
QStyle* dropDownStyle();

}  // namespace platform
