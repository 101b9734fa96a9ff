#pragma once

#include "platform/form.h"
#include "store/database.h"

namespace tavolix {

// Tips on one part of the program, one at a time, and whether they are to show at the start.
class frmSin final : public platform::Form {
  Q_OBJECT
 public:
  frmSin();

  // Shows the tips of a group until they are closed; nothing where it has none.
  void Carica(const QString& sPath, const QString& sGruppo, platform::Form* owner);

 private:
  QWidget* build() override;
  void loaded() override;
  void unloaded() override;
  void activated() override;

  void apri(const QString& sPath, const QString& sGruppo);
  void MostraSIN();
  void vai(qint64 lPassi);
  void chkSuggAvvio_Click(bool bMostra);

  store::DatabasePtr dbSin_;
  store::RecordsetPtr rsSin_;
  qint64 iIndice_ = 0;
};

void RegistraFormSin();

}  // namespace tavolix
