#pragma once

#include <QObject>

class QComboBox;
class QKeyEvent;

namespace platform {

bool isEnter(int key);
// A key that takes the row and leads to the next field.
bool leavesList(int key);

// Keys while the list of a combo box is open, told the box in its own terms. One that is for the
// window, whatever the list shows (a function key, a letter with Ctrl or Alt), takes the row and
// goes on to the box once the list is closed; it does not open it again.
class PopupKeys final : public QObject {
 public:
  // What a kind of box does with its open list.
  class Box {
   public:
    // Closes the list and takes its row, for a key that does so.
    virtual void takeRow(int key) = 0;
    // Closes the list and leaves what was there.
    virtual void giveUp() = 0;
    // True if Enter ends with the row that it takes, and does not go on.
    virtual bool enterStays() const { return true; }
    // True for any other key that the box uses up itself.
    virtual bool typed(const QKeyEvent&) { return false; }

   protected:
    ~Box() = default;
  };

  PopupKeys(QComboBox& combo, Box& box) : combo_(combo), box_(box) {}
  // Makes the list ready before it is shown. False if it is not to be: it is, or a key that has
  // closed it is going on to the box.
  bool makeReady();
  bool isOpen() const;
  // A key that comes to the box while its list is open is for the list. True if it was.
  bool press(QKeyEvent& event);

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool filtered(QEvent& event);
  bool pressInList(const QKeyEvent& event);

  QComboBox& combo_;
  Box& box_;
  bool watching_ = false;
  bool handingOn_ = false;
};

}  // namespace platform
