#pragma once

class QAbstractButton;
class QPushButton;
class QString;
class QWidget;

namespace platform {

// A button of a window, as the window's table of buttons has it. Without a caption the tip names
// it to screen readers.
struct ButtonSpec {
  const char* name;
  const char* caption;
  const char* tip = "";
  const char* icon = "";
  const char* keys = "";  // that do the same from elsewhere; shown behind the tip
};

QPushButton* newButton(const ButtonSpec& spec, QWidget* parent);
// The caption of a button, and its name for screen readers: without letter mark and blanks.
void setCaption(QAbstractButton& button, const QString& caption);
// Shows keys in brackets behind the tool tip of a control.
void showKeysInTip(QWidget& control, const QString& keys);

}  // namespace platform
