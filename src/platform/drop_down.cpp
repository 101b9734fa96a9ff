#include "platform/drop_down.h"

#include <QAbstractItemView>
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
  if (!keys_.makeReady()) return;
  if (!ready_) {
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

void DropDown::keyPressEvent(QKeyEvent* event) {
  if (!keys_.press(*event)) QComboBox::keyPressEvent(event);
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
