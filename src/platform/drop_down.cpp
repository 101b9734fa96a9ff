#include "platform/drop_down.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QTimer>
#include <QWheelEvent>

#include "platform/drop_down_style.h"

namespace platform {
namespace {

constexpr int kVisibleRows = 20;

}  // namespace

DropDown::DropDown(QWidget* parent) : QComboBox(parent) {
  setStyle(dropDownStyle());
  setFocusPolicy(Qt::StrongFocus);
  setMaxVisibleItems(kVisibleRows);
}

void DropDown::showPopup() {
  if (keys_.isHandingOn()) return;
  keys_.watch();
  if (!ready_) {
    connect(this, &QComboBox::activated, this, [this] {
      if (open_) Q_EMIT picked();
    });
    ready_ = true;
  }
  // The mark of the box that has the focus is not the list's.
  view()->parentWidget()->setPalette(QApplication::palette());
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
  if (!keys_.isOpen()) return QComboBox::keyPressEvent(event);
  // The key that opens a list has just done so.
  if (event->key() == Qt::Key_F4) return;
  QCoreApplication::sendEvent(view(), event);
}

void DropDown::takeRow(int key) {
  const int row = view()->currentIndex().row();
  hidePopup();
  open_ = isEnter(key);
  if (row < 0) return;
  setCurrentIndex(row);
  Q_EMIT activated(row);
}

void DropDown::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace platform
