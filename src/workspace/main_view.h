#pragma once

#include <QWidget>

namespace tavolix {

// Builds the main window's widgets: menus, button bar, title line, the area of list and form, the
// strip of the record buttons, the status bar.
QWidget* buildMainWindow();

// Pixels that tabs, list and form need beside each other, at most those of the screen.
int designWidth();

// Gives a window that is not shown its layout: the places of list and form are worked out from it
// before anybody sees the window.
void layOutHidden(QWidget* window);

// Adds the main window's own commands to the program's.
void RegistraComandiWorkspace();
// Menus and button bar, from the commands of all areas.
void buildCommands(QWidget* window, QWidget* panBar);

}  // namespace tavolix
