#include "platform/clipboard.h"

#include <QGuiApplication>
#include <QKeyEvent>

#include "platform/x11_selection.h"

namespace platform {
namespace {

constexpr int kPatienceMilliseconds = 600;

bool isOurs(QClipboard::Mode mode) {
  const QClipboard* clipboard = QGuiApplication::clipboard();
  return mode == QClipboard::Selection ? clipboard->ownsSelection() : clipboard->ownsClipboard();
}

}  // namespace

std::optional<QString> clipboardText(QClipboard::Mode mode) {
  if (isOurs(mode) || QGuiApplication::platformName() != QLatin1String("xcb")) {
    return QGuiApplication::clipboard()->text(mode);
  }
  const bool marked = mode == QClipboard::Selection;
  return readX11Selection(marked ? "PRIMARY" : "CLIPBOARD", kPatienceMilliseconds);
}

std::optional<QClipboard::Mode> pastesFrom(const QKeyEvent& key) {
  if (!key.matches(QKeySequence::Paste)) return std::nullopt;
  const bool marked = key.key() == Qt::Key_Insert &&
                      key.modifiers().testFlag(Qt::ControlModifier) &&
                      QGuiApplication::clipboard()->supportsSelection();
  return marked ? QClipboard::Selection : QClipboard::Clipboard;
}

}  // namespace platform
