#include "platform/screen_reader.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QMenuBar>
#include <QTimer>

namespace platform {

namespace {

QAccessible::UpdateHandler& handlerBefore() {
  static QAccessible::UpdateHandler handler = nullptr;
  return handler;
}

// Of whom the last thing was told.
QAccessible::Id& lastTold() {
  static QAccessible::Id id = 0;
  return id;
}

// Menus and open lists have the keys without having the focus; cells are told by their view.
bool hasKeyboard(const QObject* object) {
  const auto* widget = qobject_cast<const QWidget*>(object);
  if (widget == nullptr || widget->window()->windowType() == Qt::Popup) return true;
  return widget == QApplication::focusWidget() || qobject_cast<const QMenuBar*>(widget) != nullptr;
}

void pass(QAccessibleEvent* event);

void passOn(QAccessibleEvent* event) {
  if (handlerBefore() != nullptr) return handlerBefore()(event);
  // The tables themselves have taken note of their changes, and may not do so twice.
  if (event->type() == QAccessible::TableModelChanged) return;
  QAccessible::installUpdateHandler(nullptr);
  QAccessible::updateAccessibility(event);
  QAccessible::installUpdateHandler(pass);
}

void pass(QAccessibleEvent* event) {
  if (event->type() == QAccessible::Focus) {
    if (!hasKeyboard(event->object())) return;
    // A menu that closes tells of an entry that there is not: the event's own number trips over it.
    QAccessibleInterface* place = event->accessibleInterface();
    lastTold() = place == nullptr ? 0 : QAccessible::uniqueId(place);
  }
  passOn(event);
}

// The control with the keyboard; in a list, the cell.
QAccessibleInterface* keyboardPlace() {
  QWidget* focus = QApplication::focusWidget();
  QAccessibleInterface* place =
      focus == nullptr ? nullptr : QAccessible::queryAccessibleInterface(focus);
  const auto* view = qobject_cast<const QAbstractItemView*>(focus);
  if (place == nullptr || view == nullptr || !view->currentIndex().isValid()) return place;
  QAccessibleTableInterface* cells = place->tableInterface();
  const QModelIndex current = view->currentIndex();
  QAccessibleInterface* cell =
      cells == nullptr ? nullptr : cells->cellAt(current.row(), current.column());
  return cell == nullptr ? place : cell;
}

}  // namespace

void nameControl(QWidget& control, const QString& name) {
  const bool combo = qobject_cast<QComboBox*>(&control) != nullptr;
  combo ? control.setAccessibleDescription(name) : control.setAccessibleName(name);
}

FocusTeller::FocusTeller() {
  handlerBefore() = QAccessible::installUpdateHandler(pass);
  qApp->installEventFilter(this);
}

FocusTeller::~FocusTeller() {
  QAccessible::installUpdateHandler(handlerBefore());
}

bool FocusTeller::eventFilter(QObject* watched, QEvent* event) {
  const bool comes = event->type() == QEvent::FocusIn && watched == QApplication::focusWidget();
  // The toolkit tells of the control once the event is done with.
  if (comes) QTimer::singleShot(0, this, &FocusTeller::tell);
  return false;
}

void FocusTeller::tell() {
  if (!QAccessible::isActive() || QApplication::activePopupWidget() != nullptr) return;
  QAccessibleInterface* place = keyboardPlace();
  if (place == nullptr || QAccessible::uniqueId(place) == lastTold()) return;
  QAccessibleEvent event(place, QAccessible::Focus);
  QAccessible::updateAccessibility(&event);
}

}  // namespace platform
