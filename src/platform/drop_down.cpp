#include "platform/drop_down.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QTimer>
#include <QWheelEvent>
#include <memory>

#include "platform/drop_down_style.h"
#include "platform/key_sender.h"
#include "platform/popup_keys.h"

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
  if (!ready_) {
    view()->installEventFilter(this);
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
  if (!ready_ || !view()->isVisible()) return QComboBox::keyPressEvent(event);
  QCoreApplication::sendEvent(view(), event);
}

bool DropDown::eventFilter(QObject* watched, QEvent* event) {
  const bool asks = event->type() == QEvent::ShortcutOverride;
  if (!asks && event->type() != QEvent::KeyPress) return QComboBox::eventFilter(watched, event);
  const auto& key = static_cast<const QKeyEvent&>(*event);
  const bool own = leavesList(key.key()) || key.key() == Qt::Key_Escape;
  if (!own && !isCommand(key)) return QComboBox::eventFilter(watched, event);
  if (asks && !own) return false;
  event->accept();
  if (!asks) popupKey(key);
  return true;
}

// Enter and Escape end here. What else closes the list does so before the key goes its way.
void DropDown::popupKey(const QKeyEvent& event) {
  const int row = view()->currentIndex().row();
  hidePopup();
  if (event.key() == Qt::Key_Escape) return;
  open_ = isEnter(event.key());
  if (row >= 0) {
    setCurrentIndex(row);
    Q_EMIT activated(row);
  }
  if (isEnter(event.key())) return;
  const std::unique_ptr<QKeyEvent> key(event.clone());
  sendKey(*this, *key);
}

void DropDown::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace platform
