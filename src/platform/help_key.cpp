#include "platform/help_key.h"

#include <QApplication>
#include <QKeyEvent>
#include <utility>

#include "platform/handlers.h"

namespace platform {

std::function<void(QWidget*)>& HelpKey::answer() {
  static std::function<void(QWidget*)> only;
  return only;
}

void HelpKey::setAnswer(std::function<void(QWidget*)> answer) {
  HelpKey::answer() = std::move(answer);
  static QPointer<HelpKey> watcher;
  if (!watcher.isNull()) return;
  watcher = new HelpKey(qApp);
  qApp->installEventFilter(watcher);
}

bool HelpKey::press(QWidget* at, const QKeyEvent& key) {
  if (key.key() != Qt::Key_F1 || key.modifiers() != Qt::NoModifier || !answer()) return false;
  guarded([&] { answer()(at); });
  return true;
}

// Forms see their keys before, because a key may open the list of the field it is pressed in.
bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) return false;
  return press(static_cast<QWidget*>(watched), static_cast<const QKeyEvent&>(*event));
}

}  // namespace platform
