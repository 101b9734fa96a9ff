#include "platform/modal_input.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

#include "platform/key_sender.h"

namespace platform {
namespace {

bool isKey(QEvent::Type type) {
  return type == QEvent::KeyPress || type == QEvent::KeyRelease;
}

bool isInput(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::ContextMenu:
    case QEvent::ShortcutOverride:
    case QEvent::Close:
      return true;
    default:
      return isKey(type);
  }
}

// A list that has dropped down, or a dialog of the toolkit's own, which keeps the rest away itself.
bool ownsInput(const QWindow& window) {
  return window.type() == Qt::Popup || window.modality() != Qt::NonModal;
}

QWidget* receiverIn(QWidget* window) {
  QWidget* popup = QApplication::activePopupWidget();
  QWidget* place = popup != nullptr ? popup : window;
  QWidget* focus = place->focusWidget();
  return focus != nullptr ? focus : place;
}

}  // namespace

ModalInput::Turn::Turn(QWidget* window) : window_(window) {
  ModalInput::instance().windows_.append(window_);
}

ModalInput::Turn::~Turn() {
  ModalInput::instance().windows_.removeLast();
  ModalInput::instance().deliverLater();
}

ModalInput::ModalInput() : QObject(qApp) {
  qApp->installEventFilter(this);
}

ModalInput& ModalInput::instance() {
  static QPointer<ModalInput> only;
  if (only.isNull()) only = new ModalInput;
  return *only;
}

QWidget* ModalInput::top() const {
  return windows_.isEmpty() ? nullptr : windows_.last().data();
}

bool ModalInput::isBlocked(const QWindow& window) const {
  if (!window.isVisible()) return true;
  const QWidget* modal = top();
  if (modal == nullptr || ownsInput(window)) return false;
  for (const QWindow* at = &window; at != nullptr;) {
    if (at == modal->windowHandle()) return false;
    at = at->parent() != nullptr ? at->parent() : at->transientParent();
  }
  return true;
}

bool ModalInput::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::WindowActivate && watched->isWidgetType() && !keys_.empty()) {
    deliverLater();
  }
  if (!watched->isWindowType() || !isInput(event->type())) return false;
  return filterWindow(static_cast<QWindow&>(*watched), *event);
}

bool ModalInput::filterWindow(QWindow& window, QEvent& event) {
  const bool key = isKey(event.type());
  // What comes after a key that waits, waits too.
  const bool inTurn = keys_.empty() || ownsInput(window);
  if (!isBlocked(window) && (!key || inTurn)) return false;
  if (key) {
    keys_.emplace_back(static_cast<QKeyEvent&>(event).clone());
    deliverLater();
  } else {
    event.setAccepted(event.type() == QEvent::ShortcutOverride);
    if (event.type() == QEvent::MouseButtonPress && top() != nullptr) top()->activateWindow();
  }
  return true;
}

void ModalInput::deliverLater() {
  QMetaObject::invokeMethod(this, &ModalInput::deliver, Qt::QueuedConnection);
}

void ModalInput::deliver() {
  while (!keys_.empty()) {
    QWidget* target = top() != nullptr ? top() : QApplication::activeWindow();
    if (target == nullptr || !target->isActiveWindow()) return;
    const std::unique_ptr<QKeyEvent> key = std::move(keys_.front());
    keys_.pop_front();
    sendKey(*receiverIn(target), *key);
  }
}

}  // namespace platform
