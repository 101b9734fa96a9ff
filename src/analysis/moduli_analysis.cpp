#include "analysis/moduli_analysis.h"

#include "analysis/frmgrafico.h"
#include "analysis/frmgruppi.h"
#include "analysis/frminfoacc.h"
#include "core/comandi.h"
#include "core/dialogo.h"
#include "core/verbi.h"

namespace tavolix {
namespace {

void mnuAnalisiInfoAcc_Click() {
  MostraDaMain(platform::forms()[QStringLiteral("frmInfoAcc")]);
}

void mnuAnalisiRaggruppamenti_Click() {
  // What could not be written stays in its box: it would be missing in the groups.
  if (!verbi().bSalvato()) return;
  MostraDaMain(platform::forms()[QStringLiteral("frmGruppi")]);
}

// clang-format off
constexpr Comando kComandi[] = {
    {"mnuRaccolte", 100, "mnuAnalisiInfoAcc", "Analisi elenchi multiraccolta", "", 7, mnuAnalisiInfoAcc_Click, {}, {10, 32, "multiraccolta", "Analisi elenchi multiraccolta"}},
    {"mnuRacCorrente", 50, "mnuAnalisiRaggruppamenti", "Analisi &raggruppamenti", "", 6, mnuAnalisiRaggruppamenti_Click, Quando::kRaccolta, {1, 31, "raggruppamenti", "Analisi raggruppamenti"}},
};
// clang-format on

}  // namespace

void RegistraFormAnalysis() {
  RegistraFormInfoAcc();
  RegistraFormGruppi();
  RegistraFormGrafico();
  RegistraComandi(kComandi);
}

}  // namespace tavolix
