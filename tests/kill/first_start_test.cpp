#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QTemporaryDir>
#include <algorithm>
#include <atomic>
#include <thread>

#include "app/program_folder.h"
#include "harm/chance.h"

namespace tavolix {
namespace {

QByteArray contentOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// No file of the first start is seen before it is whole and can be written: what a watcher never
// sees, a kill cannot leave.
TEST(FirstStart, LeavesNoHalfFiles) {
  const QTemporaryDir folder;
  const QString installed = folder.filePath("installed");
  layDownFiles(qEnvironmentVariable("TAVOLIX_DATA"), installed);
  const QFileInfoList files = QDir(installed).entryInfoList(QDir::Files);
  ASSERT_GE(files.size(), 3);
  for (const QFileInfo& file : files) QFile::setPermissions(file.filePath(), QFile::ReadOwner);
  const auto target = [&](const QFileInfo& file) {
    return folder.filePath("target/" + file.fileName());
  };
  for (int start = std::max(50, harm::casesWanted(60)); start > 0; --start) {
    std::atomic<bool> done = false;
    std::jthread program([&] {
      layDownFiles(installed, folder.filePath("target"));
      done = true;
    });
    while (!done) {
      for (const QFileInfo& file : files) {
        struct stat seen = {};
        if (::stat(QFile::encodeName(target(file)).constData(), &seen) != 0) continue;
        ASSERT_EQ(seen.st_size, file.size()) << qPrintable(file.fileName());
        ASSERT_TRUE(seen.st_mode & S_IWUSR) << qPrintable(file.fileName());
      }
    }
    for (const QFileInfo& file : files) {
      EXPECT_EQ(contentOf(target(file)), contentOf(file.filePath()));
      // The next start completes what one began.
      if (file != files[start % files.size()]) QFile::remove(target(file));
    }
    QFile::remove(folder.filePath("target/.installati"));
  }
}

void write(const QString& path, const QByteArray& content) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(content);
}

// What is the user's is laid down once, what is the program's follows it.
TEST(FirstStart, LaysFilesDown) {
  const QTemporaryDir folder;
  const auto installed = [&](const char* name) { return folder.filePath("da/") + name; };
  const auto own = [&](const char* name) { return folder.filePath("a/") + name; };
  const auto start = [&] { layDownFiles(folder.filePath("da"), folder.filePath("a")); };
  QDir(folder.path()).mkdir("da");
  write(installed("esempio.tvx"), "esempio");
  write(installed("modello.tvx"), "modello");
  write(installed("tvx.ini"), "[Application]\nRacAvvio=0\n[ManArc]\ndb_version=1\ndb_Ext=.tvx\n");
  start();
  write(own("tvx.ini"), "[Application]\nRacAvvio=3\n[ManArc]\ndb_version=1\ndb_Ext=.arc\n");
  write(own("esempio.tvx"), "cambiato");
  start();
  EXPECT_EQ(contentOf(own("esempio.tvx")), "cambiato");
  EXPECT_TRUE(
      contentOf(own("tvx.ini")).contains("RacAvvio=3\n[ManArc]\ndb_version=1\ndb_Ext=.arc"));
  // The program is renewed.
  write(installed("esempio.tvx"), "esempio 2");
  write(installed("modello.tvx"), "modello 2");
  write(installed("tvx.ini"), "[Application]\nRacAvvio=0\n[ManArc]\ndb_version=2\ndb_Ext=.tvx\n");
  start();
  EXPECT_EQ(contentOf(own("esempio.tvx")), "cambiato");
  EXPECT_EQ(contentOf(own("modello.tvx")), "modello 2");
  EXPECT_FALSE(QFile::exists(own("modello (vecchio).tvx")));
  EXPECT_TRUE(
      contentOf(own("tvx.ini")).contains("RacAvvio=3\n[ManArc]\ndb_version=2\ndb_Ext=.tvx"));
  for (const char* name : {"esempio.tvx", "modello.tvx", "tvx.ini"}) QFile::remove(own(name));
  start();
  EXPECT_FALSE(QFile::exists(own("esempio.tvx")));
  EXPECT_EQ(contentOf(own("modello.tvx")), "modello 2");
  EXPECT_FALSE(contentOf(own("tvx.ini")).contains("RacAvvio"));
  EXPECT_TRUE(contentOf(own("tvx.ini")).contains("db_version=2"));
  // What was written into the template outlives it.
  for (const char* number : {"3", "4"}) {
    write(own("modello.tvx"), QByteArray("libri ") + number);
    start();
    write(installed("modello.tvx"), QByteArray("modello ") + number);
    start();
    EXPECT_EQ(contentOf(own("modello.tvx")), QByteArray("modello ") + number);
  }
  EXPECT_EQ(contentOf(own("modello (vecchio).tvx")), "libri 3");
  EXPECT_EQ(contentOf(own("modello (vecchio 2).tvx")), "libri 4");
}

}  // namespace
}  // namespace tavolix
