#pragma once

#include <gtest/gtest.h>

#include <QWidget>
#include <functional>

#include "core/program_folder.h"
#include "platform/data_grid.h"
#include "platform/message_box.h"
#include "platform/tab_strip.h"
#include "store/recordset.h"

class QAction;
class QTabWidget;

namespace tavolix {

// The program at work on a copy of the sample archive, driven by its windows. A message that no
// answer has been given for ends the test.
class Desk : public ::testing::Test {
 protected:
  Desk();
  ~Desk() override;

  // Starts the program with the settings and archive as they are in the folder.
  bool start(const QString& commandLine = {});
  // Ends it, so that it can be started again.
  void end();

  static QWidget* mainControl(const QString& name);
  static QWidget* window();
  static platform::DataGrid* grid();
  static platform::TabStrip* tabs();
  // The current collection's form.
  static QWidget* form();
  static QTabWidget* pages();
  static QWidget* box(const QString& name);
  static QString boxText(const QString& name);
  static QAction* action(const QString& name);
  static QString status();
  static QString title();

  // The current row of the list, and a field of it; Null is "-".
  static store::RecordsetPtr list();
  static QString stored(const QString& field);
  // What the list shows in a row, by its column's field.
  static QString cell(int row, const QString& field);
  static QModelIndex cellAt(int row, const QString& field);
  static void goTo(int row, const QString& field = "Cod");
  // The row's columns in its two tables, as the file has them: "Column=value" in lines.
  QStringList fileRow(int collection, const QString& key) const;
  // The same for the current row.
  QStringList fileRow() const;
  // The columns of the current row that some work changes in the file.
  QString changesBy(const std::function<void()>& work) const;

  static void selectByTab(int collection);
  static void trigger(const QString& name);
  static void click(QWidget* widget);
  // Keys go to whatever has the focus, as on a keyboard.
  static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
  static void type(const QString& text);
  // Puts the focus on a box of the form, turning its page.
  static void enter(const QString& name);
  // Puts the focus on the list.
  static void leave();
  // Replaces what is in a box by keys, and leaves it.
  static void fill(const QString& name, const QString& keys);

  // What opens a modal form, then what is done while it is in front; ends when it is closed.
  static void inForm(const QString& name, const std::function<void()>& open,
                     const std::function<void()>& work);
  static QWidget* control(const QString& form, const QString& name);
  // Presses the small button of a field's list.
  static void openList(int campo);

  static void answer(int pressed) { platform::MessageBoxSeam::setNextAnswer(pressed); }
  // The last message's "title style text", and forgets all; "-" for none.
  static QString message();

  ProgramFolder folder_;
};

}  // namespace tavolix
