#include <gtest/gtest.h>

#include <QFile>
#include <QSignalSpy>

#include "store/archive.h"

namespace store {
namespace {

void write(const QString& path, const QByteArray& content) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(content);
}

QByteArray contentOf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  return file.readAll();
}

int failureOfOpen(const QString& path) {
  return failureOf([&] { OpenDatabase(path); });
}

TEST(Open, FilesThatAreNoArchives) {
  const Archive archive;
  archive->Close();
  const QByteArray whole = contentOf(archive.path());
  QByteArray foreign = whole;
  foreign[68] = 'x';
  QByteArray noHeader = whole;
  noHeader[3] = 'x';
  const std::vector<std::pair<QByteArray, int>> cases = {
      {"", 3343},
      {"x", 3343},
      {"Solo un testo,\nnient'altro.\n", 3343},
      {QByteArray(100000, 'x'), 3343},
      {foreign, 3343},
      {noHeader, 3343},
      {whole.left(50), 3049},
      {whole.left(4096), 3049},
      {whole.left(whole.size() - 1), 3049},
      {whole.left(whole.size() / 2), 3049},
      {whole + 'x', 3049},
      {whole + whole, 3049},
      {whole, 0},
  };
  const QString path = archive.path("altro.tvx");
  for (const auto& [content, number] : cases) {
    write(path, content);
    EXPECT_EQ(failureOfOpen(path), number) << content.left(40).toStdString() << content.size();
    EXPECT_EQ(contentOf(path), content);
  }
  EXPECT_EQ(failureOfOpen(archive.path("manca.tvx")), 3024);
  EXPECT_EQ(failureOfOpen(archive.path("")), 3024);
  EXPECT_EQ(failureOfOpen(""), 3024);
}

// Pages that hold anything: failures of a known number, no more.
TEST(Open, DamagedPages) {
  const Archive archive;
  archive->Close();
  const QByteArray whole = contentOf(archive.path());
  const QString path = archive.path("guasto.tvx");
  std::mt19937 random(5);  // NOLINT: the same damages each time
  int damaged = 0;
  for (int round = 0; round < 40; ++round) {
    QByteArray content = whole;
    for (int i = 0; i < 200; ++i) {
      const auto size = static_cast<unsigned>(content.size()) - 100;
      content[static_cast<qsizetype>(100 + random() % size)] = static_cast<char>(random());
    }
    write(path, content);
    const int number = failureOf([&] {
      const DatabasePtr database = OpenDatabase(path);
      for (const char* source : {"Q_LIB", "SELECT * FROM Q_LIB ORDER BY Autore, Titolo"}) {
        valuesOf(*database->OpenRecordset(source, RecordsetType::Dynaset), "MAIN.ID");
      }
      valuesOf(*database->OpenRecordset("Q_GRUPPI_STEP3", RecordsetType::Snapshot), "Desc");
    });
    damaged += number == 3049 ? 1 : 0;
    EXPECT_TRUE(QSet<int>({3049, 3343, 3078, 3075, 3061, 3167, 3265, 3360, 6}).contains(number))
        << number;
  }
  EXPECT_GT(damaged, 5);
}

TEST(Open, IntegrityCheck) {
  const Archive archive;
  EXPECT_TRUE(archive->IntegrityCheck());
  archive->Close();
  archive.outside(
      "PRAGMA writable_schema = 1; UPDATE sqlite_schema SET sql = replace(sql, "
      "'(TipoRac, RacID)', '(RacID, TipoRac)') WHERE name = 'MAIN_2'");
  EXPECT_FALSE(OpenDatabase(archive.path())->IntegrityCheck());
}

