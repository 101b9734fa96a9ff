#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>

namespace tavolix {
namespace {

// What a folder may include besides itself. The areas know nothing of each other; tests know what
// they test and what lies below it.
const QString kCore = "store platform model core";
const QString kAll = kCore + " archives workspace query analysis output assist";
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
                                      {"src/app", kAll},
                                      {"tools", "store model"},
                                      {"benchmarks", kAll + " app tools"},
                                      {"tests", ""},
                                      {"tests/store", "model"},
                                      {"tests/platform", "store"},
                                      {"tests/core", "store platform model"},
                                      {"tests/archives", kCore},
                                      {"tests/output", kCore},
                                      {"tests/assist", kCore},
                                      {"tests/workspace", kAll},
                                      {"tests/analysis", kAll},
                                      {"tests/kill", kAll + " app harm"},
                                      {"tests/tools", "store model harm"},
                                      {"tests/harm", "store model tools"},
                                      {"tests/damage", "store model tools harm"},
                                      {"tests/disk", "store model tools harm"},
                                      {"tests/hostile", "store model harm"},
                                      {"tests/fuzz", "store model hostile"}};

TEST(Layers, IncludeDownwardsOnly) {
  const QString root = qEnvironmentVariable("TAVOLIX_SOURCE") + '/';
  const QRegularExpression include("^\\s*#\\s*include\\s+\"([^\"/]+)/",
                                   QRegularExpression::MultilineOption);
  int included = 0;
  for (const char* top : {"src", "tools", "tests", "benchmarks"}) {
    QDirIterator files(root + top, {"*.h", "*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
      QFile file(files.next());
      const QString folder = file.fileName().mid(root.size()).section('/', 0, -2);
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
