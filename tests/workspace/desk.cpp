#include "desk.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include "archives/modmanarc.h"
#include "assist/frmbasic.h"
#include "core/campi.h"
#include "core/modcuore.h"
#include "core/modmain.h"
#include "core/raccolte.h"
#include "platform/bound_control.h"
#include "platform/data_control.h"
#include "query/moduli_query.h"
#include "workspace/frmmain.h"
#include "workspace/modrepos.h"

namespace tavolix {
namespace {

using platform::forms;
using platform::MessageBoxSeam;

QWidget* keyTarget() {
  QWidget* popup = QApplication::activePopupWidget();
  if (popup != nullptr) return popup->focusWidget() != nullptr ? popup->focusWidget() : popup;
  return QApplication::focusWidget();
}

QString shown(const QVariant& value) {
  return value.isValid() ? value.toString() : "-";
}

}  // namespace

Desk::Desk() {
  RegistraArchivi();
  RegistraFormAssist();
  RegistraFormWorkspace();
  RegistraFormQuery();
  MessageBoxSeam::reset();
  MessageBoxSeam::setNoWindow(true);
}

Desk::~Desk() {
  end();
  MessageBoxSeam::reset();
}

bool Desk::start(const QString& commandLine) {
  if (!bAvvia(commandLine)) return false;
  return QTest::qWaitForWindowActive(window());
}

void Desk::end() {
  for (platform::Form* loaded : forms().loadedForms()) PosRimuoviForm(*loaded);
  forms().clear();
  store::CloseWorkspace();
  for (store::RecordsetPtr* rs : {&rsCfg, &rsTab, &rsCont}) rs->reset();
  dbArc.reset();
  DimenticaListe();
  RegistraFormAssist();
  RegistraFormWorkspace();
  RegistraFormQuery();
}

QWidget* Desk::mainControl(const QString& name) {
  return FrmMain().Control(name);
}
QWidget* Desk::window() {
  return FrmMain().Window();
}
platform::DataGrid* Desk::grid() {
  return forms()["frmGrid"].control<platform::DataGrid>("grd");
}
platform::TabStrip* Desk::tabs() {
  return forms()["frmGrid"].control<platform::TabStrip>("tabSelez");
}
QWidget* Desk::form() {
  return aRaccolte(iRacCorr).oForm->Window();
}
QTabWidget* Desk::pages() {
  return aRaccolte(iRacCorr).oForm->control<QTabWidget>("panRecord");
}
QWidget* Desk::box(const QString& name) {
  return aRaccolte(iRacCorr).oForm->Control(name);
}
QString Desk::boxText(const QString& name) {
  return platform::BoundControl::of(box(name))->Text();
}
QAction* Desk::action(const QString& name) {
  return window()->findChild<QAction*>(name);
}
QString Desk::status() {
  return static_cast<QLabel*>(mainControl("lblStatus"))->text();
}
QString Desk::title() {
  return static_cast<QLabel*>(mainControl("panTitolo"))->text();
}

store::RecordsetPtr Desk::list() {
  return dbElenco().Recordset();
}
QString Desk::stored(const QString& field) {
  return shown(list()->Value(field));
}
QModelIndex Desk::cellAt(int row, const QString& field) {
  for (int i = 0; i < grid()->ColumnCount(); ++i) {
    if (grid()->Column(i).dataField == field) return grid()->model()->index(row, i);
  }
  return {};
}
QString Desk::cell(int row, const QString& field) {
  return cellAt(row, field).data().toString();
}
void Desk::goTo(int row, const QString& field) {
  grid()->setFocus();
  grid()->setCurrentIndex(cellAt(row, field));
}

QStringList Desk::fileRow(int collection, const QString& key) const {
  const tRaccolta& raccolta = aRaccolte(collection);
  const std::pair<QString, QString> tables[] = {{raccolta.sTabPrincipale, raccolta.sCampoLegame},
                                                {raccolta.sTabDettaglio, raccolta.sCampoID}};
  QStringList row;
  for (const auto& [table, column] : tables) {
    const QString names = folder_.found("SELECT name FROM pragma_table_info('" + table + "')");
    for (const QString& name : names.split('\n')) {
      row << table + '.' + name + '=' +
                 folder_.found("SELECT \"" + name + "\" FROM " + table + " WHERE " + column +
                               " = " + key);
    }
  }
  return row;
}
QStringList Desk::fileRow() const {
  return fileRow(iRacCorr, stored(aRaccolte(iRacCorr).sCampoLegame));
}

QString Desk::changesBy(const std::function<void()>& work) const {
  const int collection = iRacCorr;
  const QString key = stored(aRaccolte(collection).sCampoLegame);
  const QStringList before = fileRow(collection, key);
  work();
  const QStringList after = fileRow(collection, key);
  QStringList changed;
  for (int i = 0; i < after.size(); ++i) {
    if (before[i] != after[i]) changed << after[i];
  }
  return changed.join(", ");
}

void Desk::selectByTab(int collection) {
  for (int tab = 1; tab <= tabs()->Count(); ++tab) {
    if (tabs()->Tag(tab) != QString::number(collection)) continue;
    QTest::mouseClick(tabs(), Qt::LeftButton, {}, tabs()->tabRect(tab - 1).center());
  }
  QApplication::processEvents();
}
void Desk::trigger(const QString& name) {
  // As from the menu: within an event.
  QMetaObject::invokeMethod(action(name), &QAction::trigger, Qt::QueuedConnection);
  QApplication::processEvents();
}
void Desk::click(QWidget* widget) {
  QTest::mouseClick(widget, Qt::LeftButton);
  QApplication::processEvents();
}
void Desk::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(keyTarget(), key, modifiers);
  QApplication::processEvents();
  // A button pressed by its letter stays down for a moment before it acts.
  for (const char* name : {"cmdAddNew", "cmdCancella", "cmdDuplica"}) {
    auto* button = static_cast<QPushButton*>(mainControl(name));
    EXPECT_TRUE(QTest::qWaitFor([button] { return !button->isDown(); })) << name;
  }
}
void Desk::type(const QString& text) {
  for (const QChar letter : text) {
    QTest::sendKeyEvent(QTest::Click, keyTarget(), Qt::Key(letter.toUpper().unicode()),
                        QString(letter), {});
  }
  QApplication::processEvents();
}
void Desk::enter(const QString& name) {
  for (int j = 0; j < iNumeroCampi(iRacCorr); ++j) {
    if (aCampi(iRacCorr, j).sControllo == name)
      pages()->setCurrentIndex(aCampi(iRacCorr, j).iPagina);
  }
  box(name)->setFocus(Qt::MouseFocusReason);
  QApplication::processEvents();
}
void Desk::leave() {
  grid()->setFocus(Qt::MouseFocusReason);
  QApplication::processEvents();
}
void Desk::fill(const QString& name, const QString& keys) {
  enter(name);
  press(Qt::Key_A, Qt::ControlModifier);
  press(Qt::Key_Delete);
  type(keys);
  leave();
}

