#include "output/moduli_output.h"

#include "core/comandi.h"
#include "core/dialogo.h"
#include "core/errore.h"
#include "core/modcuore.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "core/verbi.h"
#include "model/raccolte.h"
#include "output/frmexport.h"
#include "output/frmreport.h"
#include "output/importazione.h"
#include "output/modcrystal32.h"
#include "platform/data_control.h"

namespace tavolix {
namespace {

frmReport& FormReport() {
  return platform::forms().as<frmReport>(QStringLiteral("frmReport"));
}

// The list on the screen becomes the query that the reports of its collection read.
void mnuFileStampe_Click() {
  protetto("frmMain!FileStampe", [] {
    // What could not be written stays in its box: the list is not the one on the screen.
    if (!verbi().bSalvato()) return;
    const QString sQuery = QStringLiteral("Q_REP_%1").arg(iRacCorr);
    if (!RicreaQueryDef(sQuery, dbElenco().RecordSource(), dbArc)) return;
    FormReport().ImpostaArchivio(sPathCompleto(sPathArc));
    FormReport().Carica(sPathCompleto(QStringLiteral("tvx.ini")),
                        QStringLiteral("REPORT_%1").arg(iRacCorr));
    MostraDaMain(FormReport());
  });
}

void mnuFileEsporta_Click() {
  // What could not be written stays in its box: it would be missing from the file.
  if (!verbi().bSalvato()) return;
  MostraDaMain(platform::forms()[QStringLiteral("frmExport")]);
}

void runReport(const QString& sReport, const QString& sArchivio, bool bAnteprima) {
  frmReport& form = FormReport();
  form.ImpostaArchivio(sArchivio);
  form.ImpostaReport(sReport);
  if (bAnteprima) {
    form.Anteprima();
  } else {
    form.Stampa();
  }
  form.Unload();
}

// clang-format off
constexpr Comando kComandi[] = {
    {"mnuFile", 40, "mnuFileEsporta", "Es&portazioni", "", 3, mnuFileEsporta_Click, Quando::kRaccolta},
    {"mnuImportazioni", 10, "mnuImportaRubKPZ3", "Importa rubrica Velmar Casaro 3/3.5", "", 14, mnuImportaRubKPZ3_Click, Quando::kRaccolta},
    {"mnuFile", 70, "mnuFileStampe", "&Stampe", "", 16, mnuFileStampe_Click, Quando::kRaccolta, {6, 13, "stampa", "Stampa"}},
};
// clang-format on

}  // namespace

void RegistraFormOutput() {
  RegistraFormReport();
  RegistraFormExport();
  RegistraComandi(kComandi);
  verbi().EseguiReport = runReport;
  verbi().ChiudiStampe = ChiudiMotoreReport;
}

}  // namespace tavolix
