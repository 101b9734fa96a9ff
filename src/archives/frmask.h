#pragma once

#include "core/entry_focus.h"
#include "platform/form.h"

namespace tavolix {

// Asks for a line of text, which is empty if the user gives up.
class frmAsk final : public platform::Form {
  Q_OBJECT
 public:
  frmAsk();

 private:
  QWidget* build() override;
  void loaded() override;
  void activated() override;

  void cmdAnnulla_Click();

  EntryFocus focus_;
};

// Asks for a text of at most `iLunghezza` characters.
QString sChiedi(const QString& sEtichetta, const QString& sValore, int iLunghezza);
void RegistraFormAsk();

}  // namespace tavolix
