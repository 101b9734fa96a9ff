#pragma once

#include <QComboBox>

#include "platform/popup_keys.h"

namespace platform {

// A list of fixed choices. While it is open, keys move in it; Enter takes the row and Escape leaves
// what was there, and neither goes on to the window. Tab and the window's own keys take the row
// and go on. The wheel does not turn it.
class DropDown final : public QComboBox, private PopupKeys::Box {
  Q_OBJECT
 public:
  explicit DropDown(QWidget* parent = nullptr);

  void showPopup() override;
  void hidePopup() override;

 Q_SIGNALS:
  // A row was taken from the open list, by Enter or the mouse.
  void picked();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void takeRow(int key) override;
  void giveUp() override { hidePopup(); }

  PopupKeys keys_{*this, *this};
  bool ready_ = false;
  bool open_ = false;
};

}  // namespace platform
