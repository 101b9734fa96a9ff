#include <gtest/gtest.h>

#include <QSignalSpy>

#include "store/archive.h"
#include "store/key_cache.h"

namespace store {
namespace {

// Where a recordset stands: a record's ID, "bof", "eof", "none" for both, "gone" for none of them.
QString stateOf(const Recordset& rows) {
  if (rows.Bof() && rows.Eof()) return "none";
  if (rows.Bof()) return "bof";
  if (rows.Eof()) return "eof";
  return failureOf([&] { rows.Bookmark(); }) == 3021 ? "gone" : textOf(rows.Value("ID"));
}

// Steps: F, L, N, P are the moves, D is Delete, A adds an empty row, a number is Move.
void carryOut(Recordset& rows, const QString& step) {
  if (step == "F") return rows.MoveFirst();
  if (step == "L") return rows.MoveLast();
  if (step == "N") return rows.MoveNext();
  if (step == "P") return rows.MovePrevious();
  if (step == "D") return rows.Delete();
  if (step == "A") return add(rows);
  rows.Move(step.toLongLong());
}

// The state after each step; "!" where there is no current record for it.
QString traceOf(Recordset& rows, const QString& steps) {
  QStringList trace;
  for (const QString& step : steps.split(u' ', Qt::SkipEmptyParts)) {
    const QString before = stateOf(rows);
    const int number = failureOf([&] { carryOut(rows, step); });
    EXPECT_TRUE(number == 0 || (number == 3021 && stateOf(rows) == before)) << steps.toStdString();
    trace.append(number == 0 ? stateOf(rows) : QStringLiteral("!"));
  }
  return trace.join(u' ');
}

TEST(Move, ThroughTheRows) {
  const char* const few = "DELETE FROM MAIN WHERE ID = 8";
  const struct {
    const char *statements, *steps, *states;
  } cases[] = {
      {few, "0 N F L", "1 2 1 9"},
      {few, "P P P N", "bof ! ! 1"},
      {few, "L P N N N P", "9 7 9 eof ! 9"},
      {few, "3 -2 100 -1 -100 2 -2", "4 2 eof 9 bof 2 bof"},
      {few, "2 -9000000000000000000 9000000000000000000", "3 bof eof"},
      {"DELETE FROM MAIN", "0 F L N P 5 -5", "none ! ! ! ! none none"},
      {"DELETE FROM MAIN WHERE ID <> 3", "D A L", "gone gone 10"},
      {"", "D N P", "gone 2 bof"},
      {"", "D P", "gone bof"},
      {"", "4 D N P", "5 gone 6 4"},
      {"", "4 D P N", "5 gone 4 6"},
      {"", "4 D 2", "5 gone 7"},
      {"", "4 D -2", "5 gone 3"},
      {"", "4 D D 0 F", "5 gone ! gone 1"},
      {"", "4 D N D N D P", "5 gone 6 gone 7 gone 4"},
      {"", "L D N P", "9 gone eof 8"},
      {"", "L D P", "9 gone 8"},
  };
  for (const auto type : {RecordsetType::Table, RecordsetType::Dynaset, RecordsetType::Snapshot}) {
    for (const auto& c : cases) {
      if (type == RecordsetType::Snapshot && strchr(c.steps, 'D') != nullptr) continue;
      const Archive archive;
      archive.outside(c.statements);
      const RecordsetPtr rows = archive.open("MAIN", type);
      EXPECT_EQ(traceOf(*rows, c.steps).toStdString(), c.states) << c.steps << int(type);
    }
  }
}

TEST(Move, Places) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("Q_LIB");
  for (const qint64 place : {6, 0, 3}) {
    rows->SetAbsolutePosition(place);
    EXPECT_EQ(rows->AbsolutePosition(), place);
    EXPECT_EQ(rows->Value("MAIN.ID").toLongLong(), 7 - place);
    EXPECT_EQ(rows->ValueAt(place, rows->FieldIndex("LIB.ID")).toLongLong(), 11 + place);
  }
  for (const qint64 place : {-1, 7}) {
    EXPECT_EQ(failureOf([&] { rows->SetAbsolutePosition(place); }), 3021);
    EXPECT_FALSE(rows->ValueAt(place, 0).isValid());
  }
  EXPECT_EQ(failureOf([&] { rows->ValueAt(0, static_cast<int>(rows->Fields().size())); }), 3265);
  EXPECT_EQ(failureOf([&] { rows->Value(-1); }), 3265);
  rows->Move(100);
  EXPECT_EQ(rows->AbsolutePosition(), -1);
  // Whatever the steps are, rows are read ahead of them.
  archive.outside(
      "WITH n(i) AS (SELECT 100 UNION ALL SELECT i + 1 FROM n WHERE i < 999) "
      "INSERT INTO MAIN (ID, RacID, Titolo) SELECT i, i, 'T' || i FROM n");
  const RecordsetPtr many = archive.open("SELECT * FROM MAIN WHERE ID >= 100");
  const int title = many->FieldIndex("Titolo");
  for (const qint64 step : {7, 899, 1, 413}) {
    for (qint64 i = 0; i < 900; ++i) {
      const qint64 place = i * step % 900;
      ASSERT_EQ(many->ValueAt(place, title), QStringLiteral("T%1").arg(place + 100));
    }
  }
}

TEST(Move, BookmarksAndClones) {
  for (const RecordsetType type : {RecordsetType::Table, RecordsetType::Dynaset}) {
    const Archive archive;
    const RecordsetPtr rows = archive.open("MAIN", type);
    rows->Move(5);
    const QByteArray six = rows->Bookmark();
    rows->MovePrevious();
    const QByteArray five = rows->Bookmark();
    const RecordsetPtr clone = rows->Clone();
    EXPECT_EQ(stateOf(*clone), "bof");
    clone->SetBookmark(five);
    EXPECT_EQ(traceOf(*clone, "0 N"), "5 6");
    EXPECT_EQ(traceOf(*rows, "0 D"), "5 gone");
    EXPECT_EQ(traceOf(*clone, "0 P"), "6 4");
    EXPECT_EQ(clone->RecordCount(), 8);
    clone->Close();
    EXPECT_EQ(traceOf(*rows, "N"), "6");
    for (const QByteArray& bad : {five, QByteArray("x"), QByteArray(8, '\xFF')}) {
      EXPECT_EQ(failureOf([&] { rows->SetBookmark(bad); }), 3159);
    }
    rows->Requery();
    EXPECT_EQ(stateOf(*rows), "1");
    rows->SetBookmark(six);
    EXPECT_EQ(stateOf(*rows), "6");
  }
}

// Clones of a dynaset stay where they are while rows come and go.
TEST(Move, ClonesOfADynasetFollowItsChanges) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("MAIN");
  const RecordsetPtr same = rows->Clone();
  const RecordsetPtr end = rows->Clone();
  rows->Move(4);
  same->SetBookmark(rows->Bookmark());
  end->Move(100);
  EXPECT_EQ(traceOf(*rows, "D A"), "gone gone");
  EXPECT_EQ(stateOf(*same), "gone");
  EXPECT_EQ(traceOf(*end, "0 P"), "eof 10");
  EXPECT_EQ(traceOf(*same, "N"), "6");
  // Only the one that is read anew leaves the others' rows.
  archive.outside("DELETE FROM MAIN WHERE ID < 6");
  rows->Requery();
  EXPECT_EQ(rows->RecordCount(), 5);
  EXPECT_EQ(same->RecordCount(), 9);
}

