#include "platform/x11_keys.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QWidget>
#include <utility>

namespace platform {
namespace {

constexpr int kSent = 0x80;  // in the kind of an event that comes from a program
constexpr int kF1 = 67;      // key codes
constexpr int kF10 = 76;
constexpr int kF11 = 95;
constexpr int kF12 = 96;

bool mayBeCommand(const xcb_key_press_event_t& key) {
  const int code = key.detail;
  return (key.state & (XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1)) != 0 ||
         (code >= kF1 && code <= kF10) || code == kF11 || code == kF12;
}

xcb_connection_t* connection() {
  auto* x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 == nullptr ? nullptr : x11->connection();
}

}  // namespace

X11Keys::X11Keys(std::function<bool()> holdsCommand) : holdsCommand_(std::move(holdsCommand)) {
  qApp->installNativeEventFilter(this);
}

X11Keys::~X11Keys() {
  if (qApp != nullptr) qApp->removeNativeEventFilter(this);
}

void X11Keys::SendTo(const QWidget& window) {
  holding_ = false;
  window_ = static_cast<quint32>(window.internalWinId());
  if (onTheWay_ == 0) send();
}

void X11Keys::Drop() {
  holding_ = false;
  kept_.clear();
  back_ = 0;
}

void X11Keys::send() {
  xcb_connection_t* server = connection();
  for (QByteArray& kept : kept_) {
    if (server == nullptr) break;
    auto* key = reinterpret_cast<xcb_key_press_event_t*>(kept.data());
    key->response_type &= ~kSent;
    key->event = window_;
    // Without a mask it goes to the program that has made the window.
    xcb_send_event(server, 0, window_, XCB_EVENT_MASK_NO_EVENT, kept.constData());
    ++onTheWay_;
  }
  if (server != nullptr) xcb_flush(server);
  kept_.clear();
  back_ = 0;
}

bool X11Keys::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
  if (type != "xcb_generic_event_t") return false;
  const auto& key = *static_cast<const xcb_key_press_event_t*>(message);
  const int kind = key.response_type & ~kSent;
  if (kind != XCB_KEY_PRESS && kind != XCB_KEY_RELEASE) return false;
  const bool comesBack = (key.response_type & kSent) != 0 && onTheWay_ > 0;
  if (comesBack) --onTheWay_;
  if (comesBack && !holding_) {
    if (onTheWay_ == 0) send();
    return false;
  }
  const bool waits = holding_ || onTheWay_ > 0;
  if (!waits && !(mayBeCommand(key) && holdsCommand_())) return false;
  if (!waits) Hold();
  const QByteArray kept(static_cast<const char*>(message), sizeof key);
  kept_.insert(comesBack ? kept_.begin() + back_++ : kept_.end(), kept);
  return true;
}

}  // namespace platform
