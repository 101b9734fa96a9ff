#pragma once

#include <array>
#include <memory>

#include "core/entry_focus.h"
#include "platform/form.h"
#include "query/controlli_condizione.h"

class QComboBox;

namespace tavolix {

// Narrows the current collection's list to the records that meet up to five conditions.
class frmFiltro final : public platform::Form {
  Q_OBJECT
 public:
  frmFiltro();
  ~frmFiltro() override;

  // Makes the rows for the current collection; those of the same one stay as they were left.
  void Carica();
  // Brings a row into line with its connector and field.
  void VisibilitaControlli(int iRiga);

 private:
  static constexpr int kRighe = 5;

  QWidget* build() override;
  void loaded() override;
  bool keyDown(int key, Qt::KeyboardModifiers modifiers) override;

  void buildRow(int iRiga, QWidget* window);
  void connectRow(int iRiga);
  void cbpCampo_Click(int iRiga);
  void cboAltro_Click(int iRiga);
  void cmdFiltro_Click();
  void applica(const QString& sFiltro);
  bool isActive(int iRiga);
  void switchOffBehind(int iRiga);
  static void goTo(QWidget* control);
  QComboBox& cboAltro(int iRiga);
  const ControlliCondizione& riga(int iRiga) const {
    return *righe_.at(static_cast<std::size_t>(iRiga));
  }

  std::array<std::unique_ptr<ControlliCondizione>, kRighe> righe_;
  EntryFocus focus_;
  int iRaccolta_ = -1;  // the rows were made for it, and for this archive
  QString sArchivio_;
};

void RegistraFormFiltro();

}  // namespace tavolix
