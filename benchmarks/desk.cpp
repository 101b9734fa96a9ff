#include "desk.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTimer>

#include "core/modcuore.h"
#include "model/raccolte.h"
#include "platform/data_grid.h"
#include "platform/form.h"

namespace bench {

platform::DataGrid& list() {
  return *platform::forms()[QStringLiteral("frmGrid")].control<platform::DataGrid>(
      QStringLiteral("grd"));
}

QWidget* mainWindow() {
  return platform::forms()[QStringLiteral("frmMain")].Window();
}

void showAll() {
  showWindow(mainWindow());
}

void showWindow(QWidget* window) {
  QCoreApplication::sendPostedEvents();
  QCoreApplication::processEvents();
  QEvent paint(QEvent::UpdateRequest);
  QCoreApplication::sendEvent(window, &paint);
}

void pressKey(QWidget* widget, int key, const QString& text) {
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(widget, &event);
  }
}

void typeText(QWidget* widget, const QString& text) {
  for (const QChar letter : text) pressKey(widget, letter.toUpper().unicode(), letter);
}

void changeCollection(int collection) {
  tavolix::iSelRaccolta(collection);
  showAll();
}

void inForm(const QString& name, const std::function<void()>& open,
            const std::function<void()>& work) {
  QTimer::singleShot(0, qApp, [&] {
    platform::Form& form = platform::forms()[name];
    while (!form.IsVisible() || !form.Window()->isActiveWindow()) QCoreApplication::processEvents();
    showWindow(form.Window());
    work();
    if (form.IsVisible()) form.Hide();
  });
  open();
  showAll();
}

void filterList(const QString& filter) {
  tavolix::aRaccolte(tavolix::iRacCorr).sFiltro = filter;
  tavolix::DBRefresh();
  showAll();
}

}  // namespace bench
