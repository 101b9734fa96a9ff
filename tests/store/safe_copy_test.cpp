#include "store/safe_copy.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <QFile>
#include <functional>

#include "store/archive.h"
#include "store/file_failure.h"
#include "store/outside.h"
#include "store/patience.h"
#include "store/unfinished_file.h"
#include "store/whole_file.h"

namespace store {
namespace {

QByteArray contentOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& content) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(content);
}

class SafeCopy : public ::testing::Test {
 protected:
  SafeCopy() {
    mostPatience = 20;
    archive_.outside(
        "UPDATE MAIN SET Note = hex(zeroblob(900000)); DELETE FROM MAIN WHERE ID = 2;"
        "UPDATE MAIN SET Note = hex(zeroblob(9000))");
    archive_->Close();
    source_ = archive_.path();
    write(target_, "older");
  }
  ~SafeCopy() override { mostPatience = 2000; }

  // What a copy that does not come about leaves: the older one, and nothing beside it.
  void expectAsBefore() const {
    EXPECT_EQ(contentOf(target_), "older");
    EXPECT_EQ(ClearLeftovers(archive_.path(".")), QStringList());
  }

  Archive archive_;
  QString source_;
  QString target_ = archive_.path("copia.tvx");
};

TEST_F(SafeCopy, IsTheSameFile) {
  ASSERT_GT(QFileInfo(source_).size(), 3 << 20);
  qint64 last = -1;
  const auto steps = [&](qint64 done, qint64 total) {
    EXPECT_TRUE(done > last && done < total && total == QFileInfo(source_).size());
    last = done;
    return true;
  };
  EXPECT_TRUE(CopyDatabase(source_, target_, NotWhole::Refuse, steps).isCopied);
  EXPECT_EQ(contentOf(target_), contentOf(source_));
  EXPECT_GT(last, QFileInfo(source_).size() * 3 / 4);
  const QString other = archive_.path("altra.tvx");
  ASSERT_TRUE(QFile::link(target_, other));
  write(source_, "no archive");
  EXPECT_EQ(CopyDatabase(source_, other).condition, Condition::NoArchive);
  EXPECT_TRUE(CopyDatabase(source_, other, NotWhole::Copy).isCopied);
  EXPECT_TRUE(QFileInfo(other).isSymLink());
  EXPECT_EQ(contentOf(target_), "no archive");
}

TEST_F(SafeCopy, OfDamageIsToldFirst) {
  QByteArray spoilt = contentOf(source_);
  spoilt[5 * 4096 + 7] ^= 1;
  write(source_, spoilt);
  const CopyReport told = CopyDatabase(source_, target_);
  EXPECT_FALSE(told.isCopied);
  EXPECT_EQ(told.condition, Condition::Damaged);
  EXPECT_EQ(told.damaged, std::vector<qint64>{6});
  expectAsBefore();
  EXPECT_EQ(failureOf([&] { CompactInPlace(source_); }), failure::kPageDamaged);
  EXPECT_EQ(contentOf(source_), spoilt);
  write(source_, spoilt.left(spoilt.size() - 1));
  EXPECT_EQ(CopyDatabase(source_, target_).condition, Condition::Damaged);
  expectAsBefore();
  EXPECT_TRUE(CopyDatabase(source_, target_, NotWhole::Copy).isCopied);
  EXPECT_EQ(contentOf(target_) + spoilt.right(1), spoilt);
}

