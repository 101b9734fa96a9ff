#pragma once

#include <QVariant>

#include "core/entry_focus.h"
#include "platform/form.h"
#include "store/recordset.h"

namespace platform {
class DataControl;
class DataGrid;
class TextBox;
}  // namespace platform

namespace tavolix {

// Keeps the list of values behind a combo field: adds, renames, deletes what nobody uses, marks
// the value that new records start with.
class frmTab final : public platform::Form {
  Q_OBJECT
 public:
  frmTab();

  // Loads the list of a field of a collection.
  void CaricaTAB(int iRac, int iCampo);
  // Text of the current value; empty for none, or if it is not for the record.
  QString sValoreCorrente();
  // The value to begin with, by its key.
  void ImpostaValoreCorrente(qint64 lID) { lRigaDaMostrare_ = lID; }
  // Key of the current value, 0 for none.
  qint64 lVoceCorrente();
  // Offers a text for adding.
  void ProponiVoce(const QString& sTesto);

  // True if the list has a text; without `bOgni`, only if another row than the current one has it.
  bool bEsisteGia(const QString& sTesto, bool bOgni);
  // Makes the current row the only one that new records start with.
  void ImpostaPredefinito();
  void CancellaPredefinito();

 private:
  QWidget* build() override;
  void loaded() override;
  void activated() override;
  bool keyDown(int key, Qt::KeyboardModifiers modifiers) override;

  void connectControls();
  void cmdAdd_Click();
  void cmdElimina_Click();
  void cmdEsci_Click();
  void abandon();
  void txtAdd_Change();
  void grd_Click(const QModelIndex& cell);
  void grd_BeforeUpdate(bool* cancel);
  bool confirmEdit();
  void afterEdit(void (frmTab::*command)());
  bool isUsed(qint64 lID) const;
  void clearDefaults();
  void followList();
  void listChanged() const;

  platform::DataControl& dbTab();
  platform::DataGrid& grd();
  platform::TextBox& txtAdd();
  store::RecordsetPtr rows();

  EntryFocus focus_;
  QString sCodTab_;
  int iRacTab_ = 0;
  int iCampo_ = 0;
  bool bScelta_ = true;  // the current value is for the record
  QString sRifiuto_;
  qint64 lRigaDaMostrare_ = 0;
};

void RegistraFormTab();

}  // namespace tavolix