void Desk::inForm(const QString& name, const std::function<void()>& open,
                  const std::function<void()>& work) {
  QTimer::singleShot(0, qApp, [&] {
    platform::Form& modal = forms()[name];
    ASSERT_TRUE(QTest::qWaitFor([&] { return modal.IsVisible(); })) << qPrintable(name);
    EXPECT_TRUE(QTest::qWaitForWindowActive(modal.Window())) << qPrintable(name);
    QApplication::processEvents();
    work();
    modal.Hide();
  });
  open();
  QApplication::processEvents();
}
QWidget* Desk::control(const QString& form, const QString& name) {
  return forms()[form].Control(name);
}
void Desk::openList(int campo) {
  QWidget* window = aRaccolte(iRacCorr).oForm->Window();
  for (QToolButton* button : window->findChildren<QToolButton*>()) {
    const bool own = !window->isWindow() || button->isVisibleTo(window);
    if (own && button->property("Tag").toString() == QString::number(campo)) button->click();
  }
}

QString Desk::message() {
  const auto all = MessageBoxSeam::shown();
  MessageBoxSeam::reset();
  MessageBoxSeam::setNoWindow(true);
  if (all.isEmpty()) return "-";
  return QStringLiteral("%1 %2 %3")
      .arg(all.last().title)
      .arg(all.last().style)
      .arg(all.last().text);
}

}  // namespace tavolix
