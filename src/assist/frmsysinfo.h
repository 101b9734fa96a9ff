#pragma once

#include "platform/form.h"

namespace tavolix {

// What a call for support needs to know, to be read or copied.
class frmSysInfo final : public platform::Form {
  Q_OBJECT
 public:
  frmSysInfo();

 private:
  QWidget* build() override;
  void loaded() override;
  void activated() override;
  void cmdCopia_Click();
};

void RegistraFormSysInfo();

}  // namespace tavolix
