#pragma once

#include <memory>

#include "core/entry_focus.h"
#include "platform/form.h"
#include "query/controlli_condizione.h"
#include "store/recordset.h"

namespace tavolix {

// Moves the list to the next record that meets a condition, or that has a child row which does.
// The user can work in the list while it is open.
class frmTrova final : public platform::Form {
  Q_OBJECT
 public:
  enum Modo { kSuccessivo, kPrecedente, kPrimo, kUltimo };

  frmTrova();
  ~frmTrova() override;

  // Starts afresh on the current collection, or on its sub-collection.
  void Carica(bool bSottoRaccolta);
  void Cerca(int iModoRicerca);
  // Goes on with the search that was entered last, forward or backward. False if there is none for
  // the current collection.
  bool CercaAncora(bool bAvanti);

 private:
  QWidget* build() override;
  void loaded() override;
  void unloaded() override;
  bool keyDown(int key, Qt::KeyboardModifiers modifiers) override;

  void connectControls();
  void opt_Click();
  void cboCampo_Click();
  int iRaccolta();
  QString sCreaCondizione();
  void findInList(int iModo, const QString& condition);
  void findInChildren(int iModo, const QString& condition);
  // Moves to a main record with a child that meets the condition; false if there is none.
  bool walk(store::Recordset& clone, int iModo, const QString& condition);
  bool stepOn(store::Recordset& clone, int iModo) const;
  bool findChild(const QString& sSql, int iModo, const QString& condition);
  void closeChildren();
  void showChild();

  std::unique_ptr<ControlliCondizione> controlli_;
  EntryFocus focus_;
  int iRaccolta_ = -1;  // what the conditions were made for
  int iOfferta_ = -1;   // whose fields are offered
  QString sArchivio_;
  // The children that were found last: the next search goes on among them.
  store::RecordsetPtr rsFigli_;
  QString sSqlFigli_;
};

void RegistraFormTrova();

}  // namespace tavolix
