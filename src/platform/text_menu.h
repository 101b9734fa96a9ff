#pragma once

#include <QKeySequence>
#include <QPoint>
#include <functional>
#include <vector>

class QWidget;

namespace platform {

// A line of a text box's menu; without a caption a line that parts others.
struct TextCommand {
  const char* caption = nullptr;
  QKeySequence::StandardKey key = QKeySequence::UnknownKey;
  bool enabled = false;
  std::function<void()> act = {};
};

// Opens the menu of a text box. Each line tells its key, also where the window has another use for
// that key outside of text boxes.
void showTextMenu(QWidget& box, const QPoint& place, const std::vector<TextCommand>& commands);

}  // namespace platform
