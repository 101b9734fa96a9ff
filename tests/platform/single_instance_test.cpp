#include "platform/single_instance.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>
#include <optional>

namespace platform {
namespace {

// Another process that holds the lock until it is killed.
class OtherProcess final {
 public:
  explicit OtherProcess(const QString& folder) {
    int ready[2] = {};
    if (::pipe(ready) != 0) return;
    child_ = ::fork();
    if (child_ == 0) {
      const SingleInstance held(folder);
      const char first = held.isFirst() ? 'y' : 'n';
      if (::write(ready[1], &first, 1) == 1) ::pause();
      ::_exit(0);
    }
    if (::read(ready[0], &first_, 1) != 1) first_ = '?';
    ::close(ready[0]);
    ::close(ready[1]);
  }
  ~OtherProcess() {
    ::kill(child_, SIGKILL);
    ::waitpid(child_, nullptr, 0);
  }
  char first() const { return first_; }

 private:
  pid_t child_ = -1;
  char first_ = '?';
};

TEST(SingleInstanceTest, OneAtATimeInAFolder) {
  const QTemporaryDir folder;
  const QTemporaryDir otherUser;
  {
    const SingleInstance first(folder.path());
    const SingleInstance second(folder.path());
    const SingleInstance other(otherUser.path());
    EXPECT_TRUE(first.isFirst());
    EXPECT_FALSE(second.isFirst());
    EXPECT_TRUE(other.isFirst());
  }
  EXPECT_TRUE(SingleInstance(folder.path()).isFirst());
}

TEST(SingleInstanceTest, KilledProcessLeavesNoLock) {
  const QTemporaryDir folder;
  {
    const OtherProcess other(folder.path());
    ASSERT_EQ(other.first(), 'y');
    EXPECT_FALSE(SingleInstance(folder.path()).isFirst());
  }
  EXPECT_TRUE(SingleInstance(folder.path()).isFirst());
}

TEST(SingleInstanceTest, MakesItsFolderAndRunsWithoutOne) {
  const QTemporaryDir folder;
  {
    const SingleInstance first(folder.filePath("a/b"));
    EXPECT_FALSE(SingleInstance(folder.filePath("a/b")).isFirst());
  }
  QFile file(folder.filePath("file"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  EXPECT_TRUE(SingleInstance(folder.filePath("file")).isFirst());
}

}  // namespace
}  // namespace platform
