#include "archives/comandi_archivi.h"

#include "archives/codice_accesso.h"
#include "archives/frmcopiesicurezza.h"
#include "archives/frmmanarc.h"
#include "archives/frmrecupero.h"
#include "archives/modmanarc.h"
#include "core/comandi.h"
#include "core/dialogo.h"
#include "core/errore.h"
#include "core/modini.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "core/verbi.h"

namespace tavolix {
namespace {

void archiveSettings() {
  ImpostaFileIni(sCartellaProgramma() + QStringLiteral("\\tvx.ini"));
  ImpostaSezioneIni(QStringLiteral("ManArc"));
}

// Nothing can be done in the main window without an archive.
void goOnOrEnd(bool opened) {
  if (opened) {
    verbi().RicaricaRaccolta();
  } else {
    TerminaProgramma(1);
  }
}

void mnuGestArc_Click() {
  // What could not be written stays in its row.
  if (!verbi().bSalvato()) return;
  const QString former = sPathArc;
  ChiudiWorkspace();
  goOnOrEnd(bApriDB(1, {}, false, true) || bApriDB(2, former, false, false));
}

void mnuFileCopie_Click() {
  if (!verbi().bSalvato()) return;
  const QString former = sPathArc;
  ChiudiWorkspace();
  protetto("frmMain!FileCopie", [&] {
    archiveSettings();
    FrmCopieSicurezza().SetPath(former);
    MostraDaMain(FrmCopieSicurezza());
    Cedi();
  });
  goOnOrEnd(bApriDB(2, former, false, false));
}

void mnuCodiceAccesso_Click() {
  bModificaCodiceAccesso(rsCfg, sPathArc);
}

void mnuConfigurazione_Click() {
  MostraDaMain(platform::forms()[QStringLiteral("frmConfig")]);
}

// clang-format off
constexpr Comando kComandi[] = {
    {"mnuFile", 10, "mnuGestArc", "&Apertura / gestione archivi", "", 13, mnuGestArc_Click, {}, {5, 11, "archivi", "Apertura / gestione archivi"}},
    {"mnuFile", 30, "mnuFileCopie", "&Copie di sicurezza", "", 2, mnuFileCopie_Click, {}, {7, 12, "copia", "Esegui copia di sicurezza"}},
    {"mnuFile", 60, "mnuCodiceAccesso", "C&odice di accesso", "", 15, mnuCodiceAccesso_Click},
    {"mnuFile", 90, "mnuConfigurazione", "Con&figurazione", "", 1, mnuConfigurazione_Click},
};
// clang-format on

}  // namespace

void RegistraComandiArchivi() {
  RegistraComandi(kComandi);
  verbi().ArchivioInservibile = [](const store::Failure& failure, const char* sProc,
                                   const QString& sPath) {
    archiveSettings();
    ArchivioInservibile(failure, sProc, sPath);
  };
}

}  // namespace tavolix
