#include "desk.h"

#include <QCloseEvent>
#include <QKeySequence>
#include <QTimer>

#include "analysis/moduli_analysis.h"
#include "archives/modmanarc.h"
#include "assist/moduli_assist.h"
#include "core/modmain.h"
#include "output/moduli_output.h"
#include "query/moduli_query.h"
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

}  // namespace

Desk::Desk() {
  RegistraArchivi();
  end();
  message();
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
  RegistraFormArchivi();
  RegistraFormAssist();
  RegistraFormWorkspace();
  RegistraFormQuery();
  RegistraFormAnalysis();
  RegistraFormOutput();
}

QString Desk::stored(const QString& field) {
  const QVariant value = list()->Value(field);
  return value.isValid() ? value.toString() : "-";
}
QModelIndex Desk::cellAt(int row, const QString& field) {
  for (int i = 0; i < grid()->ColumnCount(); ++i) {
    if (grid()->Column(i).dataField == field) return grid()->model()->index(row, i);
  }
  return {};
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
void Desk::closeByBox(const QString& form) {
  QCloseEvent close;
  QSpontaneKeyEvent::setSpontaneous(&close);
  qApp->notify(platform::forms()[form].Window(), &close);
  QApplication::processEvents();
}
void Desk::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(keyTarget(), key, modifiers);
  QApplication::processEvents();
}
void Desk::press(const QString& names) {
  for (const QString& name : names.split(' ')) {
    const QKeyCombination keys = QKeySequence(name)[0];
    press(keys.key(), keys.keyboardModifiers());
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
void Desk::replace(const QString& keys) {
  press("Ctrl+A Delete");
  type(keys);
}
void Desk::fill(const QString& name, const QString& keys) {
  enter(name);
  replace(keys);
  leave();
}

void Desk::inForm(const QString& name, const std::function<void()>& open,
                  const std::function<void()>& work) {
  // The program may yield before: what the timer does must not wait for the form.
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, qApp, [&] {
    platform::Form& modal = forms()[name];
    if (!modal.IsVisible()) return;
    look.stop();
    EXPECT_TRUE(QTest::qWaitForWindowActive(modal.Window())) << qPrintable(name);
    QApplication::processEvents();
    work();
    modal.Hide();
  });
  look.start(1);
  open();
  QApplication::processEvents();
  EXPECT_FALSE(look.isActive()) << qPrintable(name);
}

void Desk::answerAll() {
  for (int i = 0; i < 40; ++i) answer(platform::kOk);
}
QString Desk::message() {
  const auto all = MessageBoxSeam::shown();
  MessageBoxSeam::reset();
  MessageBoxSeam::setNoWindow(true);
  if (all.isEmpty()) return "-";
  const MessageBoxSeam::Shown& last = all.last();
  return QStringLiteral("%1 %2 %3").arg(last.title).arg(last.style).arg(last.text);
}

}  // namespace tavolix
