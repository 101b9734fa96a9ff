#include "platform/lookup_list.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "store/failure.h"
#include "value_archive.h"

namespace platform {
namespace {

class LookupListTest : public ::testing::Test {
 protected:
  ValueArchive archive_{{{QStringLiteral("Adelphi"), 7},
                         {QStringLiteral("Edizioni Èlite"), 12},
                         {QStringLiteral("Einaudi"), 3},
                         {QStringLiteral("èa"), 20},
                         {QStringLiteral("L'Orma"), 21},
                         {QStringLiteral("[*]"), 22}}};
  LookupList list_{archive_.source()};
  QAbstractItemModelTester tester_{&list_, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(LookupListTest, AsksForSingleTextsUntilItIsOpened) {
  EXPECT_EQ(list_.text(3), QStringLiteral("Einaudi"));
  EXPECT_EQ(list_.text(0), QString());
  EXPECT_EQ(list_.rowCount(), 0);
  EXPECT_EQ(archive_.loads, 0);
  list_.ensureLoaded();
  list_.ensureLoaded();
  EXPECT_EQ(archive_.loads, 1);
  EXPECT_EQ(list_.text(99), QString());
}

TEST_F(LookupListTest, FindsRows) {
  EXPECT_EQ(list_.rowOfKey(0), 0);
  EXPECT_EQ(list_.rowOfKey(99), -1);
  EXPECT_EQ(list_.rowCount(), 7);
  for (int row = 0; row < list_.rowCount(); ++row) {
    EXPECT_EQ(list_.rowOfKey(list_.keyAt(row)), row);
    EXPECT_EQ(list_.rowOfText(list_.textAt(row)), row);
    EXPECT_EQ(list_.rowOfPrefix(list_.textAt(row).toUpper()), row);
    EXPECT_EQ(list_.index(row).data().toString(), list_.text(list_.keyAt(row)));
  }
  const struct {
    QString text;
    QString exact;
    QString beginning;  // "-" for none
  } cases[] = {
      {QStringLiteral("EINAUDI"), "Einaudi", "Einaudi"},
      {QStringLiteral("e"), "-", "Edizioni Èlite"},
      {QStringLiteral("edizioni è"), "-", "Edizioni Èlite"},
      {QStringLiteral("edizioni e"), "-", "-"},
      {QStringLiteral("È"), "-", "èa"},
      {QStringLiteral("ei"), "-", "Einaudi"},
      {QStringLiteral("l'"), "-", "L'Orma"},
      {QStringLiteral("["), "-", "[*]"},
      {QStringLiteral("naudi"), "-", "-"},
      {QStringLiteral("zz"), "-", "-"},
  };
  const auto shown = [&](int row) { return row < 0 ? QStringLiteral("-") : list_.textAt(row); };
  for (const auto& c : cases) {
    EXPECT_EQ(shown(list_.rowOfText(c.text)), c.exact) << qPrintable(c.text);
    EXPECT_EQ(shown(list_.rowOfPrefix(c.text)), c.beginning) << qPrintable(c.text);
  }
}

TEST_F(LookupListTest, IsReadAnewAfterItHasChanged) {
  list_.ensureLoaded();
  QSignalSpy changed(&list_, &LookupList::changed);
  archive_.set({{QStringLiteral("Bur"), 5}});
  list_.invalidate();
  EXPECT_EQ(changed.count(), 1);
  EXPECT_FALSE(list_.isLoaded());
  EXPECT_EQ(list_.rowOfKey(5), 1);
  EXPECT_EQ(list_.rowOfKey(7), -1);
  EXPECT_EQ(list_.rowCount(), 2);
  store::CloseWorkspace();
  EXPECT_EQ(list_.rowCount(), 0);
}

TEST_F(LookupListTest, HoldsNothingAfterAFailureAndCanBeReadAgain) {
  archive_.broken = true;
  EXPECT_THROW(list_.ensureLoaded(), store::Failure);
  EXPECT_FALSE(list_.isLoaded());
  EXPECT_EQ(list_.rowCount(), 0);
  archive_.broken = false;
  list_.ensureLoaded();
  EXPECT_EQ(list_.rowCount(), 7);
}

}  // namespace
}  // namespace platform