// Steps before a search, its kind (First, Last, Next, Previous), its condition, and what it finds:
// "-" is no hit, and the cursor stays.
TEST(Find, FromWhereTheCursorStands) {
  const std::string cases =
      ",F,Anno > 1990,3|L,F,Anno > 1990,3|,L,Anno > 1990,7|,N,Anno > 1990,3|2,N,Anno > 1990,4|"
      "2,P,Anno < 1990,2|2,P,Anno > 1990,-|L,N,Anno > 1990,-|P,N,Anno > 1970,1|P,P,Anno > 1970,-|"
      "L N,N,Anno > 1970,-|L N,P,ID > 8,9|2 D,N,Anno > 1990,4|2 D,P,Anno > 1,2|"
      ",F,Titolo = 'niente',-|4,L,Titolo = 'niente',-|,F,TABAutoreID Is Null,3";
  for (const std::string& line : split(cases)) {
    const QStringList each = QString::fromStdString(line).split(u',');
    const Archive archive;
    const RecordsetPtr rows = archive.open("MAIN");
    traceOf(*rows, each[0]);
    const QString before = stateOf(*rows);
    const QSignalSpy moved(rows.get(), &Recordset::moved);
    if (each[1] == "F") rows->FindFirst(each[2]);
    if (each[1] == "L") rows->FindLast(each[2]);
    if (each[1] == "N") rows->FindNext(each[2]);
    if (each[1] == "P") rows->FindPrevious(each[2]);
    const bool hit = each[3] != "-";
    EXPECT_EQ(rows->NoMatch(), !hit) << line;
    EXPECT_EQ(stateOf(*rows), hit ? each[3] : before) << line;
    EXPECT_EQ(moved.count(), hit ? 1 : 0);
  }
}

