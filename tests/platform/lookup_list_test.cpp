#include "platform/lookup_list.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "store/failure.h"

namespace platform {
namespace {

class LookupListTest : public ::testing::Test {
 protected:
  LookupList::Source source() {
    LookupList::Source source;
    source.load = [this](LookupList& list) {
      ++loads_;
      for (const auto& [text, key] : values_) list.addItem(text, key);
      if (broken_) throw store::Failure(store::failure::kDiskError, QStringLiteral("guasto"));
    };
    source.textOf = [](qint64 key) { return QStringLiteral("testo di %1").arg(key); };
    return source;
  }

  QVector<std::pair<QString, qint64>> values_ = {
      {QStringLiteral("Adelphi"), 7},
      {QStringLiteral("Edizioni Èlite"), 12},
      {QStringLiteral("Einaudi"), 3},
  };
  int loads_ = 0;
  bool broken_ = false;
  LookupList list_{source()};
  QAbstractItemModelTester tester_{&list_, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(LookupListTest, AsksForSingleTextsUntilItIsLoaded) {
  EXPECT_EQ(list_.text(3), QStringLiteral("testo di 3"));
  EXPECT_EQ(list_.text(0), QString());
  EXPECT_EQ(list_.rowCount(), 0);
  EXPECT_EQ(loads_, 0);
  list_.ensureLoaded();
  list_.ensureLoaded();
  EXPECT_EQ(loads_, 1);
  EXPECT_EQ(list_.text(3), QStringLiteral("Einaudi"));
  EXPECT_EQ(list_.text(99), QString());
}

TEST_F(LookupListTest, BeginsWithTheBlankValue) {
  list_.ensureLoaded();
  ASSERT_EQ(list_.rowCount(), 4);
  EXPECT_EQ(list_.keyAt(0), 0);
  EXPECT_EQ(list_.textAt(0), QString());
  EXPECT_EQ(list_.index(3).data().toString(), QStringLiteral("Einaudi"));
  EXPECT_EQ(list_.keyAt(3), 3);
}

TEST_F(LookupListTest, FindsRows) {
  EXPECT_EQ(list_.rowOfKey(0), 0);
  EXPECT_EQ(list_.rowOfKey(12), 2);
  EXPECT_EQ(list_.rowOfKey(99), -1);
  const struct {
    QString text;
    int exact;
    int beginning;
  } cases[] = {
      {QString(), 0, 0},
      {QStringLiteral("EINAUDI"), 3, 3},
      {QStringLiteral("e"), -1, 2},
      {QStringLiteral("edizioni è"), -1, 2},
      {QStringLiteral("ei"), -1, 3},
      {QStringLiteral("naudi"), -1, -1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(list_.rowOfText(c.text), c.exact) << qPrintable(c.text);
    EXPECT_EQ(list_.rowOfPrefix(c.text), c.beginning) << qPrintable(c.text);
  }
}

TEST_F(LookupListTest, IsReadAnewAfterItHasChanged) {
  list_.ensureLoaded();
  QSignalSpy changed(&list_, &LookupList::changed);
  values_ = {{QStringLiteral("Bur"), 5}};
  list_.invalidate();
  EXPECT_EQ(changed.count(), 1);
  EXPECT_FALSE(list_.isLoaded());
  EXPECT_EQ(list_.text(5), QStringLiteral("testo di 5"));
  EXPECT_EQ(list_.rowOfKey(5), 1);
  EXPECT_EQ(list_.rowOfKey(7), -1);
  EXPECT_EQ(list_.rowCount(), 2);
}

TEST_F(LookupListTest, HoldsNothingAfterAFailureAndCanBeReadAgain) {
  broken_ = true;
  EXPECT_THROW(list_.ensureLoaded(), store::Failure);
  EXPECT_FALSE(list_.isLoaded());
  EXPECT_EQ(list_.rowCount(), 0);
  broken_ = false;
  list_.ensureLoaded();
  EXPECT_EQ(list_.rowCount(), 4);
}

}  // namespace
}  // namespace platform