TEST_F(SafeCopy, FailsAndLeavesTheOlderOne) {
  const struct {
    const char* what;
    QString source;
    QString target;
    int number;
  } cases[] = {
      {"no source", archive_.path("nessuno"), target_, file_failure::kNotFound},
      {"no folder of it", archive_.path("x/y"), target_, file_failure::kPathNotFound},
      {"source a folder", archive_.path("."), target_, file_failure::kAccess},
      {"target a folder", source_, archive_.path("."), file_failure::kAccess},
      {"no folder there", source_, archive_.path("x/y"), file_failure::kPathNotFound},
      {"no target", source_, "", file_failure::kPathNotFound},
      {"itself", source_, archive_.path("./") + QFileInfo(source_).fileName(),
       file_failure::kDenied},
      {"a device", source_, "/dev/full", file_failure::kAccess},
      {"too long", source_, archive_.path(QString(250, 'x')), file_failure::kAccess},
  };
  for (const auto& [what, source, target, number] : cases) {
    EXPECT_EQ(failureOf([&] { CopyDatabase(source, target); }), number) << what;
    expectAsBefore();
  }
  // What happens meanwhile.
  int steps = 0;
  const auto at = [&](int step, const std::function<bool()>& event) {
    steps = 0;
    return failureOf([&] {
      CopyDatabase(source_, target_, NotWhole::Refuse,
                   [&](qint64, qint64) { return ++steps != step || event(); });
    });
  };
  for (int step : {1, 2, 6, 8}) {
    EXPECT_EQ(at(step, [] { return false; }), failure::kInterrupted);
    EXPECT_EQ(steps, step);
    expectAsBefore();
  }
  EXPECT_EQ(at(3,
               [&] {
                 // Whoever looks for leftovers meanwhile does not take it away.
                 EXPECT_EQ(ClearLeftovers(archive_.path(".")), QStringList());
                 EXPECT_EQ(failureOf([&] { CopyDatabase(source_, target_); }),
                           file_failure::kDenied);
                 QFile(source_).open(QIODevice::Append);
                 return truncate(source_.toUtf8().constData(), 4096) == 0;
               }),
            failure::kChanged);
  expectAsBefore();
}

TEST_F(SafeCopy, WaitsForOthers) {
  const auto writing = archive_.hold("BEGIN EXCLUSIVE");
  EXPECT_EQ(failureOf([&] { CopyDatabase(source_, target_); }), failure::kLocked);
  EXPECT_EQ(failureOf([&] { CompactInPlace(source_); }), failure::kLocked);
  expectAsBefore();
  const QString free = archive_.path("libero.tvx");
  write(free, "no archive");
  EXPECT_EQ(failureOf([&] { CopyDatabase(free, source_, NotWhole::Copy); }), failure::kLocked);
  EXPECT_TRUE(QFile::exists(source_ + "-journal") || QFileInfo(source_).size() > 10);
}

// Closing any descriptor of a file would take the locks away that the process holds on it.
TEST_F(SafeCopy, OfAnOpenArchiveLeavesItsLocks) {
  const DatabasePtr open = OpenDatabase(source_);
  open->BeginTrans();
  EXPECT_TRUE(CopyDatabase(source_, target_).isCopied);
  EXPECT_EQ(contentOf(target_).size(), QFileInfo(source_).size());
  const int descriptor = ::open(source_.toUtf8().constData(), O_RDWR);
  struct flock all = {};
  all.l_type = F_WRLCK;
  ASSERT_EQ(::fcntl(descriptor, F_OFD_GETLK, &all), 0);
  EXPECT_NE(all.l_type, F_UNLCK);
  open->Rollback();
  ::close(descriptor);
}

TEST_F(SafeCopy, CompactionReplacesTheArchive) {
  const qint64 before = QFileInfo(source_).size();
  const QString rows = archive_.outsideValues("SELECT Titolo || length(Note) FROM MAIN");
  QFile::setPermissions(source_, QFile::ReadOwner | QFile::WriteOwner);
  int steps = 0;
  EXPECT_EQ(failureOf([&] { CompactInPlace(source_, [&](qint64, qint64) { return false; }); }),
            failure::kInterrupted);
  EXPECT_EQ(QFileInfo(source_).size(), before);
  CompactInPlace(source_, [&](qint64 done, qint64 total) {
    ++steps;
    return done <= total;
  });
  EXPECT_GT(steps, 0);
  EXPECT_LT(QFileInfo(source_).size(), before / 4);
  EXPECT_TRUE(VerifyPages(source_).damaged.empty());
  EXPECT_EQ(archive_.outsideValues("SELECT Titolo || length(Note) FROM MAIN"), rows);
  EXPECT_FALSE(QFile::permissions(source_) & QFile::ReadGroup);
  // What a killed program leaves.
  write(target_ + ".parziale-tvx", "half");
  write(target_ + ".parziale-tvx-journal", "half");
  EXPECT_EQ(ClearLeftovers(archive_.path(".")), QStringList{"copia.tvx.parziale-tvx"});
  EXPECT_FALSE(QFile::exists(target_ + ".parziale-tvx-journal"));
  EXPECT_EQ(ClearLeftovers(archive_.path("nowhere")), QStringList());
}

}  // namespace
}  // namespace store
