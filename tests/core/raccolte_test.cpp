#include "core/raccolte.h"

#include <gtest/gtest.h>

#include <QSet>

#include "core/campi.h"
#include "core/errore.h"
#include "program_folder.h"
#include "store/database.h"

namespace tavolix {
namespace {

constexpr int kCounts[] = {28, 23, 25, 30, 30, 21, 23, 31, 7, 8, 5};

int failureOf(const std::function<void()>& work) {
  try {
    work();
    return 0;
  } catch (const store::Failure& failure) {
    return failure.number();
  }
}

class Registro : public ::testing::Test {
 protected:
  Registro() { CaricaRegistroRaccolte(); }

  template <typename Work>
  static void forEachField(Work work) {
    for (int i = 0; i < kRaccolte; ++i) {
      for (int j = 0; j < iNumeroCampi(i); ++j) {
        SCOPED_TRACE(qPrintable(aRaccolte(i).sNome + ' ' + aCampi(i, j).sTitolo));
        work(i, j, aCampi(i, j));
      }
    }
  }
};

TEST_F(Registro, NamesElevenCollections) {
  QStringList rows;
  for (int i = 0; i < kRaccolte; ++i) {
    const tRaccolta& r = aRaccolte(i);
    rows << QStringList{r.sNome,        r.sQuery,        r.sTabPrincipale,
                        r.sCampoLegame, r.sTabDettaglio, r.sCampoID,
                        r.sCampoPadre,  r.sRifPadre,     QString::number(r.iSottoRaccolta)}
                .join(' ');
  }
  EXPECT_EQ(rows.join('\n'), QString("Libri Q_LIB MAIN RacID LIB ID   -1\n"
                                     "Riviste Q_RIV MAIN RacID RIV ID   8\n"
                                     "Audio Q_AUD MAIN RacID AUD ID   9\n"
                                     "Video Q_VID MAIN RacID VID ID   -1\n"
                                     "Software Q_COM MAIN RacID COM ID   -1\n"
                                     "Medicinali Q_MED MAIN RacID MED ID   -1\n"
                                     "Oggetti Vari Q_OGG MAIN RacID OGG ID   -1\n"
                                     "Persone Q_PER MAIN RacID PER ID   10\n"
                                     "Articoli Q_RIVSUB RIVSUB    RivID RIV.ID -1\n"
                                     "Brani Q_AUDSUB AUDSUB    AudID AUD.ID -1\n"
                                     "Contatti Q_PERSUB PERSUB    PerID PER.ID -1"));
}

TEST_F(Registro, RefusesPlacesOutside) {
  for (const int i : {-1, 11}) {
    EXPECT_EQ(failureOf([i] { aRaccolte(i); }), 9) << i;
    EXPECT_EQ(failureOf([i] { aCampi(i, 0); }), 9) << i;
    EXPECT_EQ(failureOf([i] { iNumeroCampi(i); }), 9) << i;
  }
  for (const int j : {-1, 46}) EXPECT_EQ(failureOf([j] { aCampi(0, j); }), 9) << j;
  EXPECT_EQ(failureOf([] { aCampi(10, 45); }), 0);
}

TEST_F(Registro, TellsAListWithItsFilterAndOrder) {
  tRaccolta raccolta = aRaccolte(2);
  EXPECT_EQ(sTestoElenco(raccolta), QString("SELECT * FROM Q_AUD  "));
  raccolta.sFiltro = " WHERE Anno > 1970";
  EXPECT_EQ(sTestoElenco(raccolta), QString("SELECT * FROM Q_AUD  WHERE Anno > 1970 "));
  raccolta.sOrdine = " ORDER BY Titolo";
  EXPECT_EQ(sTestoElenco(raccolta),
            QString("SELECT * FROM Q_AUD  WHERE Anno > 1970  ORDER BY Titolo"));
}

TEST_F(Registro, ForgetsFilterAndOrderWhenFilledAgain) {
  aRaccolte(3).sFiltro = " WHERE Anno > 1970";
  aRaccolte(3).sOrdine = " ORDER BY Anno";
  CaricaRegistroRaccolte();
  EXPECT_EQ(sTestoElenco(aRaccolte(3)), QString("SELECT * FROM Q_VID  "));
}

TEST_F(Registro, HasDenseFieldsOfKnownTypes) {
  const QSet<QString> types = {TXTSTR, TXTNUM, TXTDTA, TXTTIM, CBO, CHK};
  for (int i = 0; i < kRaccolte; ++i) {
    EXPECT_EQ(iNumeroCampi(i), kCounts[i]) << i;
    for (int j = 0; j < kCampi; ++j) {
      const tCampo& campo = aCampi(i, j);
      const bool used = j < kCounts[i];
      EXPECT_EQ(types.contains(campo.sTipo), used) << i << ' ' << j;
      EXPECT_EQ(campo.sTitolo.isEmpty(), !used) << i << ' ' << j;
      EXPECT_EQ(campo.sControllo.isEmpty(), !used) << i << ' ' << j;
    }
  }
}

TEST_F(Registro, HasAListForCombosOnly) {
  forEachField([](int i, int, const tCampo& campo) {
    const bool list = campo.sTipo == CBO;
    EXPECT_EQ(campo.sCodTab.isEmpty(), !list);
    if (list) {
      // A list belongs to all collections (-1), to this one, or to the one whose tracks these are.
      const int own = i == 9 ? 2 : i;
      EXPECT_TRUE(campo.iRacTab == -1 || campo.iRacTab == own) << campo.iRacTab;
    } else {
      EXPECT_EQ(campo.iRacTab, 0);
    }
  });
}

TEST_F(Registro, ShowsEachFieldOnAPageOfItsOwnOnceInAForm) {
  QSet<QString> names;
  forEachField([&](int i, int, const tCampo& campo) {
    const QString form = i < kRaccoltePrincipali ? QString::number(i) : "frmSub";
    const QString name = form + '.' + campo.sControllo.toUpper();
    EXPECT_FALSE(names.contains(name));
    names.insert(name);
    EXPECT_EQ(campo.iPagina == -1, i >= kRaccoltePrincipali);
    EXPECT_LE(campo.iPagina, 2);
    EXPECT_TRUE(campo.sControllo.startsWith(campo.sTipo.left(3).toLower()));
  });
}

TEST_F(Registro, HasFieldsThatAreColumnsOfTableAndList) {
  const ProgramFolder folder;
  const store::DatabasePtr db = store::OpenDatabase(folder.path("modello.tvx"));
  using Kind = store::FieldKind;
  const QHash<QString, Kind> kinds = {{TXTSTR, Kind::Text}, {TXTNUM, Kind::Number},
                                      {TXTDTA, Kind::Date}, {TXTTIM, Kind::Time},
                                      {CBO, Kind::Long},    {CHK, Kind::YesNo}};
  store::RecordsetPtr table;
  store::RecordsetPtr list;
  forEachField([&](int i, int, const tCampo& campo) {
    const tRaccolta& raccolta = aRaccolte(i);
    const QString name = campo.bPrincipale ? raccolta.sTabPrincipale : raccolta.sTabDettaglio;
    table = db->OpenRecordset(name, store::RecordsetType::Table);
    list = db->OpenRecordset(raccolta.sQuery, store::RecordsetType::Dynaset);
    const int column = table->FindField(campo.sCampoDB);
    ASSERT_GE(column, 0);
    EXPECT_EQ(table->Fields()[column].kind, kinds[campo.sTipo]);
    const int field = list->FindField(campo.sCampoDB);
    ASSERT_GE(field, 0);
    EXPECT_EQ(field,
              list->FindField(sCampoQualificato(i, static_cast<int>(&campo - &aCampi(i, 0)))));
    EXPECT_EQ(list->Fields()[field].table.toUpper(), name);
    EXPECT_TRUE(list->Fields()[field].updatable);
  });
  db->Close();
}

}  // namespace
}  // namespace tavolix
