#include "platform/data_combo.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QStatusBar>
#include <QWheelEvent>

#include "desk.h"
#include "grid_archive.h"
#include "platform/drop_down.h"
#include "platform/tab_strip.h"

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
  combo_->ShowValue(7);
  const struct {
    const char* keys;
    Qt::Key last;
    qlonglong key;
  } steps[] = {
      {"ELx", Qt::Key_Shift, 7},  {"", Qt::Key_Backspace, 4}, {"li", Qt::Key_Shift, 5},
      {"xy", Qt::Key_Shift, 7},   {"", Qt::Key_Backspace, 7}, {"", Qt::Key_Backspace, 5},
      {"", Qt::Key_Backspace, 5}, {"", Qt::Key_Backspace, 4}, {" a", Qt::Key_Down, 5},
      {"a", Qt::Key_Shift, 7},    {"", Qt::Key_Backspace, 5}, {"", Qt::Key_Home, 0},
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
  QStatusBar status(combo_->window());
  int opened = 0;
  combo_->SetValuesWindow([&] { ++opened; });
  const struct {
    const char* typed;
    Qt::Key last;
    qlonglong key;
    bool stays;
    const char* missed;
  } cases[] = {
      {"el a", Qt::Key_Return, 4, true, ""},   {"el a", Qt::Key_Tab, 4, false, ""},
      {"el a", Qt::Key_Escape, 3, true, ""},   {"einx", Qt::Key_Return, 3, true, "einx"},
      {"einx", Qt::Key_Tab, 3, false, "einx"}, {"einx", Qt::Key_Escape, 3, true, ""},
      {"einx", Qt::Key_F2, 3, true, "einx"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.typed) + ' ' + std::to_string(c.last));
    combo_.enter();
    combo_->ShowValue(3);
    combo_->SetDroppedDown(true);
    status.clearMessage();
    combo_.type(c.typed);
    QTest::keyClick(combo_->view(), c.last);
    QTest::qWait(1);
    EXPECT_FALSE(combo_->DroppedDown());
    EXPECT_EQ(key(), c.key);
    EXPECT_EQ(combo_->DataChanged(), c.key != 3);
    EXPECT_EQ(combo_->window()->focusWidget() == combo_.get(), c.stays);
    EXPECT_EQ(combo_->MissedText(), c.missed);
    const bool told = *c.missed != '\0' && c.last != Qt::Key_F2;
    EXPECT_EQ(status.currentMessage().contains("\"einx\" non è nell'elenco: F2"), told);
  }
  EXPECT_EQ(opened, 1);
  // The form drops the list down at a key, which the combo gets afterwards.
  combo_.enter();
  combo_->ShowValue(3);
  combo_->SetDroppedDown(true);
  combo_.type("el a");
  combo_.press(Qt::Key_Down);
  EXPECT_EQ(key(), 4);
  QTest::keyClick(combo_->view(), Qt::Key_Return);
  EXPECT_EQ(key(), 5);
}

// What a closed control shows of itself, as a picture.
TEST_F(DataComboTest, ShowsWhatIsTypedWhileTheListIsOpen) {
  combo_->ShowValue(4);
  combo_->SetDroppedDown(true);
  const QImage before = combo_->grab().toImage();
  combo_.type("e");
  const QImage oneLetter = combo_->grab().toImage();
  EXPECT_NE(oneLetter, before);
  combo_.type("i");
  EXPECT_NE(combo_->grab().toImage(), oneLetter);
}

TEST(Wheel, TurnsNoClosedListAndNoTabs) {
  GridArchive archive;
  Desk<DataCombo> combo;
  combo->SetList(archive.list());
  combo->ShowValue(4);
  Desk<DropDown> fixed;
  fixed->addItems({"e..", "o.."});
  Desk<TabStrip> tabs;
  for (const char* tag : {"0", "1"}) tabs->addTab({}, "Libri", tag);
  for (QWidget* widget : std::initializer_list<QWidget*>{combo.get(), fixed.get(), tabs.get()}) {
    widget->setFocus();
    QWheelEvent wheel(QPointF(5, 5), widget->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(widget, &wheel);
    EXPECT_FALSE(wheel.isAccepted());
  }
  EXPECT_EQ(combo->Value(), 4);
  EXPECT_EQ(fixed->currentIndex(), 0);
  EXPECT_EQ(tabs->SelectedTag(), "0");
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
      {"edizioni e", "Edizioni Èlite"},
      {"edizionì é", "Edizioni Èlite"},
      {"edizioni f", ""},
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
