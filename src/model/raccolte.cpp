#include "model/raccolte.h"

#include <span>

#include "model/campi.h"
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
  std::span<const char* const> pages;
};

constexpr const char* kPagine[] = {"Dati principali", "Altri dati", "Informazioni accessorie"};
constexpr const char* kPaginePersone[] = {"Dati principali", "Comunicazioni", "Altri dati"};

// clang-format off
constexpr Definition kDefinitions[kRaccolte] = {
    {"Libri",        "Q_LIB",    "MAIN",   "RacID", "LIB", "ID", "",      "",       -1, "frmRacLib", kPagine},
    {"Riviste",      "Q_RIV",    "MAIN",   "RacID", "RIV", "ID", "",      "",        8, "frmRacRiv", kPagine},
    {"Audio",        "Q_AUD",    "MAIN",   "RacID", "AUD", "ID", "",      "",        9, "frmRacAud", kPagine},
    {"Video",        "Q_VID",    "MAIN",   "RacID", "VID", "ID", "",      "",       -1, "frmRacVid", kPagine},
    {"Software",     "Q_COM",    "MAIN",   "RacID", "COM", "ID", "",      "",       -1, "frmRacCom", kPagine},
    {"Medicinali",   "Q_MED",    "MAIN",   "RacID", "MED", "ID", "",      "",       -1, "frmRacMed", kPagine},
    {"Oggetti Vari", "Q_OGG",    "MAIN",   "RacID", "OGG", "ID", "",      "",       -1, "frmRacOgg", kPagine},
    {"Persone",      "Q_PER",    "MAIN",   "RacID", "PER", "ID", "",      "",       10, "frmRacPer", kPaginePersone},
    {"Articoli",     "Q_RIVSUB", "RIVSUB", "",      "",    "",   "RivID", "RIV.ID", -1, "frmSub", {}},
    {"Brani",        "Q_AUDSUB", "AUDSUB", "",      "",    "",   "AudID", "AUD.ID", -1, "frmSub", {}},
    {"Contatti",     "Q_PERSUB", "PERSUB", "",      "",    "",   "PerID", "PER.ID", -1, "frmSub", {}},
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
                text(d.form),
                {}};
    for (const char* page : d.pages) rows_[i].sPagine.append(text(page));
  }
}

QString sQueryElenco(int iRac) {
  const tRaccolta& raccolta = aRaccolte(iRac);
  const bool bSotto = raccolta.sTabDettaglio.isEmpty();
  const QString& sTabella = bSotto ? raccolta.sTabPrincipale : raccolta.sTabDettaglio;
  QString sColonne = raccolta.sTabPrincipale + QStringLiteral(".*");
  QString sTabelle = raccolta.sTabPrincipale;
  if (!bSotto) {
    sColonne += QStringLiteral(",\n  %1.*").arg(sTabella);
    sTabelle += QStringLiteral(" INNER JOIN %1 ON %2.%3 = %1.%4")
                    .arg(sTabella, sTabelle, raccolta.sCampoLegame, raccolta.sCampoID);
  }
  for (int j = 0; j < iNumeroCampi(iRac); ++j) {
    if (aCampi(iRac, j).sTipo != QLatin1String(CBO)) continue;
    const QString sVoce = sVoceElenco(aCampi(iRac, j));
    sColonne += QStringLiteral(",\n  T_%1.[Desc] AS %1").arg(sVoce);
    sTabelle = QStringLiteral("(%1)\n  LEFT JOIN TAB AS T_%2 ON %3 = T_%2.ID")
                   .arg(sTabelle, sVoce, sCampoQualificato(iRac, j));
  }
  const QString sScelta =
      bSotto ? QString()
             : QStringLiteral("WHERE %1.TipoRac = %2\n").arg(raccolta.sTabPrincipale).arg(iRac);
  return QStringLiteral("SELECT %1\nFROM %2\n%3ORDER BY %4.ID;")
      .arg(sColonne, sTabelle, sScelta, sTabella);
}

QString sTestoElenco(const tRaccolta& raccolta) {
  return QStringLiteral("SELECT * FROM ") + raccolta.sQuery + u' ' + raccolta.sFiltro + u' ' +
         raccolta.sOrdine;
}

}  // namespace tavolix
