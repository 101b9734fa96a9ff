#pragma once

class QGroupBox;
class QWidget;

namespace tavolix {

class ControlliCondizione;

// Where is searched for: the window's first group.
void addWhere(QWidget& window);
// What is searched for: an empty group, to be filled with the controls that are made in it.
QGroupBox* addWhat(QWidget& window);
void fillWhat(QGroupBox& what, const ControlliCondizione& controlli);
void addSearchButtons(QWidget& window);

}  // namespace tavolix
