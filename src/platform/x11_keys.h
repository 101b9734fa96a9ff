#pragma once

#include <QAbstractNativeEventFilter>
#include <QByteArray>
#include <deque>
#include <functional>

class QWidget;

namespace platform {

// Keys as the X server sends them. The toolkit drops those for a window that is held by another
// one, so they are kept before it sees them, and sent on to the window that they are meant for.
class X11Keys final : public QAbstractNativeEventFilter {
 public:
  // `holdsCommand` is asked when a key comes that may be a command, whether keys wait from it on.
  explicit X11Keys(std::function<bool()> holdsCommand);
  ~X11Keys() override;
  X11Keys(const X11Keys&) = delete;
  X11Keys& operator=(const X11Keys&) = delete;

  // From now on keys wait.
  void Hold() { holding_ = true; }
  // Ends that; what has waited goes to a window, before anything that is typed from now on.
  void SendTo(const QWidget& window);
  void Drop();

 private:
  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
  void send();

  std::function<bool()> holdsCommand_;
  bool holding_ = false;
  quint32 window_ = 0;
  std::deque<QByteArray> kept_;
  std::ptrdiff_t back_ = 0;  // of those, sent on before, and come back while keys wait again
  int onTheWay_ = 0;         // sent on, and not here yet
};

}  // namespace platform
