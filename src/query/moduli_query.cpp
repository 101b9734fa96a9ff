#include "query/moduli_query.h"

#include "core/comandi.h"
#include "core/dialogo.h"
#include "core/modcuore.h"
#include "core/modutil.h"
#include "core/verbi.h"
#include "model/condizione.h"
#include "model/raccolte.h"
#include "query/frmfiltro.h"
#include "query/frmordina.h"
#include "query/frmtrova.h"

namespace tavolix {
namespace {

using platform::forms;

frmTrova& FormTrova() {
  return forms().as<frmTrova>(QStringLiteral("frmTrova"));
}

// In the corner below the record, where it hides neither the list nor what is found. Where the
// user moves it, it stays.
void placeBelowForm(platform::Form& form, const QWidget& main) {
  constexpr QPoint kMargin(16, 100);
  QWidget* window = form.Window();
  window->adjustSize();
  const QSize size = window->frameGeometry().size();
  window->move(main.mapToGlobal(main.rect().bottomRight()) - QPoint(size.width(), size.height()) -
               kMargin);
}

void mnuModFiltra_Click() {
  // What could not be written holds its row: the list would not follow.
  if (!verbi().bSalvato()) return;
  Puntatore(kClessidra);
  auto& form = forms().as<frmFiltro>(QStringLiteral("frmFiltro"));
  form.Carica();
  Puntatore(kPuntatoreNormale);
  MostraDaMain(form);
  verbi().AbilitazionePannello();
}

void applyFilter(const QString& sFiltro) {
  Puntatore(kClessidra);
  aRaccolte(iRacCorr).sFiltro = sFiltro;
  DBRefresh();
  verbi().AbilitazionePannello();
  Puntatore(kPuntatoreNormale);
}

void mnuEliminaFiltro_Click() {
  if (verbi().bSalvato()) applyFilter({});
}

void filterByValue(int iCampo, const QVariant& valore) {
  const Esito esito = ClausolaValore(iRacCorr, iCampo, valore);
  if (!esito.sRifiuto.isEmpty()) {
    iMsg(esito.sRifiuto, 0);
    return;
  }
  // What could not be written stays in its row.
  if (verbi().bSalvato()) applyFilter(esito.sTesto);
}

void mnuModTrova_Click() {
  if (iRacCorr < 0) return;
  Puntatore(kClessidra);
  if (!FormTrova().IsLoaded()) placeBelowForm(FormTrova(), *FormMain().Window());
  FormTrova().Carica(false);
  FormTrova().ShowOver(&FormMain());
  Puntatore(kPuntatoreNormale);
}

// The next or the previous hit of the last search; its window where there was none.
void searchOn(bool bAvanti) {
  // As long as a collection is being loaded, nothing of it can be chosen.
  if (!FormMain().Control(QStringLiteral("panBar"))->isEnabled()) return;
  const bool searching = bFormRegistrata(QStringLiteral("frmTrova"));
  if (!searching || !FormTrova().CercaAncora(bAvanti)) mnuModTrova_Click();
}

// The open window goes along with the collection.
void followCollection() {
  if (!bFormRegistrata(QStringLiteral("frmTrova")) || !FormTrova().IsVisible()) return;
  if (iRacCorr < 0) {
    FormTrova().Hide();
  } else {
    FormTrova().Carica(false);
  }
}

void mnuOrdina_Click() {
  if (!verbi().bSalvato()) return;
  MostraDaMain(forms()[QStringLiteral("frmOrdina")]);
}

constexpr Quando kRaccolta = Quando::kRaccolta;

// clang-format off
constexpr Comando kComandi[] = {
    {"mnuRacCorrente", 10, "mnuModFiltra", "Applica &filtro", "", 4, mnuModFiltra_Click, kRaccolta, {9, 22, "filtra", "Applica filtro all'elenco"}},
    {"mnuRacCorrente", 20, "mnuEliminaFiltro", "&Elimina filtro", "", 4, mnuEliminaFiltro_Click, kRaccolta, {8, 23, "annulla-filtro", "Annulla filtro corrente"}},
    {"mnuRacCorrente", 30, "mnuModTrova", "&Trova", "Ctrl+F", 12, mnuModTrova_Click, kRaccolta, {0, 21, "trova", "Trova"}},
    {"mnuRacCorrente", 40, "mnuOrdina", "&Ordina", "", 8, mnuOrdina_Click, kRaccolta},
    {nullptr, 0, "", "", "F3", 0, [] { searchOn(true); }, kRaccolta},
    {nullptr, 0, "", "", "Shift+F3", 0, [] { searchOn(false); }, kRaccolta},
};
// clang-format on

}  // namespace

void RegistraFormQuery() {
  RegistraFormFiltro();
  RegistraFormTrova();
  RegistraFormOrdina();
  RegistraComandi(kComandi);
  verbi().Cerca = mnuModTrova_Click;
  verbi().FiltraValore = filterByValue;
  verbi().SegueRicerca = followCollection;
}

}  // namespace tavolix
