#include "platform/break_key.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include "platform/yielding.h"

namespace platform {
namespace {

constexpr qint64 kBetweenPaints = 50;  // milliseconds

bool isInput(QEvent::Type type) {
  switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
      return true;
    default:
      return false;
  }
}

}  // namespace

BreakKey::BreakKey() {
  since_.start();
  QCoreApplication::instance()->installEventFilter(this);
}

bool BreakKey::isTime() const {
  return since_.elapsed() >= kBetweenPaints;
}

bool BreakKey::goesOn() {
  yieldToInput();
  since_.start();
  return !broken_;
}

bool BreakKey::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Close && event->spontaneous()) {
    broken_ = true;
    event->ignore();
    return true;
  }
  if (!isInput(event->type())) return false;
  if (event->type() == QEvent::KeyPress &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    broken_ = true;
  }
  event->accept();
  return true;
}

}  // namespace platform
