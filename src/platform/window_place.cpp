#include "platform/window_place.h"

#include <QEvent>
#include <QWidget>
#include <QWindow>
#include <algorithm>

namespace platform {
namespace {

constexpr QSize kGrip(100, 24);  // what of a title bar is enough to take hold of it
// The desktop tells place and state one after the other.
constexpr int kSettleTime = 200;  // milliseconds

}  // namespace

WindowPlace::WindowPlace(QWidget* window)
    : QObject(window), window_(window), normal_(window->pos(), window->size()) {
  settled_.setSingleShot(true);
  settled_.setInterval(kSettleTime);
  connect(&settled_, &QTimer::timeout, this, &WindowPlace::take);
  window->installEventFilter(this);
}

// To a window that has no frame yet its own place and the contents' are one: only the policy of
// the platform's window tells which of them the desktop is to keep.
void WindowPlace::moveTo(const QPoint& place) {
  window_->move(place);
  if (QWindow* handle = window_->windowHandle()) {
    handle->resize(window_->size());
    handle->setFramePosition(place);
  }
  normal_ = QRect(place, window_->size());
}

QRect WindowPlace::normal() {
  if (settled_.isActive()) take();
  return normal_;
}

bool WindowPlace::eventFilter(QObject* watched, QEvent* event) {
  const bool moved = event->type() == QEvent::Move || event->type() == QEvent::Resize;
  if (watched == window_ && moved) settled_.start();
  return false;
}

void WindowPlace::take() {
  settled_.stop();
  const Qt::WindowStates other = Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen;
  if ((window_->windowState() & other) == 0) normal_ = QRect(window_->pos(), window_->size());
}

QPoint broughtBack(const QPoint& place, const QVector<QRect>& screens) {
  const auto holds = [&](const QRect& screen) { return screen.contains(QRect(place, kGrip)); };
  if (screens.isEmpty() || std::any_of(screens.begin(), screens.end(), holds)) return place;
  const QRect& main = screens.front();
  const auto inside = [](int value, int first, int last) {
    return value < first || value > last ? first : value;
  };
  return {inside(place.x(), main.left(), main.right() + 1 - kGrip.width()),
          inside(place.y(), main.top(), main.bottom() + 1 - kGrip.height())};
}

}  // namespace platform
