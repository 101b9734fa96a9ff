#pragma once

#include <QElapsedTimer>
#include <QObject>

namespace platform {

// Lets the user break off long work of the window in front by Escape or by the window's box. While
// it lives, no other key and no click goes anywhere.
class BreakKey final : public QObject {
  Q_OBJECT
 public:
  BreakKey();

  // True each time that windows ought to be painted again.
  bool isTime() const;
  // Paints them. False once the user has broken off.
  bool goesOn();

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;

  QElapsedTimer since_;
  bool broken_ = false;
};

}  // namespace platform
