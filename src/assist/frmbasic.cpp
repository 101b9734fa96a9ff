#include "assist/frmbasic.h"

namespace tavolix {

using platform::FlashTarget;

frmBasic::frmBasic() : platform::Form(QStringLiteral("frmBasic")) {
  tim_.setObjectName(QStringLiteral("tim"));
  connect(&tim_, &QTimer::timeout, this, &frmBasic::tim_Timer);
}

QWidget* frmBasic::build() {
  auto* window = new QWidget;
  window->setWindowTitle(QStringLiteral("Basic"));
  return window;
}

void frmBasic::StartFlash(QWidget* controllo, int colore, int millisecondi) {
  if (flashing_) StopFlash();
  flashing_ = true;
  control_ = controllo;
  normal_ = FlashTarget::ForeColor(controllo);
  flash_ = platform::qbColor(colore);
  tim_.start(millisecondi);
}

void frmBasic::StopFlash() {
  if (!flashing_) return;
  flashing_ = false;
  tim_.stop();
  // Back to the theme, which may have changed since.
  if (control_) FlashTarget::ResetColors(control_);
}

void frmBasic::tim_Timer() {
  if (!control_) return;
  const bool normal = FlashTarget::ForeColor(control_) == normal_;
  FlashTarget::SetForeColor(control_, normal ? flash_ : normal_);
}

}  // namespace tavolix
