#include "platform/single_instance.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>

namespace platform {
namespace {

TEST(SingleInstanceTest, OneAtATimeInAFolderUntilItEndsInAnyWay) {
  const QTemporaryDir parent;
  const QString folder = parent.filePath("a/b");
  const pid_t child = ::fork();
  if (child == 0) {
    const SingleInstance abandoned(folder);
    ::_exit(abandoned.isFirst() ? 7 : 8);  // as if killed: nothing is let go
  }
  int end = 0;
  ASSERT_EQ(::waitpid(child, &end, 0), child);
  EXPECT_EQ(WEXITSTATUS(end), 7);
  const SingleInstance first(folder);
  EXPECT_TRUE(first.isFirst());
  EXPECT_FALSE(SingleInstance(folder).isFirst());
  EXPECT_TRUE(SingleInstance(parent.path()).isFirst());
}

}  // namespace
}  // namespace platform
