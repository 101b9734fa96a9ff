#pragma once

#include "platform/form.h"

namespace tavolix {

// Copies an archive that is not open: to a removable medium, to the folder of the copies, or to
// where the user says. Closes after one copy.
class frmCopieSicurezza final : public platform::Form {
  Q_OBJECT
 public:
  frmCopieSicurezza();

  // The archive to be copied; to be set before the window is shown.
  void SetPath(const QString& sPath) { sPath_ = sPath; }

 private:
  QWidget* build() override;
  void loaded() override;

  void cmdCopiaAutomatica_Click();
  void cmdCopieSicurezzaHD_Click();
  void cmdManuale_Click();

  QString sPath_;
};

frmCopieSicurezza& FrmCopieSicurezza();
void RegistraFormCopieSicurezza();

}  // namespace tavolix
