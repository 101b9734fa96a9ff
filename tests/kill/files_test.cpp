#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>
#include <QThread>

#include "archives/file_archivio.h"
#include "child.h"
#include "core/program_folder.h"
#include "harm/chance.h"
#include "store/database.h"
#include "store/whole_file.h"

namespace tavolix {
namespace {

QByteArray contentOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A program that is killed while it does something to files leaves a whole archive, the old one or
// the new one, and nothing that the next start does not clear.
class KilledWork : public ::testing::Test {
 protected:
  QString path(const QString& name) const { return folder_.filePath(name); }

  void SetUp() override {
    const QString data = qEnvironmentVariable("TAVOLIX_DATA");
    for (const char* name : {"modello.tvx", "tvx.ini"}) QFile::copy(data + u'/' + name, path(name));
    for (const char* name : {"uno.tvx", "due.tvx"}) {
      QFile::copy(data + "/esempio.tvx", path(name));
      store::Outside file(path(name));
      file.exec(std::string("UPDATE MAIN SET Note = hex(zeroblob(900)) || '") + name + "'");
    }
    // A page of a table, so that all of it is written anew.
    QByteArray damaged = contentOf(path("uno.tvx"));
    constexpr qsizetype kPage = 4096;
    qsizetype page = 50 * kPage;
    while (damaged[page] != 13) page += kPage;
    damaged.replace(page + 100, 300, QByteArray(300, '\xff'));
    QFile file(path("guasto"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(damaged);
    QDir(folder_.path()).mkdir("una");
    QDir(folder_.path()).mkdir("altra");
    ASSERT_TRUE(QFile::copy(path("uno.tvx"), path("una/casa.tvx")));
    ASSERT_TRUE(QFile::copy(path("due.tvx"), path("altra/casa.tvx")));
    ASSERT_TRUE(QFile::copy(path("uno.tvx"), path("casa.tvx")));
  }

  void killOnce(const QString& work) {
    Child child("files", {work, folder_.path()}, folder_.path());
    ASSERT_TRUE(child.waitForLines(1));
    QThread::usleep(static_cast<unsigned>(harm::below(random_, 300000)));
    ASSERT_TRUE(child.kill());
  }

  // A duplicate is as the archive; one that is renamed has either name.
  void checkOther(const QString& work) {
    if (!QFile::exists(path("altro.tvx"))) return;
    EXPECT_EQ(QFile::exists(path("casa.tvx")), work == "duplicate");
    if (work == "duplicate") {
      EXPECT_TRUE(contentOf(path("altro.tvx")) == contentOf(path("casa.tvx")));
      QFile::remove(path("altro.tvx"));
    } else {
      QFile::rename(path("altro.tvx"), path("casa.tvx"));
    }
  }

  void checkArchive() {
    const QByteArray found = contentOf(path("casa.tvx"));
    for (const QFileInfo& kept : QDir(folder_.path()).entryInfoList({"casa.tvx.danneggiato*"})) {
      EXPECT_EQ(contentOf(kept.filePath()), contentOf(path("guasto")));
      QFile::remove(kept.filePath());
    }
    if (found == contentOf(path("guasto"))) {
      QFile::remove(path("casa.tvx"));
      QFile::copy(path("uno.tvx"), path("casa.tvx"));
      return;
    }
    EXPECT_TRUE(store::VerifyPages(path("casa.tvx")).damaged.empty());
    const store::DatabasePtr archive = store::OpenDatabase(path("casa.tvx"));
    EXPECT_TRUE(archive->IntegrityCheck());
    archive->Close();
    // All of one state; what is repaired lacks the rows of a page.
    const QString states =
        Outside(path("casa.tvx"))
            .found("SELECT count(DISTINCT Note), count(*) / 100 FROM MAIN", ' ', ' ');
    EXPECT_EQ(states, "1 15");
  }

  QTemporaryDir folder_;
  std::mt19937 random_{harm::seed(std::random_device()() % 1000000)};
};

TEST_F(KilledWork, LeavesAWholeArchive) {
  const int cases = harm::casesWanted(30);
  const QStringList works{"backup", "restore", "duplicate", "rename", "compact", "repair"};
  qsizetype unfinished = 0;
  for (int i = 0; i < cases; ++i) {
    const QString& work = works[i % works.size()];
    SCOPED_TRACE(work.toStdString());
    ASSERT_NO_FATAL_FAILURE(killOnce(work));
    unfinished += QDir(folder_.path()).entryList({"*.parziale-tvx"}, QDir::Files).size();
    TogliResti(folder_.path());
    checkOther(work);
    ASSERT_NO_FATAL_FAILURE(checkArchive());
    QFile::remove(path("posto"));
    const QStringList left = QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden);
    EXPECT_EQ(left.join(' '), QString("casa.tvx due.tvx guasto modello.tvx tvx.ini uno.tvx"));
  }
  std::cout << cases << " kills, " << unfinished << " files left unfinished\n";
  EXPECT_GT(unfinished, 0);
}

}  // namespace
}  // namespace tavolix
