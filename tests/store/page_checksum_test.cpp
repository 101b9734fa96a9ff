#include "store/page_checksum.h"

#include <gtest/gtest.h>

#include <QFile>
#include <algorithm>

#include "store/archive.h"
#include "store/outside.h"
#include "store/whole_file.h"

namespace store {
namespace {

constexpr qsizetype kPage = 4096;

QByteArray contentOf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  return file.readAll();
}

void write(const QString& path, const QByteArray& content) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(content);
}

uchar* bytes(QByteArray& file, qsizetype page) {
  return reinterpret_cast<uchar*>(file.data()) + page * kPage;
}

// Numbers of the pages that are not what was written.
QVector<qsizetype> damagedIn(QByteArray file) {
  QVector<qsizetype> numbers;
  for (qsizetype page = 0; page < file.size() / kPage; ++page) {
    if (!isWholePage(bytes(file, page), kPage, page + 1)) numbers.append(page + 1);
  }
  return numbers;
}

// The titles in an archive's list, "?" where a row cannot be read for its page.
QString titlesIn(const QString& path) {
  QString titles;
  const DatabasePtr database = OpenDatabase(path);
  const RecordsetPtr rows = database->OpenRecordset("MAIN", RecordsetType::Dynaset);
  for (qint64 row = 0; row < rows->RecordCount(); ++row) {
    const int failed =
        failureOf([&] { titles += textOf(rows->ValueAt(row, rows->FieldIndex("Note"))).at(0); });
    if (failed != 0) titles += failed == failure::kPageDamaged ? u'?' : u'!';
  }
  return titles;
}

// Nine long notes: a page or more each, behind the rows.
class Pages : public ::testing::Test {
 protected:
  Pages() {
    archive_.outside(
        "UPDATE MAIN SET Note = replace(hex(zeroblob(5000)), '00', char(96 + ID) || 'x')");
    archive_->Close();
    good_ = contentOf(archive_.path());
  }
  // The page behind a row's own that holds the rest of its note.
  qsizetype pageOf(const QByteArray& text) const {
    constexpr qsizetype kBehindTheHead = 99;
    qsizetype page = 0;
    while (!good_.mid(page * kPage + kBehindTheHead, text.size() + 1).contains(text)) ++page;
    return page;
  }

  QString shownOf(const QByteArray& file) const {
    write(path_, file);
    return titlesIn(path_);
  }

  Archive archive_;
  QString path_ = archive_.path("guasto.tvx");
  QByteArray good_;
};

TEST_F(Pages, DamageIsTheRowsOfThePageOnly) {
  ASSERT_EQ(damagedIn(good_), QVector<qsizetype>());
  ASSERT_EQ(shownOf(good_), "abcdefghi");
  const qsizetype c = pageOf("cxcxcx");
  const qsizetype e = pageOf("exexex");
  Archive other;
  other.outside("UPDATE MAIN SET Note = replace(hex(zeroblob(5000)), '00', 'zz')");
  QByteArray foreign = contentOf(other.path());
  for (const qsizetype at : {qsizetype{0}, qsizetype{3}, kPage / 2, kPage - 9, kPage - 1}) {
    QByteArray bit = good_;
    bytes(bit, c)[at] ^= 4;
    EXPECT_EQ(shownOf(bit), "ab?defghi") << at;
  }
  QByteArray swapped = good_;
  std::swap_ranges(bytes(swapped, c), bytes(swapped, c) + kPage, bytes(swapped, e));
  EXPECT_EQ(shownOf(swapped), "ab?d?fghi");
  QByteArray zeroed = good_;
  std::fill_n(bytes(zeroed, c), kPage, uchar{0});
  EXPECT_EQ(shownOf(zeroed), "ab?defghi");
  QByteArray strange = good_;
  std::copy_n(bytes(foreign, c + 1), kPage, bytes(strange, c));
  EXPECT_EQ(shownOf(strange), "ab?defghi");
  QByteArray first = good_;
  bytes(first, 0)[24] ^= 4;  // the count of changes
  write(path_, first);
  EXPECT_EQ(failureOf([&] { OpenDatabase(path_); }), failure::kPageDamaged);
}

