#include "platform/data_combo.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QWheelEvent>

#include "desk.h"
#include "grid_archive.h"

namespace platform {
namespace {

class DataComboTest : public ::testing::Test {
 protected:
  DataComboTest() {
    combo_->SetList(list_);
    combo_.enter();
  }

  qlonglong key() { return combo_->Value().toLongLong(); }

  GridArchive archive_;
  LookupListPtr list_ = archive_.list();
  Desk<DataCombo> combo_;
};

TEST_F(DataComboTest, ShowsStoredKeysWithoutReadingTheList) {
  const std::pair<QVariant, const char*> cases[] = {{7, "Adelphi"}, {QVariant(), ""}, {99, ""}};
  for (const bool down : {false, true}) {
    for (const auto& [stored, text] : cases) {
      combo_->ShowValue(stored);
      combo_->SetDroppedDown(down);
      EXPECT_EQ(key(), stored.toLongLong());
      EXPECT_EQ(combo_->currentText(), text);
      EXPECT_FALSE(combo_->DataChanged());
    }
    EXPECT_EQ(archive_.loads, down ? 1 : 0);
  }
}

TEST_F(DataComboTest, SelectsByTheBeginningThatIsTyped) {
  const struct {
    const char* keys;
    Qt::Key last;
    qlonglong key;
  } steps[] = {
      {"EL", Qt::Key_Shift, 4},   {"li", Qt::Key_Shift, 5}, {"x", Qt::Key_Backspace, 5},
      {"", Qt::Key_Backspace, 4}, {" a", Qt::Key_Down, 5},  {"a", Qt::Key_Shift, 7},
      {"", Qt::Key_Home, 0},
  };
  for (const auto& step : steps) {
    combo_.type(step.keys);
    combo_.press(step.last);
    EXPECT_EQ(key(), step.key) << step.keys;
  }
  EXPECT_TRUE(combo_->DataChanged());
  combo_.type("e");
  combo_.leave();
  combo_.enter();
  combo_.type("a");
  EXPECT_EQ(key(), 7);
}

TEST_F(DataComboTest, TakesTheRowOfTheOpenListUnlessItIsGivenUp) {
  const struct {
    Qt::Key last;
    qlonglong key;
    bool stays;
  } cases[] = {{Qt::Key_Return, 5, true}, {Qt::Key_Tab, 5, false}, {Qt::Key_Escape, 3, true}};
  for (const auto& c : cases) {
    combo_.enter();
    combo_->ShowValue(3);
    combo_->SetDroppedDown(true);
    combo_.type("el a");
    // The form drops the list down at a key, which the combo gets afterwards.
    combo_.press(Qt::Key_Down);
    EXPECT_EQ(key(), 4);
    QTest::keyClick(combo_->view(), c.last);
    QCoreApplication::sendPostedEvents();
    EXPECT_FALSE(combo_->DroppedDown());
    EXPECT_EQ(key(), c.key);
    EXPECT_EQ(combo_->DataChanged(), c.key != 3);
    EXPECT_EQ(combo_->hasFocus(), c.stays);
  }
}

TEST_F(DataComboTest, IgnoresTheWheelWithoutTheFocus) {
  combo_->ShowValue(4);
  for (const bool inside : {false, true}) {
    inside ? combo_.enter() : combo_.leave();
    QWheelEvent wheel(QPointF(5, 5), combo_->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(combo_.get(), &wheel);
    EXPECT_EQ(key(), inside ? 5 : 4);
  }
}

TEST_F(DataComboTest, FindsTextsInTheOrderOfTheList) {
  const QAbstractItemModelTester tester(list_.get(),
                                        QAbstractItemModelTester::FailureReportingMode::Fatal);
  EXPECT_EQ(list_->rowOfKey(99), -1);
  ASSERT_EQ(list_->rowCount(), 9);
  for (int row = 0; row < list_->rowCount(); ++row) {
    EXPECT_EQ(list_->rowOfKey(list_->keyAt(row)), row);
    EXPECT_EQ(list_->rowOfText(list_->textAt(row).toUpper()), row);
  }
  const std::pair<const char*, const char*> beginnings[] = {
      {"e", "Edizioni Èlite"},
      {"edizioni è", "Edizioni Èlite"},
      {"edizioni e", ""},
      {"È", "èa"},
      {"EIN", "Einaudi"},
      {"l'", "L'Orma"},
      {"[", "[*]"},
      {"naudi", ""},
  };
  for (const auto& [text, found] : beginnings) {
    EXPECT_EQ(list_->textAt(list_->rowOfPrefix(text)), found) << text;
  }
  EXPECT_EQ(list_->rowOfText("eina"), -1);
}

}  // namespace
}  // namespace platform
