#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>

namespace tavolix {
namespace {

// What a folder may include besides itself. The areas know nothing of each other.
const QString kCore = "store platform model core";
const QMap<QString, QString> kUses = {{"src/store", ""},
                                      {"src/platform", "store"},
                                      {"src/model", "store"},
                                      {"src/core", "store platform model"},
                                      {"src/archives", kCore},
                                      {"src/workspace", kCore},
                                      {"src/query", kCore},
                                      {"src/analysis", kCore},
                                      {"src/output", kCore},
                                      {"src/assist", kCore},
                                      {"src/app", kCore + " archives workspace query assist"},
                                      {"tools", "store model"},
                                      {"tests/store", "model"},
                                      {"tests/platform", "store"},
                                      {"tests/model", "store"},
                                      {"tests/tools", "store model"}};

TEST(Layers, IncludeDownwardsOnly) {
  const QString root = qEnvironmentVariable("TAVOLIX_SOURCE") + '/';
  const QRegularExpression include("^\\s*#\\s*include\\s+\"([a-z]+)/",
                                   QRegularExpression::MultilineOption);
  int included = 0;
  for (const char* top : {"src", "tools", "tests"}) {
    QDirIterator files(root + top, {"*.h", "*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
      QFile file(files.next());
      const QString folder = file.fileName().mid(root.size()).section('/', 0, -2);
      if (folder.startsWith("tests") && !kUses.contains(folder)) continue;
      const QStringList allowed = kUses.value(folder).split(' ') << folder.section('/', -1);
      ASSERT_TRUE(kUses.contains(folder) && file.open(QIODevice::ReadOnly)) << qPrintable(folder);
      for (const auto& match : include.globalMatch(QString::fromUtf8(file.readAll()))) {
        ++included;
        EXPECT_TRUE(allowed.contains(match.captured(1)))
            << qPrintable(file.fileName() + ' ' + match.captured(1));
      }
    }
  }
  EXPECT_GT(included, 100);
}

}  // namespace
}  // namespace tavolix
