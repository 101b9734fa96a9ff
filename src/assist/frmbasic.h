#pragma once

#include <QPointer>
#include <QTimer>

#include "platform/flash_target.h"
#include "platform/form.h"

namespace tavolix {

// A form that is never shown: it makes one control of the program blink, to say that it is the
// one to be pressed.
class frmBasic final : public platform::Form {
  Q_OBJECT
 public:
  frmBasic();

  // Starts blinking in a colour of the 16-colour palette; another control stops before.
  void StartFlash(QWidget* controllo, int colore, int millisecondi);
  void StopFlash();

 private:
  QWidget* build() override;
  void tim_Timer();

  QTimer tim_;
  bool flashing_ = false;
  QPointer<QWidget> control_;
  platform::BgrColor normal_ = 0;
  platform::BgrColor flash_ = 0;
};

}  // namespace tavolix
