#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QTabWidget>
#include <QTest>
#include <functional>

#include "core/modcuore.h"
#include "core/program_folder.h"
#include "model/campi.h"
#include "model/raccolte.h"
#include "platform/bound_control.h"
#include "platform/data_control.h"
#include "platform/data_grid.h"
#include "platform/form.h"
#include "platform/message_box.h"
#include "platform/tab_strip.h"
#include "store/recordset.h"
#include "workspace/frmmain.h"

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

  static QWidget* control(const QString& form, const QString& name) {
    return platform::forms()[form].Control(name);
  }
  static QWidget* mainControl(const QString& name) { return FrmMain().Control(name); }
  static QWidget* window() { return FrmMain().Window(); }
  static platform::DataGrid* grid() {
    return static_cast<platform::DataGrid*>(control("frmGrid", "grd"));
  }
  static platform::TabStrip* tabs() {
    return static_cast<platform::TabStrip*>(control("frmGrid", "tabSelez"));
  }
  // The current collection's form.
  static QWidget* form() { return aRaccolte(iRacCorr).oForm->Window(); }
  static QTabWidget* pages() { return static_cast<QTabWidget*>(box("panRecord")); }
  static QWidget* box(const QString& name) { return aRaccolte(iRacCorr).oForm->Control(name); }
  static QString boxText(const QString& name) {
    return platform::BoundControl::of(box(name))->Text();
  }
  static QAction* action(const QString& name) { return window()->findChild<QAction*>(name); }
  static QString status() { return static_cast<QLabel*>(mainControl("lblStatus"))->text(); }
  static QString title() { return static_cast<QLabel*>(mainControl("panTitolo"))->text(); }
  // What the status bar tells about a list without filter.
  static QString complete(int rows) {
    return QStringLiteral("Elenco completo: %1 records").arg(rows);
  }

  // The current row of the list, and a field of it; Null is "-".
  static store::RecordsetPtr list() { return dbElenco().Recordset(); }
  static QString stored(const QString& field);
  // What the list shows in a row, by its column's field.
  static QString cell(int row, const QString& field) {
    return cellAt(row, field).data().toString();
  }
  static QModelIndex cellAt(int row, const QString& field);
  static void goTo(int row, const QString& field = "Cod");
  // How many rows the file has: a table, and a condition if any.
  int count(const QString& rows) const {
    return folder_.found("SELECT count(*) FROM " + rows).toInt();
  }
  // The columns of the current row that some work changes in the file.
  QString changesBy(const std::function<void()>& work) const;

  static void selectByTab(int collection);
  static void trigger(const QString& name);
  static void click(QWidget* widget);
  static void closeByBox(const QString& form);
  // Keys go to whatever has the focus, as on a keyboard. Several have names, parted by blanks.
  static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
  static void press(const QString& names);
  static void type(const QString& text);
  // Puts the focus on a box of the form, turning its page.
  static void enter(const QString& name);
  // Puts the focus on the list.
  static void leave();
  // Replaces what is in a box, or in the cell that is being typed into.
  static void replace(const QString& keys);
  // Replaces what is in a box by keys, and leaves it.
  static void fill(const QString& name, const QString& keys);

  // What opens a modal form, then what is done while it is in front; ends when it is closed.
  static void inForm(const QString& name, const std::function<void()>& open,
                     const std::function<void()>& work);
  // The same for the child rows of the current record.
  static void inChildren(const std::function<void()>& work) {
    inForm(
        "frmSub", [] { press("F9"); }, work);
  }

  static void answer(int pressed) { platform::MessageBoxSeam::setNextAnswer(pressed); }
  // Answers as many messages as may come.
  static void answerAll();
  // The last message's "title style text", and forgets all; "-" for none.
  static QString message();

  ProgramFolder folder_;

 private:
  // A row's columns in its two tables, as the file has them: "Table.column=value".
  QStringList fileRow(int collection, const QString& key) const;
};

}  // namespace tavolix
