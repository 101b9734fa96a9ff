#pragma once

#include "core/entry_focus.h"
#include "platform/form.h"

class QComboBox;

namespace tavolix {

// Sorts the current collection's list by up to three of its columns, all in one direction. Made
// for each use: it keeps nothing.
class frmOrdina final : public platform::Form {
  Q_OBJECT
 public:
  frmOrdina();

 private:
  QWidget* build() override;
  void loaded() override;

  QComboBox& cboCampo(int indice);
  void cmdElabora_Click();

  EntryFocus focus_;
};

// The order by some columns, blank ones passed over; empty without any.
QString sClausolaOrdine(const QStringList& campi, bool bDecrescente);

void RegistraFormOrdina();

}  // namespace tavolix
