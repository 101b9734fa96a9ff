#include "core/raccolte.h"

#include "platform/form.h"
#include "platform/tab_strip.h"
#include "store/failure.h"

namespace tavolix {
namespace {

struct Definition {
  const char* sNome;
  const char* sQuery;
  const char* sTabPrincipale;
  const char* sCampoLegame;
  const char* sTabDettaglio;
  const char* sCampoID;
  const char* sCampoPadre;
  const char* sRifPadre;
  int iSottoRaccolta;
  const char* form;
};

// clang-format off
constexpr Definition kDefinitions[kRaccolte] = {
    {"Libri",        "Q_LIB",    "MAIN",   "RacID", "LIB", "ID", "",      "",       -1, "frmRacLib"},
    {"Riviste",      "Q_RIV",    "MAIN",   "RacID", "RIV", "ID", "",      "",        8, "frmRacRiv"},
    {"Audio",        "Q_AUD",    "MAIN",   "RacID", "AUD", "ID", "",      "",        9, "frmRacAud"},
    {"Video",        "Q_VID",    "MAIN",   "RacID", "VID", "ID", "",      "",       -1, "frmRacVid"},
    {"Software",     "Q_COM",    "MAIN",   "RacID", "COM", "ID", "",      "",       -1, "frmRacCom"},
    {"Medicinali",   "Q_MED",    "MAIN",   "RacID", "MED", "ID", "",      "",       -1, "frmRacMed"},
    {"Oggetti Vari", "Q_OGG",    "MAIN",   "RacID", "OGG", "ID", "",      "",       -1, "frmRacOgg"},
    {"Persone",      "Q_PER",    "MAIN",   "RacID", "PER", "ID", "",      "",       10, "frmRacPer"},
    {"Articoli",     "Q_RIVSUB", "RIVSUB", "",      "",    "",   "RivID", "RIV.ID", -1, "frmSub"},
    {"Brani",        "Q_AUDSUB", "AUDSUB", "",      "",    "",   "AudID", "AUD.ID", -1, "frmSub"},
    {"Contatti",     "Q_PERSUB", "PERSUB", "",      "",    "",   "PerID", "PER.ID", -1, "frmSub"},
};
// clang-format on

}  // namespace

Raccolte aRaccolte;
int iRacCorr = -1;

tRaccolta& Raccolte::operator()(int index) {
  if (index < 0 || index >= kRaccolte) {
    throw store::Failure(store::failure::kSubscript,
                         QStringLiteral("Indice di raccolta fuori dai limiti: %1").arg(index));
  }
  return rows_[static_cast<std::size_t>(index)];
}

void CaricaRegistroRaccolte() {
  for (int i = 0; i < kRaccolte; ++i) {
    const Definition& d = kDefinitions[i];
    const auto text = [](const char* value) { return QString::fromUtf8(value); };
    aRaccolte(i) = {text(d.sQuery),
                    {},
                    {},
                    text(d.sNome),
                    text(d.sCampoPadre),
                    text(d.sRifPadre),
                    text(d.sTabPrincipale),
                    text(d.sCampoLegame),
                    text(d.sTabDettaglio),
                    text(d.sCampoID),
                    d.iSottoRaccolta,
                    nullptr};
    // A form that this program does not have yet leaves its row without one.
    const QString form = text(d.form);
    if (platform::forms().has(form)) aRaccolte(i).oForm = &platform::forms()[form];
  }
}

int iSelRaccolta(int valore) {
  auto* tabSelez = platform::forms()[QStringLiteral("frmGrid")].control<platform::TabStrip>(
      QStringLiteral("tabSelez"));
  if (valore < 0) return tabSelez->SelectedTag().toInt();
  for (int tab = 1; tab <= tabSelez->Count(); ++tab) {
    if (tabSelez->Tag(tab) == QString::number(valore)) tabSelez->Select(tab);
  }
  return valore;
}

QString sTestoElenco(const tRaccolta& raccolta) {
  return QStringLiteral("SELECT * FROM ") + raccolta.sQuery + u' ' + raccolta.sFiltro + u' ' +
         raccolta.sOrdine;
}

}  // namespace tavolix
