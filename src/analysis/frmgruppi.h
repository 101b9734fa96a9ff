#pragma once

#include "analysis/gruppi_model.h"
#include "core/entry_focus.h"
#include "platform/form.h"

class QComboBox;

namespace tavolix {

class ResultGrid;

// Groups the records of the current collection by one of its lists, and tells what share of all
// each group has.
class frmGruppi final : public platform::Form {
  Q_OBJECT
 public:
  frmGruppi();

 private:
  QWidget* build() override;
  void loaded() override;
  void unloaded() override;
  bool queryUnload() override;
  bool keyDown(int key, Qt::KeyboardModifiers modifiers) override;

  QComboBox& cboCampo();
  ResultGrid& grd();
  bool bOpzione(const char* nome);

  void caricaCampi();
  void connectControls();
  void StartFlash();
  void cmdElabora_Click();
  void cmdGrafico_Click();
  void cmdEsci_Click();
  void Ricalcola();
  void Stampa(bool bAnteprima);

  GruppiModel gruppi_;
  EntryFocus focus_;
  bool bAnteprimaAperta_ = false;
};

void RegistraFormGruppi();

}  // namespace tavolix
