#pragma once

#include <QWidget>

namespace tavolix {

class frmMain;

// Builds the main window's widgets: menus, button bar, title line, the area of list and form, the
// strip of the record buttons, the status bar.
QWidget* buildMainWindow(frmMain& form);

// Menus and button bar, from the table of commands.
void buildCommands(frmMain& form, QWidget* window, QWidget* panBar);

}  // namespace tavolix
