// An archive is data: what its schema hides is not run, or the archive is refused.

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "harm/archive_file.h"
#include "store/archive.h"

namespace store {
namespace {

constexpr auto kDynaset = RecordsetType::Dynaset;

// What a program does with an archive: reads and writes all that the hidden things hang on.
void use(const QString& path) {
  const DatabasePtr database = OpenDatabase(path);
  const RecordsetPtr rows = database->OpenRecordset("Q_AUD", kDynaset);
  for (int field = 0; field < rows->Fields().size(); ++field) rows->ValueAt(0, field);
  rows->MoveLast();
  rows->Edit();
  rows->SetValue("Titolo", "Cambiato");
  rows->Update();
  const auto add = [&] {
    rows->AddNew();
    rows->SetValue("AUD.ID", 77777);
    rows->SetValue("TipoRac", 2);
    rows->Update();
  };
  add();
  // Whatever the table says of conflicts, a row is not replaced.
  EXPECT_EQ(failureOf(add), 3022);
  rows->MoveFirst();
  rows->Delete();
  database->CreateQueryDef("Q_NUOVA", "SELECT * FROM TAB");
  database->DeleteQueryDef("Q_NUOVA");
  const RecordsetPtr texts = database->OpenRecordset("TAB", RecordsetType::Table);
  texts->SetIndex("2");
  texts->Seek(">=", {"AUTORE", 0});
}

struct Result {
  int failure = 0;
  QString said;
  QByteArray contents;
};

Result resultOf(const QByteArray& file) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("a.tvx"));
  harm::write(path, file);
  Result result;
  try {
    use(path);
  } catch (const Failure& failure) {
    result.failure = failure.number();
    result.said = failure.description();
  }
  CloseWorkspace();
  result.contents = harm::contentsOf(path, {"MAIN", "AUD", "TAB", "CFG", "QUERYDEF"});
  return result;
}

// Each line of the file is a name, the number of the failure (0: it opens, and is the same as
// without), a part of its description, and the statements that hide something.
TEST(Hidden, IsNotRun) {
  const QByteArray good = harm::smallArchive(60);
  const Result wanted = resultOf(good);
  ASSERT_EQ(wanted.failure, 0) << qPrintable(wanted.said);
  for (const QByteArray& line : sourceFile("tests/damage/hidden.txt").trimmed().split('\n')) {
    const QByteArrayList parts = line.split('|');
    SCOPED_TRACE(parts[0].constData());
    const QByteArray file = harm::after(good, {"PRAGMA writable_schema = 1; " + parts[3]});
    ASSERT_NE(file, good);
    const Result result = resultOf(file);
    EXPECT_EQ(result.failure, parts[1].toInt()) << qPrintable(result.said);
    EXPECT_TRUE(result.said.contains(parts[2])) << qPrintable(result.said);
    EXPECT_TRUE(result.failure != 0 || result.contents == wanted.contents);
  }
}

}  // namespace
}  // namespace store
