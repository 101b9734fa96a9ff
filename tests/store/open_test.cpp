#include <gtest/gtest.h>

#include <QFile>
#include <QSignalSpy>

#include "store/archive.h"
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
