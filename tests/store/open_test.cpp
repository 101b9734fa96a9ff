#include <gtest/gtest.h>

#include <QFile>
#include <QSignalSpy>
#include <QtEndian>

#include "store/archive.h"
#include "store/journal.h"
#include "store/outside.h"

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

// The description of the failure, as the user gets it.
QString said(const QString& path) {
  try {
    OpenDatabase(path);
  } catch (const Failure& failure) {
    return failure.description();
  }
  return {};
}

TEST(Open, FilesThatAreNoArchives) {
  const Archive archive;
  archive->Close();
  const QByteArray whole = contentOf(archive.path());
  const std::pair<QByteArray, int> cases[] = {
      {"", 3343},
      {"Solo un testo,\nnient'altro.\n", 3343},
      {QByteArray(whole).replace(68, 1, "x"), 3343},  // another program's
      // The first page is damaged.
      {QByteArray(whole).replace(3, 1, "x"), 3428},
      {QByteArray(whole).replace(21, 1, "x"), 3428},
      {whole.left(4096), 3049},
      {whole.left(whole.size() - 1), 3049},
      {whole + 'x', 3049},
      {whole, 0},
  };
  const QString path = archive.path("altro.tvx");
  for (const auto& [content, number] : cases) {
    write(path, content);
    EXPECT_EQ(failureOfOpen(path), number) << content.left(40).toStdString() << content.size();
    EXPECT_EQ(contentOf(path), content);
    EXPECT_EQ(said(path).endsWith("un archivio riconosciuto"), number == 3343);
  }
  for (const QString& no : {archive.path("manca.tvx"), archive.path(""), QString()}) {
    EXPECT_EQ(failureOfOpen(no), 3024);
  }
}

TEST(Open, HandlesOfOneFile) {
  const Archive archive;
  const Archive elsewhere;
  DatabasePtr second = OpenDatabase(archive.path("./prova.tvx"));
  EXPECT_EQ(second->Name(), archive->Name());
  const RecordsetPtr rows = second->OpenRecordset("MAIN", RecordsetType::Dynaset);
  {
    // Opened again while its first handle is in the middle of a transaction.
    const Transaction transaction(*archive);
    add(*rows);
    EXPECT_EQ(failureOfOpen(archive.path()), 0);
  }
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
  const std::function<void()> operations[] = {
      [&] { mine->MoveNext(); },    [&] { mine->RecordCount(); },  [&] { mine->Value("ID"); },
      [&] { mine->AddNew(); },      [&] { mine->Bookmark(); },     [&] { clone->Clone(); },
      [&] { mine->Requery(); },     [&] { mine->FindLast("x"); },  [&] { mine->ValueAt(0, 0); },
      [&] { archive.open("CFG"); }, [&] { archive->QueryDefs(); }, [&] { archive->BeginTrans(); }};
  for (const auto& operation : operations) EXPECT_EQ(failureOf(operation), 3420);
  // A listener lets go of a handle while all are closed.
  const RecordsetPtr others = elsewhere.open("MAIN");
  QObject::connect(others.get(), &Recordset::closed, [&] { second.reset(); });
  CloseWorkspace();
  EXPECT_FALSE(elsewhere->IsOpen() || rows->IsOpen() || others->IsOpen() || second);
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
}

QByteArray number(quint32 value) {
  value = qToBigEndian(value);
  return QByteArray(reinterpret_cast<const char*>(&value), sizeof value);
}

// A journal on the disk that takes back a write to one page of an archive.
QByteArray journalOf(const QByteArray& before, quint32 page, quint32 pages) {
  const auto size = qFromBigEndian<quint16>(before.constData() + 16);
  const QByteArray content = before.mid((page - 1) * size, size);
  quint32 sum = 0;
  for (int i = size - 200; i > 0; i -= 200) sum += static_cast<uchar>(content[i]);
  const QByteArray header = QByteArray("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7") + number(1) + number(0) +
                            number(pages) + number(512) + number(size);
  return header.leftJustified(512, '\0') + number(page) + content + number(sum);
}

// Beside the file that it was made for a journal is played back; beside an older or a newer state
// of it, as a copy put back may be, it is set aside and nothing is touched.
TEST(Open, BesideAJournal) {
  const Archive archive;
  archive->Close();
  QByteArray states[3];  // their counters differ by one
  for (int i = 0; i < 3; ++i) {
    if (i > 0) archive.outside("PRAGMA user_version = " + QByteArray::number(i));
    states[i] = contentOf(archive.path());
  }
  const auto pages = qFromBigEndian<quint32>(states[0].constData() + 28);
  const struct {
    int archive;
    QByteArray journal;
    int found;
    bool setAside;
  } cases[] = {
      {0, journalOf(states[0], 1, pages), 0, false},
      {1, journalOf(states[0], 1, pages), 0, false},
      {2, journalOf(states[0], 1, pages), 2, true},
      {0, journalOf(states[1], 1, pages), 0, true},
      {2, journalOf(states[0], 2, pages), 2, false},
      {2, journalOf(states[0], 2, pages - 1), 2, true},
  };
  for (const auto& c : cases) {
    const Archive other;
    const QString path = other.path("altro.tvx");
    write(path, states[c.archive]);
    write(path + "-journal", c.journal);
    const QString aside = OpenDatabase(path)->JournalSetAside();
    EXPECT_EQ(contentOf(path), states[c.found]);
    EXPECT_FALSE(QFile::exists(path + "-journal"));
    EXPECT_EQ(!aside.isEmpty(), c.setAside);
    EXPECT_EQ(c.setAside ? contentOf(aside) : c.journal, c.journal);
  }
}