// A write that was interrupted: part of it has reached the file, the journal holds what was before.
TEST(Open, RollsBackAnInterruptedWrite) {
  const Archive archive;
  archive->Close();
  const QString path = archive.path("interrotto.tvx");
  {
    const std::shared_ptr<void> other = archive.hold(
        "PRAGMA cache_size = 1; BEGIN; UPDATE MAIN SET Titolo = 'a meta'''; "
        "WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 500) "
        "INSERT INTO MAIN (Note) SELECT printf('%.1000c', 'x') FROM n");
    write(path, contentOf(archive.path()));
    write(path + "-journal", contentOf(archive.path() + "-journal"));
  }
  ASSERT_GT(contentOf(path).size(), contentOf(archive.path()).size());
  const DatabasePtr database = OpenDatabase(path);
  const RecordsetPtr rows = database->OpenRecordset("MAIN", RecordsetType::Table);
  EXPECT_EQ(rows->RecordCount(), 9);
  EXPECT_EQ(rows->Value("Titolo"), "Il nome della rosa");
  EXPECT_FALSE(QFile::exists(path + "-journal"));
}

TEST(Open, WhatASchemaHidesIsNotRun) {
  const Archive archive;
  archive->Close();
  archive.outside(R"(
    CREATE TRIGGER t1 AFTER INSERT ON MAIN BEGIN DELETE FROM TAB; END;
    CREATE TRIGGER t2 AFTER UPDATE ON MAIN BEGIN DELETE FROM TAB; END;
    CREATE TRIGGER t3 AFTER DELETE ON MAIN BEGIN DELETE FROM TAB; END;
    CREATE VIEW V_TAB AS SELECT * FROM TAB;
    CREATE VIRTUAL TABLE F_TAB USING fts4(x);
    ALTER TABLE CONT RENAME TO CONT_VERA;
    CREATE VIEW CONT AS SELECT randomblob(100) AS ID;
  )");
  const DatabasePtr database = OpenDatabase(archive.path());
  const RecordsetPtr rows = database->OpenRecordset("MAIN", RecordsetType::Dynaset);
  rows->AddNew();
  rows->Update();
  rows->Edit();
  rows->SetValue("Titolo", "x");
  rows->Update();
  rows->Delete();
  EXPECT_EQ(database->OpenRecordset("TAB", RecordsetType::Table)->RecordCount(), 8);
  for (const char* source : {"V_TAB", "F_TAB", "CONT", "SELECT * FROM CONT"}) {
    EXPECT_EQ(failureOf([&] { database->OpenRecordset(source, RecordsetType::Dynaset); }), 3078)
        << source;
  }
}

TEST(Open, HandlesOfOneFile) {
  const Archive archive;
  const DatabasePtr second = OpenDatabase(archive.path("./prova.tvx"));
  EXPECT_EQ(second->Name(), archive->Name());
  const RecordsetPtr rows = second->OpenRecordset("MAIN", RecordsetType::Dynaset);
  const RecordsetPtr mine = archive.open("MAIN");
  const RecordsetPtr clone = mine->Clone();
  EXPECT_EQ(archive->Recordsets(), QVector<RecordsetPtr>{mine});
  const QSignalSpy closed(mine.get(), &Recordset::closed);
  archive->Close();
  archive->Close();
  EXPECT_EQ(closed.count(), 1);
  EXPECT_FALSE(archive->IsOpen() || mine->IsOpen() || clone->IsOpen());
  EXPECT_TRUE(second->IsOpen() && rows->IsOpen());
  EXPECT_EQ(rows->Value("ID"), 1);
}

// An archive may be opened again while its first handle is in the middle of a transaction.
TEST(Open, DuringATransaction) {
  const Archive archive;
  const Transaction transaction(*archive);
  const RecordsetPtr rows = archive.open("MAIN");
  for (int i = 0; i < 50; ++i) {
    rows->AddNew();
    rows->SetValue("Note", QString(5000, u'x'));
    rows->Update();
  }
  EXPECT_EQ(failureOfOpen(archive.path()), 0);
}