// Whatever is written, by whichever way of the engine.
TEST_F(Pages, AreWholeAfterEveryWrite) {
  const char* const all[] = {
      "DELETE FROM MAIN WHERE ID < 9",
      "VACUUM",
      // Beyond the cache, taken back, and with pages that are free again before they are written.
      "PRAGMA cache_size = 10; BEGIN; WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM "
      "n WHERE i < 900) INSERT INTO MAIN (Note) SELECT hex(zeroblob(1000 + i)) FROM n; SAVEPOINT "
      "s; DELETE FROM MAIN WHERE ID % 3 > 0; ROLLBACK TO s; DELETE FROM MAIN WHERE ID > 500; "
      "COMMIT",
      "PRAGMA secure_delete = OFF; PRAGMA auto_vacuum = FULL; VACUUM; DELETE FROM MAIN WHERE ID % "
      "2; BEGIN; UPDATE MAIN SET Note = hex(zeroblob(9000)); DELETE FROM MAIN WHERE ID > 100; "
      "COMMIT",
      "PRAGMA journal_mode = WAL; UPDATE MAIN SET Titolo = 'x'; PRAGMA journal_mode = DELETE",
  };
  Outside file(archive_.path());
  for (const char* statements : all) {
    file.exec(statements);
    EXPECT_EQ(damagedIn(contentOf(archive_.path())), QVector<qsizetype>()) << statements;
    EXPECT_EQ(file.found("PRAGMA integrity_check", u' ', u' '), "ok");
  }
  // What a plain tool plays back from the journal is whole too.
  QByteArray journal;
  QByteArray during;
  file.exec("PRAGMA cache_size = 10; BEGIN; UPDATE MAIN SET Note = Note || 'x' WHERE ID % 2 = 0");
  journal = contentOf(archive_.path() + "-journal");
  during = contentOf(archive_.path());
  file.exec("ROLLBACK");
  write(path_, during);
  write(path_ + "-journal", journal);
  SQLite::Database(path_.toStdString(), SQLite::OPEN_READWRITE).execAndGet("SELECT 1 FROM MAIN");
  EXPECT_EQ(damagedIn(contentOf(path_)), QVector<qsizetype>());
}

TEST_F(Pages, OfOtherToolsAreCheckedAtOpening) {
  Outside(archive_.path()).exec("VACUUM");
  const auto without = [&](const QByteArray& statements) {
    QFile::remove(path_);
    {
      SQLite::Database plain(path_.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
      addLanguage(plain.getHandle());
      plain.exec("PRAGMA application_id = " + std::to_string(kApplicationId) +
                 "; CREATE TABLE MAIN (ID INTEGER PRIMARY KEY, Note TEXT);"
                 "CREATE INDEX MAIN_2 ON MAIN (Note); INSERT INTO MAIN VALUES (1, 'a'), (2, 'b');" +
                 statements.toStdString());
    }
    return failureOf([&] { EXPECT_EQ(titlesIn(path_), "ab"); });
  };
  EXPECT_EQ(without(""), 0);
  // It gets its checksums where it is written anew.
  const QString compact = archive_.path("con #spazi %.tvx");
  CompactDatabase(path_, compact);
  EXPECT_TRUE(VerifyPages(compact).hasChecksums && !VerifyPages(path_).hasChecksums);
  EXPECT_EQ(titlesIn(compact), "ab");
  EXPECT_EQ(failureOf([&] { CompactDatabase(path_, compact); }), failure::kFileExists);
  QByteArray spoilt = contentOf(compact);
  bytes(spoilt, 1)[kPage / 2] ^= 1;
  write(compact, spoilt);
  EXPECT_EQ(VerifyPages(compact).damaged, std::vector<qint64>{2});
  EXPECT_EQ(without("PRAGMA writable_schema = 1; DELETE FROM sqlite_schema WHERE name = 'MAIN_2'"),
            failure::kDamaged);
}

}  // namespace
}  // namespace store
