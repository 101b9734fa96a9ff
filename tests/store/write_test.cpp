#include <gtest/gtest.h>

#include <QSignalSpy>

#include "store/archive.h"

namespace store {
namespace {

QString row(const Archive& archive, const QByteArray& columns, int id) {
  return archive.outsideValues(
      "SELECT " + columns +
      " FROM MAIN LEFT JOIN LIB ON RacID = LIB.ID WHERE MAIN.ID = " + QByteArray::number(id));
}

TEST(Write, RowsOfTwoTables) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("Q_LIB");
  rows->AddNew();
  EXPECT_FALSE(rows->Value("Titolo").isValid());
  setAll(*rows, {{"MAIN.RacID", 11}, {"Titolo", "T"}, {"SottoTitolo", "due"}, {"TABAutoreID", 1}});
  EXPECT_EQ(rows->Value("Titolo"), "T");
  // A failure leaves neither row; what is being edited can be mended.
  EXPECT_EQ(failureOf([&] { rows->Update(); }), 3022);
  EXPECT_EQ(archive.outsideValues("SELECT (SELECT count(*) FROM MAIN), (SELECT count(*) FROM LIB)"),
            "9 7");
  EXPECT_EQ(rows->RecordCount(), 7);
  EXPECT_EQ(rows->Mode(), EditMode::Add);
  rows->SetValue("RacID", 50);
  rows->Update();
  EXPECT_EQ(rows->Mode(), EditMode::None);
  EXPECT_EQ(row(archive, "MAIN.ID, RacID, LIB.ID, Titolo, SottoTitolo", 10), "10 50 50 T due");
  EXPECT_EQ(rows->Value("MAIN.ID"), 7);
  EXPECT_EQ(rows->RecordCount(), 8);
  rows->SetBookmark(rows->LastModified());
  EXPECT_EQ(rows->Value("MAIN.ID"), 10);
  EXPECT_EQ(rows->Value("Autore"), "Eco");
  change(*rows, {{"SottoTitolo", "nuovo"}});
  change(*rows, {{"Titolo", "U"}, {"LIB.Edizione", "E"}, {"TABAutoreID", 3}});
  EXPECT_EQ(row(archive, "Titolo, SottoTitolo, Edizione", 10), "U nuovo E");
  EXPECT_EQ(rows->Value("Autore"), "Èlia");
  // A first table's change goes with a second's that fails.
  archive.outside("DELETE FROM LIB WHERE ID = 17");
  rows->SetAbsolutePosition(6);
  EXPECT_EQ(failureOf([&] { change(*rows, {{"Titolo", "X"}, {"Edizione", "X"}}); }), 3167);
  EXPECT_EQ(row(archive, "Titolo", 1), "Il nome della rosa");
  rows->SetBookmark(rows->LastModified());
  rows->Delete();
  EXPECT_EQ(archive.outsideValues("SELECT ID FROM MAIN UNION SELECT ID FROM LIB"),
            "1 2 3 4 5 6 7 8 9 11 12 13 14 15 16");
}

TEST(Write, OnlyTheColumnsThatWereSet) {
  for (const RecordsetType type : {RecordsetType::Table, RecordsetType::Dynaset}) {
    const Archive archive;
    const RecordsetPtr rows = archive.open("MAIN", type);
    EXPECT_FALSE(rows->Value("Cod").isValid());
    rows->Edit();
    rows->SetValue("titolo", "Mio");
    archive.outside("UPDATE MAIN SET Titolo = 'suo', Cod = 'suo', Valore = 99 WHERE ID = 1");
    rows->Update();
    EXPECT_EQ(row(archive, "Titolo, Cod, Valore", 1), "Mio suo 99.0");
    EXPECT_EQ(textOf(rows->Value("Cod")) + textOf(rows->Value("Titolo")), "suoMio");
  }
}

TEST(Write, OutOfTurn) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("MAIN");
  const auto edit = [&] {
    rows->Edit();
    rows->SetValue("Titolo", "x");
  };
  EXPECT_EQ(failureOf([&] { rows->SetValue("Titolo", "x"); }), 3020);
  edit();
  rows->CancelUpdate();
  EXPECT_EQ(rows->Value("Titolo"), "Il nome della rosa");
  EXPECT_EQ(failureOf([&] { rows->Update(); }), 3020);
  edit();
  rows->MoveNext();
  EXPECT_EQ(rows->Mode(), EditMode::None);
  rows->AddNew();
  rows->SetValue("Titolo", "x");
  rows->Edit();
  EXPECT_EQ(rows->Value("Titolo"), "Il barone rampante");
  rows->SetValue("Titolo", "x");
  rows->Edit();
  EXPECT_EQ(rows->Value("Titolo"), "x");
  rows->Move(100);
  EXPECT_EQ(failureOf([&] { rows->Edit(); }), 3021);
  EXPECT_EQ(failureOf([&] { rows->Delete(); }), 3021);
  EXPECT_EQ(archive.outsideValues("SELECT count(*) FROM MAIN WHERE Titolo = 'x' OR ID = 9"), "1");
  for (const RecordsetPtr& set :
       {archive.open("MAIN", RecordsetType::Snapshot), archive.open("Q_GRUPPI_STEP2"),
        archive.open("Q_ELENCHI_MULTIPLI_STEP2"), archive.open("SELECT DISTINCT ID FROM MAIN")}) {
    EXPECT_FALSE(set->Updatable());
    EXPECT_EQ(failureOf([&] { add(*set); }), 3027);
    EXPECT_EQ(failureOf([&] { set->Edit(); }), 3027);
    EXPECT_EQ(failureOf([&] { set->Delete(); }), 3027);
  }
}