// A list that was read before comes back without being read, but never as it was.
TEST(Find, ListsAreReadAgainAfterAWrite) {
  const Archive archive;
  const struct {
    const char *list, *table, *field, *value;  // written to the table's first row
  } cases[] = {
      {"SELECT * FROM main WHERE Anno = 1234", "MAIN", "Anno", "1234"},
      {"SELECT * FROM MAIN WHERE RacID = (SELECT Max(LIB.ID) FROM LIB WHERE SottoTitolo = 'x')",
       "LIB", "SottoTitolo", "x"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(archive.open(c.list)->RecordCount(), 0) << c.list;
    change(*archive.open(c.table), {{c.field, c.value}});
    EXPECT_EQ(archive.open(c.list)->RecordCount(), 1) << c.list;
  }
}

// A list that is kept anew takes the room of its former keys.
TEST(Find, ManyListsAreKept) {
  const WriteLog writes;
  KeyCache kept(writes);
  kept.keep("SELECT * FROM MAIN", {1, 2, 3}, {"MAIN"});
  for (int i = 0; i < 3; ++i) kept.keep("SELECT * FROM LIB", KeyCache::Keys(400000), {"LIB"});
  EXPECT_NE(kept.find("SELECT * FROM MAIN"), nullptr);
}

TEST(Find, SeesWhatWasWritten) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("MAIN");
  const QString condition = "Anno = 1999";
  rows->FindFirst(condition);
  EXPECT_EQ(stateOf(*rows), "3");
  change(*rows, {{"Anno", 2005}});
  rows->FindFirst(condition);
  EXPECT_TRUE(rows->NoMatch());
  archive.outside("UPDATE MAIN SET Anno = 1999 WHERE ID = 6");
  rows->FindFirst(condition);
  EXPECT_EQ(stateOf(*rows), "6");
  add(*rows, {{"Anno", 1999}});
  rows->FindNext(condition);
  EXPECT_EQ(stateOf(*rows), "10");
  rows->Delete();
  rows->FindLast(condition);
  EXPECT_EQ(stateOf(*rows), "6");
  const RecordsetPtr books = archive.open("Q_LIB");
  EXPECT_EQ(failureOf([&] { books->FindFirst(""); }), 3075);
  EXPECT_EQ(failureOf([&] { books->FindFirst("ID = 1"); }), 3061);
  EXPECT_EQ(books->AbsolutePosition(), 0);
  const RecordsetPtr table = archive.open("MAIN", RecordsetType::Table);
  EXPECT_EQ(failureOf([&] { table->FindFirst("ID = 1"); }), 3251);
  EXPECT_EQ(failureOf([&] { rows->Seek("=", {1}); }), 3251);
}

// What is in a list is found there, also when the list's own condition does not fit it any more,
// by whatever way the engine takes.
TEST(Find, WhatTheListHolds) {
  const Archive archive;
  for (const char* list : {"SELECT * FROM MAIN WHERE Anno > 1990 ORDER BY Titolo",
                           "SELECT * FROM Q_LIB WHERE MAIN.Anno > 1990"}) {
    const RecordsetPtr rows = archive.open(list);
    change(*rows, {{"Anno", 1700}, {"Titolo", "Uno"}, {"TABAutoreID", 77}});
    rows->MoveLast();
    if (rows->FindField("LIB.ID") < 0) {
      add(*rows, {{"Titolo", "Uno"}, {"TABAutoreID", 77}});
    } else {
      archive.outside("UPDATE MAIN SET TipoRac = 1, Titolo = 'uno', TABAutoreID = 77 WHERE ID = " +
                      rows->Value("MAIN.ID").toByteArray());
    }
    for (const char* condition : {"Titolo Like 'un*'", "TABAutoreID = 77"}) {
      rows->FindFirst(condition);
      EXPECT_EQ(rows->AbsolutePosition(), 0) << list << condition;
      rows->FindNext(condition);
      EXPECT_EQ(rows->AbsolutePosition(), rows->RecordCount() - 1) << list << condition;
      EXPECT_FALSE(rows->NoMatch());
    }
  }
}

// Groups have no keys in the archive: they stay as they were computed, and can be searched.
TEST(Find, AmongGroups) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("Q_GRUPPI_STEP3");
  rows->FindFirst("TotQuantita = 2");
  EXPECT_EQ(rows->Value("Desc"), "Calvino");
  rows->FindNext("TotQuantita = 2");
  EXPECT_EQ(rows->Value("desc"), "Eco");
  archive.open("MAIN")->Delete();
  EXPECT_EQ(valuesOf(*rows, "TotQuantita"), "1 2 1 2 1");
  rows->Requery();
  EXPECT_EQ(valuesOf(*rows, "TotQuantita"), "1 2 1 1 1");
}

}  // namespace
}  // namespace store