// Whoever copies or replaces an archive's file finds it whole, and leaves nothing to be played into
// what comes under its name.
TEST(Open, AnArchiveWithoutItsJournal) {
  const Archive archive;
  archive->Close();
  const QByteArray before = contentOf(archive.path());
  const auto pages = qFromBigEndian<quint32>(before.constData() + 28);
  archive.outside("PRAGMA user_version = 1");
  for (const char* ending : {"-journal", "-wal", "-shm"}) {
    write(archive.path() + ending, journalOf(before, 1, pages));
    if (ending == QByteArray("-journal")) {
      settleJournal(archive.path());
      EXPECT_EQ(contentOf(archive.path()), before);
      write(archive.path() + ending, journalOf(before, 1, pages));
    }
    removeJournals(archive.path());
    EXPECT_FALSE(QFile::exists(archive.path() + ending));
  }
  EXPECT_EQ(contentOf(archive.path()), before);
}

TEST(Open, InWriteAheadMode) {
  const Archive archive;
  archive->Close();
  const QString path = archive.path("altro.tvx");
  const QByteArray before = contentOf(archive.path());
  QByteArray log;
  {
    const auto writer = archive.hold("PRAGMA journal_mode = WAL; DELETE FROM MAIN WHERE ID > 1");
    EXPECT_EQ(failureOfOpen(archive.path()), 3260);
    write(path, contentOf(archive.path()));
    log = contentOf(archive.path() + "-wal");
    write(path + "-wal", log);
  }
  const DatabasePtr opened = OpenDatabase(path);
  EXPECT_EQ(opened->OpenRecordset("MAIN", RecordsetType::Table)->RecordCount(), 1);
  EXPECT_TRUE(opened->JournalSetAside().isEmpty());
  opened->Close();
  EXPECT_FALSE(QFile::exists(path + "-wal"));
  EXPECT_EQ(contentOf(path)[18], 1);
  // Put back from before; the log knows no more than the name.
  write(path, before);
  write(path + "-wal", log);
  const DatabasePtr again = OpenDatabase(path);
  EXPECT_EQ(again->OpenRecordset("MAIN", RecordsetType::Table)->RecordCount(), 9);
  EXPECT_EQ(contentOf(again->JournalSetAside()), log);
}

TEST(Open, ArchivesThatLackColumns) {
  const QByteArray schema =
      "CREATE TABLE X (ID INTEGER PRIMARY KEY, A TEXT(5), B TEXT(7) COLLATE ITALIANO,"
      "C YESNO DEFAULT 0)";
  const Archive archive;
  const DatabasePtr database = CreateDatabase(archive.path("vecchio.tvx"),
                                              "CREATE TABLE X (ID INTEGER PRIMARY KEY, a TEXT(5))");
  add(*database->OpenRecordset("X", RecordsetType::Table), {{"A", "uno"}});
  try {
    database->AddMissingColumns({{"X", "A"}, {"X", "B"}, {"X", "D"}}, schema);
    ADD_FAILURE();
  } catch (const Failure& failure) {
    EXPECT_TRUE(failure.description().contains("X.B, X.D")) << failure.what();
  }
  EXPECT_EQ(database->OpenRecordset("X", RecordsetType::Table)->FindField("B"), -1);
  database->AddMissingColumns({{"X", "A"}, {"X", "B"}, {"x", "c"}}, schema);
  const RecordsetPtr rows =
      database->OpenRecordset("SELECT * FROM X WHERE C = 0 AND A = 'uno'", RecordsetType::Dynaset);
  EXPECT_EQ(rows->Fields()[2].size, 7);
  EXPECT_EQ(rows->Fields()[3].kind, FieldKind::YesNo);
  change(*rows, {{"B", "È"}});
  rows->FindFirst("B = 'è'");
  EXPECT_FALSE(rows->NoMatch());
}

TEST(Create, NewFilesOnly) {
  const Archive archive;
  const QString path = archive.path("nuovo.tvx");
  const auto create = [&](const QString& where, const QByteArray& schema) {
    return failureOf([&] { CreateDatabase(where, schema); });
  };
  EXPECT_EQ(create(archive.path(), "CREATE TABLE X (Y)"), 3204);
  EXPECT_EQ(create(archive.path("manca/nuovo.tvx"), ""), 3051);
  EXPECT_NE(create(path, "CREATE TABLE X (Y); CREATE TABEL Z"), 0);
  EXPECT_FALSE(QFile::exists(path));
  const DatabasePtr created =
      CreateDatabase(path, "CREATE TABLE X (Y SHORT, Z TEXT(3)); CREATE INDEX X_2 ON X (Y)");
  const RecordsetPtr rows = created->OpenRecordset("X", RecordsetType::Table);
  EXPECT_EQ(rows->Fields()[0].kind, FieldKind::Short);
  EXPECT_EQ(rows->Fields()[1].size, 3);
  EXPECT_TRUE(created->QueryDefs().isEmpty() && created->IntegrityCheck());
  add(*rows);
  created->Close();
  // An index of other columns than it was made of.
  Outside(path).exec(
      "PRAGMA writable_schema = 1; UPDATE sqlite_schema SET sql = replace(sql, '(Y)', '(Z)');"
      "PRAGMA writable_schema = 0; UPDATE X SET Z = 'a'");
  EXPECT_FALSE(OpenDatabase(path)->IntegrityCheck());
}

}  // namespace
}  // namespace store
