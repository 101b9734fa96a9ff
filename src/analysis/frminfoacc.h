#pragma once

#include "analysis/elenco_model.h"
#include "core/entry_focus.h"
#include "platform/form.h"

class QComboBox;
class QProgressBar;

namespace platform {
class DataCombo;
}

namespace tavolix {

class ResultGrid;

// Lists the records of several collections by an attribute that all of them have, and what they
// are worth.
class frmInfoAcc final : public platform::Form {
  Q_OBJECT
 public:
  frmInfoAcc();

 private:
  QWidget* build() override;
  void loaded() override;
  bool queryUnload() override;
  bool keyDown(int key, Qt::KeyboardModifiers modifiers) override;

  QComboBox& cboCampo();
  platform::DataCombo& cboFiltro();
  ResultGrid& grd();
  QProgressBar& progBar();

  void connectInputs();
  void cboCampo_Click();
  void cmdElabora_Click();
  void cmdEsci_Click();
  void StartFlash();
  void Ricalcola();
  void mostra(const store::RecordsetPtr& rs, const QString& sAttributo);
  RichiestaElenco richiesta();
  void Stampa(bool bAnteprima);

  ElencoModel elenco_;
  EntryFocus focus_;
  QString sAttributo_;  // of the last computation
  bool bAnteprimaAperta_ = false;
};

void RegistraFormInfoAcc();

}  // namespace tavolix
