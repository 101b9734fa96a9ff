#pragma once

#include <QKeyEvent>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <deque>
#include <memory>

#include "platform/x11_keys.h"

class QWindow;

namespace platform {

// Keys typed while a window is on its way to the front: they come to the one that had the focus
// before, wait, and go to the new one in order as soon as it is active. Nobody has to look before
// typing on. A window that is not active after a second gets none: they are dropped.
class KeyHandover final : public QObject {
  Q_OBJECT
 public:
  // To be called before a window is shown or brought back.
  static void to(QWidget* window);
  // To be called as long as no key can have been typed.
  static void watch();

 private:
  KeyHandover();
  static KeyHandover& instance();
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool filterKey(const QWindow& window, QKeyEvent& key);
  void start(QWidget* window);
  void followClosed(const QWindow& closed);
  void wait();
  void arrive();
  void tick();
  void deliver();
  void deliverLater();
  void returnToModal(const QWidget& window);
  void followReader(const QKeyEvent& key);
  void readerIsDone();

  QPointer<QWidget> target_;
  QTimer waiting_;
  int ticks_ = 0;
  std::deque<std::unique_ptr<QKeyEvent>> keys_;
  int asked_ = 0;  // the key that was kept before the press itself comes
  // Letters that a screen reader has been asked about and that have not come back from it yet.
  int atReader_ = 0;
  QTimer reading_;
  X11Keys x11_{[this] { return atReader_ > 0; }};
};

}  // namespace platform
