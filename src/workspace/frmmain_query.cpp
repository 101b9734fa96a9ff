// The commands that narrow, search and order the list.

#include "core/modcuore.h"
#include "core/modutil.h"
#include "model/condizione.h"
#include "model/raccolte.h"
#include "workspace/frmmain.h"

namespace tavolix {
namespace {

platform::Form& form(const char* name) {
  return platform::forms()[QString::fromLatin1(name)];
}

// In the corner below the form, where it hides neither the list nor what is found. Where the user
// moves it, it stays.
void placeBelowForm(platform::Form& form, const QWidget& main) {
  constexpr QPoint kMargin(16, 100);
  QWidget* window = form.Window();
  window->adjustSize();
  const QSize size = window->frameGeometry().size();
  window->move(main.mapToGlobal(main.rect().bottomRight()) - QPoint(size.width(), size.height()) -
               kMargin);
}

}  // namespace

void frmMain::mnuModFiltra_Click() {
  if (iRacCorr < 0) return;
  Puntatore(kClessidra);
  Salva();
  platform::Form& frmFiltro = form("frmFiltro");
  QMetaObject::invokeMethod(&frmFiltro, "Carica");
  Puntatore(kPuntatoreNormale);
  frmFiltro.ShowModal(this);
  Show();
  AbilitazionePannello();
}

void frmMain::mnuEliminaFiltro_Click() {
  if (iRacCorr < 0) return;
  Puntatore(kClessidra);
  aRaccolte(iRacCorr).sFiltro.clear();
  DBRefresh();
  AbilitazionePannello();
  Puntatore(kPuntatoreNormale);
}

void frmMain::mnuModTrova_Click() {
  if (iRacCorr < 0) return;
  Puntatore(kClessidra);
  platform::Form& frmTrova = form("frmTrova");
  if (!frmTrova.IsLoaded()) placeBelowForm(frmTrova, *Window());
  QMetaObject::invokeMethod(&frmTrova, "Carica", Q_ARG(bool, false));
  frmTrova.ShowOver(this);
  Puntatore(kPuntatoreNormale);
}

void frmMain::CercaAncora(bool bAvanti) {
  // As long as a collection is being loaded, nothing of it can be chosen.
  if (iRacCorr < 0 || !Control(QStringLiteral("panBar"))->isEnabled()) return;
  bool found = false;
  if (bFormRegistrata(QStringLiteral("frmTrova"))) {
    QMetaObject::invokeMethod(&form("frmTrova"), "CercaAncora", Q_RETURN_ARG(bool, found),
                              Q_ARG(bool, bAvanti));
  }
  if (!found) mnuModTrova_Click();
}

void frmMain::FiltraValore(int iCampo, const QVariant& valore) {
  const Esito esito = ClausolaValore(iRacCorr, iCampo, valore);
  if (!esito.sRifiuto.isEmpty()) {
    iMsg(esito.sRifiuto, 0);
    return;
  }
  // What could not be written stays in its row.
  if (!bSalvato()) return;
  Puntatore(kClessidra);
  aRaccolte(iRacCorr).sFiltro = esito.sTesto;
  DBRefresh();
  AbilitazionePannello();
  Puntatore(kPuntatoreNormale);
}

void frmMain::mnuOrdina_Click() {
  if (iRacCorr < 0) return;
  Salva();
  form("frmOrdina").ShowModal(this);
  Show();
}

}  // namespace tavolix
