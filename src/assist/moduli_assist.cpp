#include "assist/moduli_assist.h"

#include <QApplication>

#include "assist/frmabout.h"
#include "assist/frmbasic.h"
#include "assist/frmguida.h"
#include "assist/frmsin.h"
#include "assist/frmsysinfo.h"
#include "core/comandi.h"
#include "core/dialogo.h"
#include "core/modutil.h"
#include "core/verbi.h"

namespace tavolix {
namespace {

using platform::forms;

void showTips(const QString& sGruppo) {
  forms()
      .as<frmSin>(QStringLiteral("frmSin"))
      .Carica(sPathCompleto(QStringLiteral("SIN.SIN")), sGruppo, &FormMain());
  // Where they were asked for over a dialog, that one is in front again.
  if (QApplication::activeModalWidget() == nullptr) FormMain().Show();
}

void mnuSuggerimenti_Click() {
  showTips(QStringLiteral("MAIN"));
}

void mnuInfo_Click() {
  MostraDaMain(forms()[QStringLiteral("frmSysInfo")]);
}

void mnuMyInfo_Click() {
  forms()[QStringLiteral("frmAbout")].ShowOver(&FormMain());
}

// clang-format off
constexpr Comando kComandi[] = {
    {"mnuAiuto", 20, "mnuSuggerimenti", "Suggerimenti", "", 0, mnuSuggerimenti_Click, {}, {2, 41, "suggerimenti", "Suggerimenti..."}},
    {"mnuAiuto", 30, "mnuInfo", "Informazioni sul sistema", "", 0, mnuInfo_Click},
    {"mnuAiuto", 50, "mnuMyInfo", "Informazioni sul programma...", "", 0, mnuMyInfo_Click},
};
// clang-format on

void offerVerbs() {
  const auto basic = []() -> frmBasic& { return forms().as<frmBasic>(QStringLiteral("frmBasic")); };
  verbi().Lampeggia = [basic](QWidget* controllo, int colore, int millisecondi) {
    basic().StartFlash(controllo, colore, millisecondi);
  };
  verbi().FermaLampeggio = [basic] { basic().StopFlash(); };
  verbi().MostraSuggerimenti = showTips;
}

}  // namespace

void RegistraFormAssist() {
  forms().add<frmBasic>(QStringLiteral("frmBasic"));
  RegistraFormGuida();
  RegistraFormSin();
  RegistraFormAbout();
  RegistraFormSysInfo();
  RegistraComandi(kComandi);
  offerVerbs();
}

}  // namespace tavolix
