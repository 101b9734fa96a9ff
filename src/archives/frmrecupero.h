#pragma once

#include "platform/form.h"

namespace tavolix {

// Tells that an archive cannot be used, what to try, and can try to repair it.
class frmRecupero final : public platform::Form {
  Q_OBJECT
 public:
  frmRecupero();

  // Shows it for an archive; from now on the program asks at its start which one to open.
  void Mostra(const QString& sDescrizione, const QString& sPath);

 private:
  QWidget* build() override;
  void loaded() override;
  void activated() override;

  void cmdRecupero_Click();
};

// From now on the next start asks which archive to open. In the current section of the settings.
void ChiediArchivioAllAvvio();
// Shows the window for an archive that cannot be used.
void RecuperaArchivio(const QString& sDescrizione, const QString& sPath);
void RegistraFormRecupero();

}  // namespace tavolix
