#pragma once

#include <QString>
#include <functional>

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
// Opens a form by a command that returns when it is closed; does a work in it once it is painted,
// and closes it then.
void inForm(const QString& name, const std::function<void()>& open,
            const std::function<void()>& work);
// The list with a filter in force (a clause that begins with " WHERE ", or nothing), painted.
void filterList(const QString& filter);

}  // namespace bench
