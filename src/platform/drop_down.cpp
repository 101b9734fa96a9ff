#include "platform/drop_down.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QTimer>

namespace platform {
namespace {

bool takes(int key) {
  return key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace

void DropDown::showPopup() {
  if (!ready_) {
    view()->installEventFilter(this);
    connect(this, &QComboBox::activated, this, [this] {
      if (open_) Q_EMIT picked();
    });
    ready_ = true;
  }
  open_ = true;
  QComboBox::showPopup();
}

void DropDown::hidePopup() {
  QComboBox::hidePopup();
  // The row that closes the list is told after it.
  QTimer::singleShot(0, this, [this] { open_ = view()->isVisible(); });
}

// What comes to the box while its list is open is for the list.
void DropDown::keyPressEvent(QKeyEvent* event) {
  if (!ready_ || !view()->isVisible()) return QComboBox::keyPressEvent(event);
  QCoreApplication::sendEvent(view(), event);
}

bool DropDown::eventFilter(QObject* watched, QEvent* event) {
  const bool asks = event->type() == QEvent::ShortcutOverride;
  if (!asks && event->type() != QEvent::KeyPress) return QComboBox::eventFilter(watched, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (!takes(key) && key != Qt::Key_Escape) return QComboBox::eventFilter(watched, event);
  event->accept();
  if (asks) return true;
  const int row = view()->currentIndex().row();
  hidePopup();
  if (takes(key) && row >= 0) {
    setCurrentIndex(row);
    Q_EMIT activated(row);
  }
  return true;
}

}  // namespace platform
