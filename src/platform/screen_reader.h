#pragma once

#include <QObject>

class QWidget;

namespace platform {

// What screen readers are told.

// Names a control that no label in sight names. A combo box has its text for a name, and tells
// this one as its description.
void nameControl(QWidget& control, const QString& name);

// Keeps what is told of the focus true. The toolkit's lists and tabs tell of theirs whenever their
// current row changes, whoever has the keyboard; and it says nothing when the keyboard comes back
// from an open list. For the whole program, as long as the object lives.
class FocusTeller final : public QObject {
  Q_OBJECT
 public:
  FocusTeller();
  ~FocusTeller() override;
  FocusTeller(const FocusTeller&) = delete;
  FocusTeller& operator=(const FocusTeller&) = delete;

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void tell();
};

}  // namespace platform
