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
  copyMissingFiles(qEnvironmentVariable("TAVOLIX_DATA"), installed);
  const QFileInfoList files = QDir(installed).entryInfoList(QDir::Files);
  ASSERT_GE(files.size(), 3);
  for (const QFileInfo& file : files) QFile::setPermissions(file.filePath(), QFile::ReadOwner);
  const auto target = [&](const QFileInfo& file) {
    return folder.filePath("target/" + file.fileName());
  };
  for (int start = std::max(50, harm::casesWanted(60)); start > 0; --start) {
    std::atomic<bool> done = false;
    std::jthread program([&] {
      copyMissingFiles(installed, folder.filePath("target"));
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
  }
}

}  // namespace
}  // namespace tavolix
