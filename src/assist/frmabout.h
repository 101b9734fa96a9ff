#pragma once

#include "platform/form.h"

namespace tavolix {

// The program's picture and version: while it starts, and when the user asks for it. A click, a
// key or another window sends it away.
class frmAbout final : public platform::Form {
  Q_OBJECT
 public:
  frmAbout();

 private:
  QWidget* build() override;
  void loaded() override;
  void focusWent(const QWindow* to);

  bool hasHadFocus_ = false;
};

void RegistraFormAbout();

}  // namespace tavolix
