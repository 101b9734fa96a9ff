#include "platform/key_handover.h"

#include <QAccessible>
#include <QApplication>
#include <QWindow>
#include <utility>

#include "platform/commands.h"
#include "platform/handlers.h"
#include "platform/key_sender.h"

namespace platform {
namespace {

// A second of the program's own time: one in which it stands still counts as a single tick.
constexpr int kTickMilliseconds = 100;
constexpr int kTicks = 10;
// A reader that keeps a key for itself does not say so; one that hangs is waited for no longer.
constexpr int kReaderMilliseconds = 200;

bool isKey(QEvent::Type type) {
  return type == QEvent::KeyPress || type == QEvent::KeyRelease || type == QEvent::ShortcutOverride;
}

// Where a key typed in a window goes: into a list that has dropped down, if there is one.
QWidget* receiverIn(QWidget* window) {
  QWidget* popup = QApplication::activePopupWidget();
  QWidget* place = popup != nullptr ? popup : window;
  QWidget* focus = place->focusWidget();
  return focus != nullptr ? focus : place;
}

std::unique_ptr<QKeyEvent> pressOf(const QKeyEvent& key, QEvent::Type type) {
  return std::make_unique<QKeyEvent>(type, key.key(), key.modifiers(), key.text(),
                                     key.isAutoRepeat());
}

}  // namespace

KeyHandover::KeyHandover() : QObject(qApp) {
  connect(&waiting_, &QTimer::timeout, this, &KeyHandover::tick);
  reading_.setSingleShot(true);
  connect(&reading_, &QTimer::timeout, this, &KeyHandover::readerIsDone);
  qApp->installEventFilter(this);
}

KeyHandover& KeyHandover::instance() {
  static QPointer<KeyHandover> only;
  if (only.isNull()) only = new KeyHandover;
  return *only;
}

void KeyHandover::watch() {
  instance();
}

void KeyHandover::to(QWidget* window) {
  instance().start(window);
}

void KeyHandover::start(QWidget* window) {
  target_ = window;
  if (window->isVisible() && window->isActiveWindow()) {
    arrive();
  } else {
    wait();
  }
}

void KeyHandover::wait() {
  x11_.Hold();
  ticks_ = kTicks;
  waiting_.start(kTickMilliseconds);
}

void KeyHandover::arrive() {
  waiting_.stop();
  if (target_ != nullptr) x11_.SendTo(*target_);
  deliverLater();
}

void KeyHandover::tick() {
  if (--ticks_ > 0) return;
  waiting_.stop();
  keys_.clear();
  x11_.Drop();
}

bool KeyHandover::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::WindowActivate && watched->isWidgetType()) {
    const auto& window = static_cast<const QWidget&>(*watched);
    if (watched == target_) arrive();
    if (window.isWindow()) returnToModal(window);
  }
  if (!watched->isWindowType() || !isKey(event->type())) return false;
  auto& key = static_cast<QKeyEvent&>(*event);
  const bool taken = filterKey(static_cast<const QWindow&>(*watched), key);
  if (!taken || !key.spontaneous()) followReader(key);
  return taken;
}

// A window manager may let a click take the focus to a window that has no input.
void KeyHandover::returnToModal(const QWidget& window) {
  QWidget* modal = QApplication::activeModalWidget();
  if (modal == nullptr || &window == modal || modal->isAncestorOf(&window)) return;
  if (target_ == modal && modal->isVisible()) modal->activateWindow();
}

// One that has just been closed is about to be followed by another, unless one is in front already:
// behind a list that has dropped down.
void KeyHandover::followClosed(const QWindow& closed) {
  QWidget* front = QApplication::activeWindow();
  if (front == nullptr || !front->isVisible() || front->windowHandle() == &closed) return wait();
  target_ = front;
}

// The toolkit asks a reader about each press and sends on a copy when it has answered; shortcuts
// are looked up before. One that is typed behind letters waits for them.
void KeyHandover::followReader(const QKeyEvent& key) {
  if (key.type() != QEvent::KeyPress || !QAccessible::isActive()) return;
  if (key.spontaneous()) {
    ++atReader_;
    reading_.start(kReaderMilliseconds);
  } else if (atReader_ > 0 && --atReader_ == 0) {
    readerIsDone();
  }
}

void KeyHandover::readerIsDone() {
  atReader_ = 0;
  reading_.stop();
  const QWidget* window = QApplication::activeWindow();
  if (window != nullptr && !waiting_.isActive()) x11_.SendTo(*window);
}

// A key for a window that is held is asked about as a shortcut, and then goes nowhere; any other
// comes as a press as well.
bool KeyHandover::filterKey(const QWindow& window, QKeyEvent& key) {
  if (window.type() == Qt::Popup && window.isVisible()) return false;
  if (waiting_.isActive() && target_ != nullptr && &window == target_->windowHandle()) arrive();
  const bool late = !window.isVisible() && key.type() != QEvent::KeyRelease;
  if (late && !waiting_.isActive()) followClosed(window);
  if (!late && !waiting_.isActive() && keys_.empty()) return false;
  // What comes after a key that waits, waits too.
  const int code = key.keyCombination().toCombined();
  const bool kept = key.type() == QEvent::KeyPress && std::exchange(asked_, 0) == code;
  if (key.type() == QEvent::ShortcutOverride) asked_ = code;
  if (key.type() != QEvent::KeyRelease && !kept) {
    keys_.push_back(pressOf(key, QEvent::KeyPress));
    if (!waiting_.isActive()) deliverLater();
  }
  key.accept();
  return true;
}

void KeyHandover::deliverLater() {
  if (!keys_.empty()) QMetaObject::invokeMethod(this, &KeyHandover::deliver, Qt::QueuedConnection);
}

void KeyHandover::deliver() {
  while (!keys_.empty() && !waiting_.isActive()) {
    if (Commands::areYielding()) {
      QTimer::singleShot(kTickMilliseconds, this, &KeyHandover::deliver);
      return;
    }
    if (target_ == nullptr || !target_->isVisible()) return wait();
    const std::unique_ptr<QKeyEvent> key = std::move(keys_.front());
    keys_.pop_front();
    const QPointer<QWidget> receiver = receiverIn(target_);
    guarded([&] {
      sendKey(*receiver, *key);
      if (receiver != nullptr) sendKey(*receiver, *pressOf(*key, QEvent::KeyRelease));
    });
  }
}

}  // namespace platform
