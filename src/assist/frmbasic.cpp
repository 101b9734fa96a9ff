#include "assist/frmbasic.h"

#include "assist/frmguida.h"
#include "core/verbi.h"

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

void RegistraFormAssist() {
  RegistraFormGuida();
  platform::forms().add<frmBasic>(QStringLiteral("frmBasic"));
  const auto basic = []() -> frmBasic& {
    return platform::forms().as<frmBasic>(QStringLiteral("frmBasic"));
  };
  verbi().Lampeggia = [basic](QWidget* controllo, int colore, int millisecondi) {
    basic().StartFlash(controllo, colore, millisecondi);
  };
  verbi().FermaLampeggio = [basic] { basic().StopFlash(); };
}

}  // namespace tavolix