TEST(Write, RowsDeletedByOthers) {
  for (const RecordsetType type : {RecordsetType::Table, RecordsetType::Dynaset}) {
    const Archive archive;
    const RecordsetPtr rows = archive.open("MAIN", type);
    rows->MoveNext();
    rows->Edit();
    rows->SetValue("Titolo", "x");
    OpenDatabase(archive.path())
        ->OpenRecordset("SELECT * FROM MAIN WHERE ID = 2", RecordsetType::Dynaset)
        ->Delete();
    EXPECT_EQ(failureOf([&] { rows->Update(); }), 3167);
    rows->CancelUpdate();
    EXPECT_EQ(failureOf([&] { rows->Value("Titolo"); }), 3167);
    EXPECT_EQ(failureOf([&] { rows->Delete(); }), 3167);
    EXPECT_EQ(failureOf([&] { rows->RefreshRow(); }), 3167);
    EXPECT_FALSE(rows->ValueAt(1, 0).isValid());
    rows->MoveNext();
    EXPECT_EQ(rows->Value("ID"), 3);
    rows->Requery();
    EXPECT_EQ(valuesOf(*rows, "ID"), "1 3 4 5 6 7 8 9");
  }
  // A requery that fails changes nothing.
  const Archive archive;
  archive->CreateQueryDef("Q_X", "SELECT * FROM MAIN WHERE ID > 2");
  const RecordsetPtr rows = archive.open("Q_X");
  const QSignalSpy requerying(rows.get(), &Recordset::aboutToRequery);
  rows->MoveNext();
  archive->DeleteQueryDef("Q_X");
  EXPECT_EQ(failureOf([&] { rows->Requery(); }), 3078);
  EXPECT_EQ(requerying.count(), 0);
  EXPECT_EQ(rows->Value("ID"), 4);
}

// What one handle writes is seen by all of the process at once, also through joined lists.
TEST(Write, IsSeenByOtherHandles) {
  const Archive archive;
  const DatabasePtr other = OpenDatabase(archive.path());
  const RecordsetPtr seen = other->OpenRecordset("Q_LIB", RecordsetType::Snapshot);
  EXPECT_EQ(valuesOf(*seen, "Autore"), "Èlia calvino jr Eco Calvino - Calvino Eco");
  change(*archive.open("TAB", RecordsetType::Table), {{"Desc", "Umberto"}});
  EXPECT_EQ(valuesOf(*seen, "Autore"), "Èlia calvino jr Umberto Calvino - Calvino Umberto");
  // Its own write does not hide what was written before it.
  const RecordsetPtr mine = archive.open("Q_LIB");
  const auto valore = [&] { return mine->ValueAt(1, mine->FieldIndex("Valore")); };
  EXPECT_EQ(valore(), 1.0);
  const RecordsetPtr main =
      other->OpenRecordset("SELECT * FROM MAIN WHERE ID = 6", RecordsetType::Dynaset);
  change(*main, {{"Valore", 2}});
  change(*mine, {{"Titolo", "x"}});
  EXPECT_EQ(valore(), 2.0);
  {
    const Transaction transaction(*other);
    change(*main, {{"Valore", 3}});
    EXPECT_EQ(valore(), 3.0);
  }
  EXPECT_EQ(valore(), 2.0);
}

TEST(Write, TransactionsNest) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("MAIN");
  {
    Transaction outer(*archive);
    change(*rows, {{"Titolo", "a"}});
    for (const bool commits : {true, false}) {
      Transaction inner(*archive);
      change(*rows, {{"Titolo", commits ? "b" : "c"}});
      if (commits) inner.Commit();
    }
    EXPECT_EQ(rows->Value("Titolo"), "b");
    EXPECT_EQ(row(archive, "Titolo", 1), "Il nome della rosa");
    outer.Commit();
  }
  EXPECT_EQ(row(archive, "Titolo", 1), "b");
  EXPECT_EQ(failureOf([&] { archive->CommitTrans(); }), 3034);
  {
    const std::shared_ptr<void> other = archive.hold("BEGIN; SELECT * FROM CFG");
    EXPECT_EQ(failureOf([&] { change(*rows, {{"Titolo", "x"}}); }), 3260);
    EXPECT_EQ(rows->Mode(), EditMode::Edit);
  }
  rows->Update();
  const DatabasePtr other = OpenDatabase(archive.path());
  archive->BeginTrans();
  change(*rows, {{"Titolo", "d"}});
  archive->Close();
  EXPECT_EQ(other->OpenRecordset("MAIN", RecordsetType::Table)->Value("Titolo"), "x");
  EXPECT_EQ(failureOf([&] { archive.outside("UPDATE MAIN SET Cod = 'libero'"); }), 0);
}

}  // namespace
}  // namespace store
