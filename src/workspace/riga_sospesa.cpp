#include "workspace/riga_sospesa.h"

#include "core/errore.h"
#include "core/modutil.h"
#include "platform/data_control.h"
#include "platform/data_grid.h"

namespace tavolix {

void RigaSospesa::Salva() const {
  if (bRecordValido(form.Recordset())) form.writePending();
  // What is being typed into a cell counts as typed.
  list.CommitCell();
}

bool RigaSospesa::bResta() const {
  return form.Kept().has_value() || list.IsRefused();
}

bool RigaSospesa::bLascia() const {
  Salva();
  if (!bResta()) return true;
  // The question tells it.
  TogliSegnalazioni();
  QString why = form.Kept() ? form.Kept()->description() : list.Refusal();
  if (!why.isEmpty()) why += QStringLiteral("\r\r");
  const QString question = QStringLiteral("Il record corrente non e' stato salvato.\r\r") + why +
                           QStringLiteral(
                               "Vuoi attendere, e lasciare il record aperto?\r"
                               "Rispondendo No quanto e' stato digitato va perduto.");
  if (iMsg(question, 2) != 0) return false;
  list.AbandonCell();
  form.UpdateControls();
  return true;
}

void RigaSospesa::SegnalaLettura(int numero, const QString& descrizione) const {
  if (!form.IsUnread() || !list.IsUnreadable()) SegnalaErrore(numero, descrizione);
}

}  // namespace tavolix
