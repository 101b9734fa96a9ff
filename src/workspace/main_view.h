#pragma once

#include <QWidget>

namespace tavolix {

class frmMain;

// Builds the main window's widgets: menus, button bar, title line, the area of list and form, the
// strip of the record buttons, the status bar.
QWidget* buildMainWindow(frmMain& form);

// Pixels that tabs, list and form need beside each other, at most those of the screen.
int designWidth();

// Gives a window that is not shown its layout: the places of list and form are worked out from it
// before anybody sees the window.
void layOutHidden(QWidget* window);

// Menus and button bar, from the table of commands.
void buildCommands(frmMain& form, QWidget* window, QWidget* panBar);

}  // namespace tavolix
