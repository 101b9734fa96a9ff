#include <gtest/gtest.h>

#include <QApplication>

#include "core/modcuore.h"
#include "core/modmain.h"
#include "core/raccolte.h"
#include "platform/data_control.h"
#include "platform/data_grid.h"
#include "platform/message_box.h"
#include "program_folder.h"

namespace tavolix {
namespace {

using store::RecordsetType;

// The sample archive, open as the program has it.
class Cuore : public ::testing::Test {
 protected:
  Cuore() {
    CaricaRegistroRaccolte();
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
  folder_.outside("UPDATE CONT SET ID = 41");
  EXPECT_EQ(lNewCont(), 42);
  EXPECT_EQ(folder_.found("SELECT ID FROM CONT"), QString("42"));
  EXPECT_EQ(lNewCont(), 43);
  // At its end it is told and goes no further; so is a counter that is closed.
  for (const bool closed : {false, true}) {
    rsCont->Edit();
    rsCont->SetValue("ID", closed ? 43 : 2147483647);
    rsCont->Update();
    if (closed) rsCont->Close();
    platform::MessageBoxSeam::setNextAnswer(platform::kOk);
    EXPECT_EQ(lNewCont(), 0);
    EXPECT_TRUE(
        platform::MessageBoxSeam::shown().last().text.endsWith("Procedura: cuore!lNewCont"));
    EXPECT_EQ(folder_.found("SELECT ID FROM CONT"), QString(closed ? "43" : "2147483647"));
  }
}

TEST_F(Cuore, AddsAValueToItsListOnce) {
  const QString last = folder_.found("SELECT max(ID) FROM TAB");
  const struct {
    QString code;
    int collection;
    QString text;
    bool isNew;
  } cases[] = {
      {"LINGUA", -1, "Italiano", false},     {"LINGUA", -1, "Volapuk", true},
      {"LINGUA", -1, "volapuk", false},      {"LINGUA", 3, "Volapuk", true},
      {"GENERE", 0, "L'altro genere", true},
  };
  qlonglong newest = last.toLongLong();
  for (const auto& c : cases) {
    const int id = lNuovaVoceTab(c.code, c.collection, c.text);
    if (c.isNew) ++newest;
    EXPECT_EQ(id == newest, c.isNew || c.text == "volapuk") << qPrintable(c.text);
    EXPECT_LE(id, newest);
    const QString row = folder_.found(
        QStringLiteral("SELECT TipoTab, TipoRac, lower(\"Desc\") FROM TAB WHERE ID = %1").arg(id));
    EXPECT_EQ(row, QStringLiteral("%1|%2|%3").arg(c.code).arg(c.collection).arg(c.text.toLower()));
  }
  EXPECT_EQ(folder_.found("SELECT max(ID) FROM TAB").toLongLong(), newest);
}

TEST_F(Cuore, OffersTheValuesOfOneList) {
  const platform::LookupListPtr list = ListaValori(-1, "LINGUA");
  EXPECT_EQ(ListaValori(-1, "LINGUA"), list);
  const qint64 key =
      folder_.found("SELECT ID FROM TAB WHERE TipoTab = 'LINGUA' AND \"Default\" <> 0")
          .toLongLong();
  EXPECT_EQ(list->text(key), QString("Italiano"));
  EXPECT_FALSE(list->isLoaded());
  list->ensureLoaded();
  const QString count = folder_.found("SELECT count(*) FROM TAB WHERE TipoTab = 'LINGUA'");
  EXPECT_EQ(list->rowCount(), count.toInt() + 1);
  EXPECT_EQ(list->textAt(0), QString(""));
  EXPECT_LE(list->textAt(1), list->textAt(2));
  EXPECT_EQ(list->text(key), QString("Italiano"));
  // A list without values, whatever stands behind it in the index.
  const platform::LookupListPtr none = ListaValori(5, "LINGUA");
  none->ensureLoaded();
  EXPECT_EQ(none->rowCount(), 1);
  lNuovaVoceTab("LINGUA", -1, "Volapuk");
  EXPECT_GT(list->rowOfText("Volapuk"), 0);
}

TEST_F(Cuore, ShowsTheColumnsOfTheArchive) {
  platform::DataControl source;
  platform::DataGrid grid;
  grid.SetDataSource(&source);
  const struct {
    QString query;
    int columns;
    int column;
    QString caption;
    QString field;
    int width;
    bool editable;
    QString keyField;
  } cases[] = {
      {"Q_LIB", 12, 0, "Titolo", "Titolo", 3600, true, ""},
      {"Q_LIB", 12, 3, "Anno", "Anno", 795, true, ""},
      {"q_lib", 12, 1, "Autore", "Autore", 2400, true, "TABAutoreID"},
      {"Q_PER", 12, 7, "Tipo tel.", "TipoTel1", 1305, true, "TABTel1ID"},
      {"Q_AUDSUB", 8, 5, "Autore testo", "AutoreTesto", 1995, true, "TABAutoreTestoID"},
      {"Q_PERSUB", 5, 4, "Note", "Note", 4200, false, ""},
      {"Q_RIVSUB", 7, 2, "Argomento", "Argomento", 1605, true, "TABArgomentoID"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(qPrintable(c.query + ' ' + c.caption));
    source.SetRecordset(dbArc->OpenRecordset(c.query, RecordsetType::Dynaset));
    CaricaGrigliaConfig(c.query, grid);
    ASSERT_EQ(grid.ColumnCount(), c.columns);
    const platform::GridColumn column = grid.Column(c.column);
    EXPECT_EQ(column.caption, c.caption);
    EXPECT_EQ(column.dataField, c.field);
    EXPECT_NEAR(column.width, c.width, 15);
    EXPECT_EQ(column.setup.editable, c.editable);
    EXPECT_EQ(column.setup.list != nullptr, !c.keyField.isEmpty());
    EXPECT_EQ(column.setup.keyField.section('.', -1).toUpper(), c.keyField.toUpper());
  }
  source.SetRecordset(nullptr);
}

TEST_F(Cuore, ShowsColumnsThatTheListDoesNotHaveEmpty) {
  folder_.outside(
      "DELETE FROM GRDCONFIG WHERE NomeQuery = 'Q_LIB' AND Colonna > 2;"
      "UPDATE GRDCONFIG SET NomeCampo = 'Prezzo', Larghezza = NULL"
      " WHERE NomeQuery = 'Q_LIB' AND Colonna = 1");
  platform::DataControl source;
  platform::DataGrid grid;
  grid.SetDataSource(&source);
  source.SetRecordset(dbArc->OpenRecordset("Q_LIB", RecordsetType::Dynaset));
  CaricaGrigliaConfig("Q_LIB", grid);
  ASSERT_EQ(grid.ColumnCount(), 3);
  EXPECT_FALSE(grid.Column(1).setup.editable);
  EXPECT_GT(grid.Column(1).width, 0);
  EXPECT_EQ(grid.model()->index(0, 1).data().toString(), QString(""));
  EXPECT_NE(grid.model()->index(0, 0).data().toString(), QString(""));
  CaricaGrigliaConfig("Q_NIENTE", grid);
  EXPECT_EQ(grid.ColumnCount(), 0);
  source.SetRecordset(nullptr);
}

TEST_F(Cuore, JudgesRecordsetsAndReplacesQueries) {
  EXPECT_FALSE(bRecordValido(nullptr));
  const store::RecordsetPtr rs = dbArc->OpenRecordset("Q_LIB", RecordsetType::Dynaset);
  EXPECT_TRUE(bRecordValido(rs));
  rs->FindFirst("Anno = 12345");
  EXPECT_FALSE(bRecordValido(rs));
  rs->MoveLast();
  EXPECT_TRUE(bRecordValido(rs));
  rs->MoveNext();
  EXPECT_FALSE(bRecordValido(rs));
  rs->Close();
  EXPECT_FALSE(bRecordValido(rs));
  EXPECT_FALSE(bRecordValido(
      dbArc->OpenRecordset("SELECT * FROM Q_LIB WHERE Anno = 12345", RecordsetType::Dynaset)));
  EXPECT_TRUE(RicreaQueryDef("Q_REP_0", "SELECT MAIN.Cod FROM MAIN", dbArc));
  EXPECT_TRUE(RicreaQueryDef("Q_NUOVA", "SELECT MAIN.Titolo FROM MAIN", dbArc));
  EXPECT_EQ(dbArc->QueryDefSql("Q_REP_0"), QString("SELECT MAIN.Cod FROM MAIN"));
  EXPECT_EQ(dbArc->OpenRecordset("Q_NUOVA", RecordsetType::Snapshot)->Fields().size(), 1);
  EXPECT_FALSE(RicreaQueryDef("Q_NUOVA", "SELECT FROM", dbArc));
}

}  // namespace
}  // namespace tavolix
