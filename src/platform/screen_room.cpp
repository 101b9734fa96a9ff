#include "platform/screen_room.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace platform {
namespace {

constexpr QSize kFrame(12, 48);  // what the desktop adds around a window
constexpr int kCharactersOnScreen = 100;

}  // namespace

QSize roomOnScreen() {
  return QGuiApplication::primaryScreen()->availableSize() - kFrame;
}

int widthOfCharacters(const QWidget* widget, int characters) {
  const int letter = widget->fontMetrics().horizontalAdvance(u'0');
  return characters * std::min(letter, roomOnScreen().width() / kCharactersOnScreen);
}

}  // namespace platform
