#include <gtest/gtest.h>

#include "core/modcuore.h"
#include "core/modmain.h"
#include "platform/data_combo.h"
#include "platform/message_box.h"
#include "program_folder.h"

namespace tavolix {
namespace {

using store::RecordsetType;

// The sample archive, open as the program has it.
class Cuore : public ::testing::Test {
 protected:
  Cuore() {
    platform::MessageBoxSeam::setNoWindow(true);
    DimenticaListe();
    dbArc = store::OpenDatabase(folder_.path("esempio.tvx"));
    rsTab = dbArc->OpenRecordset("TAB", RecordsetType::Table);
    rsTab->SetIndex("1u");
    rsCont = dbArc->OpenRecordset("CONT", RecordsetType::Dynaset);
  }
  ~Cuore() override {
    ChiudiDB(dbArc);
    dbArc.reset();
    rsTab.reset();
    rsCont.reset();
    platform::MessageBoxSeam::reset();
  }

  ProgramFolder folder_;
};

TEST_F(Cuore, CountsKeysInTheArchive) {
  folder_.outside("UPDATE CONT SET ID = 2147483646");
  EXPECT_EQ(lNewCont(), 2147483647);
  // At its end it is told and goes no further.
  platform::MessageBoxSeam::setNextAnswer(platform::kOk);
  EXPECT_EQ(lNewCont(), 0);
  EXPECT_TRUE(platform::MessageBoxSeam::shown().last().text.endsWith("Procedura: cuore!lNewCont"));
  EXPECT_EQ(folder_.found("SELECT ID FROM CONT"), QString("2147483647"));
}

TEST_F(Cuore, AddsAValueToItsListOnce) {
  const platform::LookupListPtr offered = ListaValori(-1, "LINGUA");
  offered->ensureLoaded();
  const int before = offered->rowCount();
  const std::tuple<QString, int, QString, int> cases[] = {
      {"LINGUA", -1, "Volapuk", 1},
      {"LINGUA", -1, "volapuk", 0},
      {"LINGUA", 3, "Volapuk", 1},
      {"GENERE", 0, "L'altro genere", 1},
  };
  const QString newest = "SELECT max(ID) FROM TAB";
  for (const auto& [code, collection, text, added] : cases) {
    const qlonglong expected = folder_.found(newest).toLongLong() + added;
    const QString id = QString::number(lNuovaVoceTab(code, collection, text));
    EXPECT_EQ(folder_.found(newest).toLongLong(), expected) << qPrintable(text);
    EXPECT_EQ(folder_.found("SELECT TipoTab, TipoRac, lower(\"Desc\") FROM TAB WHERE ID = " + id),
              QStringLiteral("%1|%2|%3").arg(code).arg(collection).arg(text.toLower()));
  }
  offered->ensureLoaded();
  EXPECT_EQ(offered->rowCount(), before + 1);
}

TEST_F(Cuore, ReadsAListOnlyWhenItIsShown) {
  const platform::LookupListPtr list = ListaValori(-1, "LINGUA");
  const QString key = "SELECT ID FROM TAB WHERE TipoTab = 'LINGUA' AND \"Default\" <> 0";
  rsTab->SetIndex("2");
  EXPECT_EQ(list->text(folder_.found(key).toLongLong()), QString("Italiano"));
  EXPECT_FALSE(list->isLoaded());
  EXPECT_EQ(rsTab->Index(), QString("2"));
  platform::DataCombo combo;
  combo.SetList(list);
  for (const auto& [wanted, set] : {std::pair(folder_.found(key), folder_.found(key)),
                                    std::pair(QString("99999"), QString("0"))}) {
    ImpostaValoreCombo(combo, 1, wanted);
    EXPECT_EQ(combo.Value().toString(), set);
  }
  // A list without values, whatever stands behind it in the index.
  const platform::LookupListPtr none = ListaValori(5, "LINGUA");
  none->ensureLoaded();
  EXPECT_EQ(none->rowCount(), 1);
}

TEST_F(Cuore, KnowsWhetherARecordIsCurrent) {
  EXPECT_FALSE(bRecordValido(nullptr));
  const store::RecordsetPtr rs = dbArc->OpenRecordset("Q_LIB", RecordsetType::Dynaset);
  const std::pair<std::function<void()>, bool> steps[] = {
      {[&] { rs->MoveLast(); }, true},  {[&] { rs->FindFirst("Anno = 12345"); }, false},
      {[&] { rs->MoveFirst(); }, true}, {[&] { rs->MovePrevious(); }, false},
      {[&] { rs->Close(); }, false},
  };
  for (const auto& [step, valid] : steps) {
    step();
    EXPECT_EQ(bRecordValido(rs), valid);
  }
}

TEST_F(Cuore, ReplacesStoredQueries) {
  for (const char* name : {"Q_REP_0", "Q_NUOVA"}) {
    EXPECT_TRUE(RicreaQueryDef(name, "SELECT MAIN.Cod FROM MAIN", dbArc));
    EXPECT_EQ(dbArc->OpenRecordset(name, RecordsetType::Snapshot)->Fields().size(), 1);
  }
}

}  // namespace
}  // namespace tavolix
