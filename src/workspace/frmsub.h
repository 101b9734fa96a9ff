#pragma once

#include "core/entry_focus.h"
#include "platform/form.h"
#include "store/recordset.h"

class QStackedLayout;

namespace platform {
class DataControl;
class DataGrid;
}  // namespace platform

namespace tavolix {

// The child rows of the current record: articles of a magazine, pieces of a disc, contacts with a
// person. While it is shown iRacCorr is the sub-collection.
class frmSub final : public platform::Form {
  Q_OBJECT
 public:
  frmSub();

  // Shows the rows of a sub-collection that belong to the current record of its parent collection.
  void Carica(int iSub, int iPadre);
  // The same in a modal window that stands on one of the rows, 0 for none; returns when it is left.
  // Meanwhile iRacCorr is the sub-collection.
  void Mostra(int iSub, int iPadre, qint64 lID);
  void CreaNuovo(bool bDuplica);
  // Writes what was typed in the current row. Failures are ignored.
  void Salva();
  // Opens the panel or closes it; by itself open when there are rows.
  void AbilitazionePannello();
  void AbilitazionePannello(bool bAbilita);

 private:
  QWidget* build() override;
  void loaded() override;
  bool keyDown(int key, Qt::KeyboardModifiers modifiers) override;

  void connectControls();
  QStackedLayout& panels();
  void hidePanel();
  void showPanel(int iSub);
  QString rowsOf(int iSub) const;
  QVariant parentKey(int iSub) const;
  void cmdAddNew_Click();
  void cmdDuplica_Click();
  void cmdCancella_Click();
  void cmdEsci_Click();
  void grdSub_BeforeUpdate();

  platform::DataControl& dbSubCurr();
  platform::DataGrid& grdSub();
  store::RecordsetPtr rows();

  int iSubCorrente_ = -1;
  EntryFocus focus_;
};

frmSub& FrmSub();
void RegistraFormSub();

}  // namespace tavolix
