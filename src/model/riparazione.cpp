#include "model/riparazione.h"

#include "model/campi.h"
#include "model/raccolte.h"

namespace tavolix {
namespace {

void addCollection(store::RepairPlan& plan, int iRac) {
  const tRaccolta& raccolta = aRaccolte(iRac);
  plan.details.append({{raccolta.sTabDettaglio, raccolta.sCampoID}, iRac});
  plan.keys.append(
      {raccolta.sTabPrincipale, raccolta.sCampoLegame, QStringLiteral("TipoRac"), iRac});
  plan.keys.append({raccolta.sTabDettaglio, raccolta.sCampoID, {}, {}});
  if (raccolta.iSottoRaccolta < 0) return;
  // A new record must not find rows of a lost one.
  const tRaccolta& sub = aRaccolte(raccolta.iSottoRaccolta);
  plan.children.append({{sub.sTabPrincipale, sub.sCampoPadre}, iRac});
  plan.keys.append({sub.sTabPrincipale, sub.sCampoPadre, {}, {}});
}

void addLookups(store::RepairPlan& plan, int iRac) {
  for (int j = 0; j < iNumeroCampi(iRac); ++j) {
    const tCampo& campo = aCampi(iRac, j);
    if (campo.sTipo != QLatin1String(CBO)) continue;
    const QString name = sCampoQualificato(iRac, j);
    plan.lookups.append(
        {{name.section(u'.', 0, 0), name.section(u'.', 1)}, campo.sCodTab, campo.iRacTab});
  }
}

}  // namespace

store::RepairPlan PianoRiparazione(const QString& sModello) {
  const tRaccolta& first = aRaccolte(0);
  store::RepairPlan plan;
  plan.model = sModello;
  plan.mainTable = first.sTabPrincipale;
  plan.mainKey = first.sCampoLegame;
  plan.mainCollection = QStringLiteral("TipoRac");
  plan.mainTitle = QStringLiteral("Titolo");
  plan.lookupTable = QStringLiteral("TAB");
  plan.lookupKey = QStringLiteral("ID");
  plan.lookupList = QStringLiteral("TipoTab");
  plan.lookupCollection = QStringLiteral("TipoRac");
  plan.lookupText = QStringLiteral("Desc");
  plan.counter = {QStringLiteral("CONT"), QStringLiteral("ID")};
  plan.settings = {QStringLiteral("CFG"), QStringLiteral("GRDCONFIG")};
  plan.guard = {QStringLiteral("CFG"), QStringLiteral("dsc")};
  plan.guardName = QStringLiteral("PWD");
  for (int i = 0; i < kRaccoltePrincipali; ++i) addCollection(plan, i);
  for (int i = 0; i < kRaccolte; ++i) addLookups(plan, i);
  return plan;
}

}  // namespace tavolix
