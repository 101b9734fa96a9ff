#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "harm/chance.h"
#include "hostile/jet_reader.h"
#include "store/archive.h"

namespace store {
namespace {

// Bytes that other programs or a failing disk have changed, mostly in the heads of pages, where
// numbers and places lie.
void spoil(QByteArray& content, std::mt19937& random) {
  constexpr qsizetype kPage = 4096;
  static constexpr char kBytes[] = {0, 1, 2, 4, 127, -1, -128, 64};
  for (int change = 1 + harm::below(random, 12); change > 0; --change) {
    const qsizetype page = harm::below(random, content.size() / kPage);
    const qsizetype place = harm::below(random, random() % 2 == 0 ? qsizetype{80} : kPage);
    const bool isAny = random() % 2 == 0;
    content[page * kPage + place] =
        isAny ? static_cast<char>(random() % 256) : harm::anyOf(random, kBytes);
  }
  if (random() % 8 == 0) content.truncate(harm::below(random, content.size()));
}

TEST(Hostile, OldFilesThatAreDamagedAnyhow) {
  std::mt19937 random(harm::seed());
  const QTemporaryDir folder;
  const QByteArray whole[] = {sourceFile("tests/data/jet/rubrica-v3.arc"),
                              sourceFile("tests/data/jet/rubrica.arc")};
  int readable = 0;
  const int rounds = harm::casesWanted(300);
  for (int round = 0; round < rounds; ++round) {
    SCOPED_TRACE(round);
    QByteArray content = whole[round % 2];
    spoil(content, random);
    const QString path = folder.filePath("file");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    readable += readEverything(path) > 0 ? 1 : 0;
  }
  EXPECT_GT(readable, rounds / 2);
}

}  // namespace
}  // namespace store
