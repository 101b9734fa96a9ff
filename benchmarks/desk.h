#pragma once

#include <QString>

class QWidget;

namespace platform {
class DataGrid;
}

namespace bench {

// What the user does and sees, for scenes.

platform::DataGrid& list();
QWidget* mainWindow();
// Does all the work that waits, and paints what has changed.
void showAll();
void showWindow(QWidget* window);
void pressKey(QWidget* widget, int key, const QString& text = {});
void typeText(QWidget* widget, const QString& text);
// Selects the tab of a collection and waits until list and form are painted.
void changeCollection(int collection);
// The list with a filter in force (a clause that begins with " WHERE ", or nothing), painted.
void filterList(const QString& filter);

}  // namespace bench