TEST(Open, ClosedObjectsFail) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("MAIN");
  archive->Close();
  const std::vector<std::function<void()>> operations = {
      [&] { rows->MoveNext(); },
      [&] { rows->Bof(); },
      [&] { rows->RecordCount(); },
      [&] { rows->Value("ID"); },
      [&] { rows->ValueAt(0, 0); },
      [&] { rows->Edit(); },
      [&] { rows->AddNew(); },
      [&] { rows->Update(); },
      [&] { rows->Bookmark(); },
      [&] { rows->Clone(); },
      [&] { rows->FindFirst("ID = 1"); },
      [&] { rows->Requery(); },
      [&] { rows->Fields(); },
      [&] { rows->Seek("=", {1}); },
      [&] { archive.open("MAIN"); },
      [&] { archive->QueryDefs(); },
      [&] { archive->BeginTrans(); },
      [&] { archive->IntegrityCheck(); },
      [&] { archive->Execute("Q_LIB"); },
      [&] { archive->CreateQueryDef("Q", "SELECT * FROM TAB"); },
  };
  for (std::size_t i = 0; i < operations.size(); ++i)
    EXPECT_EQ(failureOf(operations[i]), 3420) << i;
  EXPECT_EQ(archive->Name(), "");
  EXPECT_TRUE(archive->Recordsets().isEmpty());
}

TEST(Open, CloseWorkspace) {
  const Archive first;
  const Archive second;
  DatabasePtr third = OpenDatabase(second.path());
  const RecordsetPtr rows = first.open("MAIN");
  const RecordsetPtr others = third->OpenRecordset("Q_LIB", RecordsetType::Snapshot);
  // A listener lets go of another handle.
  QObject::connect(rows.get(), &Recordset::closed, [&] { third.reset(); });
  CloseWorkspace();
  EXPECT_FALSE(first->IsOpen() || second->IsOpen() || rows->IsOpen() || others->IsOpen());
  EXPECT_FALSE(third);
}

TEST(Open, TheFileThatThePathLeadsTo) {
  const Archive archive;
  const Archive other;
  other.outside("DELETE FROM MAIN WHERE ID > 2");
  const auto count = [&](const DatabasePtr& database) {
    return database->OpenRecordset("MAIN", RecordsetType::Table)->RecordCount();
  };
  const DatabasePtr before = OpenDatabase(archive.path());
  ASSERT_TRUE(QFile::remove(archive.path()));
  EXPECT_EQ(failureOfOpen(archive.path()), 3024);
  write(archive.path(), contentOf(other.path()));
  EXPECT_EQ(count(OpenDatabase(archive.path())), 2);
  EXPECT_EQ(count(before), 9);
  // With no handle left, not even one of a clone.
  const RecordsetPtr clone = before->OpenRecordset("MAIN", RecordsetType::Dynaset)->Clone();
  before->Close();
  archive->Close();
  EXPECT_EQ(count(OpenDatabase(archive.path())), 2);
}

TEST(Create, NewFilesOnly) {
  const Archive archive;
  EXPECT_EQ(failureOf([&] { CreateDatabase(archive.path(), "CREATE TABLE X (Y)"); }), 3204);
  const QString path = archive.path("nuovo.tvx");
  EXPECT_NE(failureOf([&] { CreateDatabase(path, "CREATE TABLE X (Y); CREATE TABEL Z"); }), 0);
  EXPECT_FALSE(QFile::exists(path));
  EXPECT_EQ(failureOf([&] { CreateDatabase(archive.path("manca/nuovo.tvx"), ""); }), 3051);
  const DatabasePtr created = CreateDatabase(path, "CREATE TABLE X (Y SHORT, Z TEXT(3))");
  const RecordsetPtr rows = created->OpenRecordset("X", RecordsetType::Table);
  ASSERT_EQ(rows->Fields().size(), 2);
  EXPECT_EQ(rows->Fields()[0].kind, FieldKind::Short);
  EXPECT_EQ(rows->Fields()[1].size, 3);
  EXPECT_TRUE(created->QueryDefs().isEmpty());
}

}  // namespace
}  // namespace store
