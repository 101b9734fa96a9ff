#pragma once

class QRadioButton;
class QString;
class QWidget;

namespace platform {

// One of the options of a group, which are its only buttons. The Tab key comes to the chosen one
// alone; arrows choose.
QRadioButton* newOption(const char* name, const QString& caption, QWidget* group);

}  // namespace platform
