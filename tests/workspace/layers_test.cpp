#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>

#include "core/program_folder.h"

namespace tavolix {
namespace {

// Layers from the lowest; the areas share one, and know nothing of each other.
const QMap<QString, int> kLayers = {
    {"store", 0}, {"platform", 1}, {"core", 2},   {"archives", 3}, {"workspace", 3},
    {"query", 3}, {"analysis", 3}, {"output", 3}, {"assist", 3},   {"app", 4}};

TEST(Layers, IncludeDownwardsOnly) {
  const QString root = qEnvironmentVariable("TAVOLIX_SOURCE") + "/src/";
  const QRegularExpression include("^\\s*#\\s*include\\s+\"([a-z]+)/",
                                   QRegularExpression::MultilineOption);
  int included = 0;
  QDirIterator files(root, {"*.h", "*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    QFile file(files.next());
    const QString own = file.fileName().mid(root.size()).section('/', 0, 0);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    for (const auto& match : include.globalMatch(QString::fromUtf8(file.readAll()))) {
      ++included;
      const QString other = match.captured(1);
      EXPECT_TRUE(other == own || kLayers.value(other, 9) < kLayers.value(own, -1))
          << qPrintable(file.fileName() + ' ' + other);
    }
  }
  EXPECT_GT(included, 100);
}

}  // namespace
}  // namespace tavolix
