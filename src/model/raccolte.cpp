#include "model/raccolte.h"

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

Raccolte::Raccolte() {
  const auto text = [](const char* value) { return QString::fromUtf8(value); };
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const Definition& d = kDefinitions[i];
    rows_[i] = {text(d.sQuery),
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
                nullptr,
                text(d.form)};
  }
}

QString sTestoElenco(const tRaccolta& raccolta) {
  return QStringLiteral("SELECT * FROM ") + raccolta.sQuery + u' ' + raccolta.sFiltro + u' ' +
         raccolta.sOrdine;
}

}  // namespace tavolix
