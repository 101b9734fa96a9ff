#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QTextStream>

#include "core/program_folder.h"

namespace tavolix {
namespace {

// Layers from the lowest; the areas share one, and know nothing of each other.
const QMap<QString, int>& layers() {
  static const QMap<QString, int> all = {
      {"store", 0}, {"platform", 1}, {"core", 2},   {"archives", 3}, {"workspace", 3},
      {"query", 3}, {"analysis", 3}, {"output", 3}, {"assist", 3},   {"app", 4}};
  return all;
}

TEST(Layers, IncludeDownwardsOnly) {
  const QString root = qEnvironmentVariable("TAVOLIX_SOURCE") + "/src/";
  static const QRegularExpression include("^\\s*#\\s*include\\s+\"([a-z]+)/");
  int included = 0;
  QDirIterator files(root, {"*.h", "*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    QFile file(files.next());
    const QString own = file.fileName().mid(root.size()).section('/', 0, 0);
    ASSERT_TRUE(layers().contains(own)) << qPrintable(own);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QTextStream lines(&file);
    while (!lines.atEnd()) {
      const auto match = include.match(lines.readLine());
      if (!match.hasMatch()) continue;
      ++included;
      const QString other = match.captured(1);
      ASSERT_TRUE(layers().contains(other)) << qPrintable(file.fileName() + ' ' + other);
      if (other == own) continue;
      EXPECT_LT(layers()[other], layers()[own]) << qPrintable(file.fileName() + ' ' + other);
    }
  }
  EXPECT_GT(included, 100);
}

}  // namespace
}  // namespace tavolix
