#pragma once

class QPushButton;
class QWidget;

namespace platform {

// A button of a window, as the window's table of buttons has it. Without a caption the tip names
// it to screen readers.
struct ButtonSpec {
  const char* name;
  const char* caption;
  const char* tip = "";
  const char* icon = "";
};

QPushButton* newButton(const ButtonSpec& spec, QWidget* parent);

}  // namespace platform
