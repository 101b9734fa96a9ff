#include "platform/data_combo.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QSignalSpy>
#include <QWheelEvent>

#include "desk.h"
#include "value_archive.h"

namespace platform {
namespace {

class DataComboTest : public ::testing::Test {
 protected:
  DataComboTest() {
    combo_->SetList(list_);
    combo_.enter();
  }

  qlonglong key() { return combo_->Value().toLongLong(); }
  void pressInList(Qt::Key key) {
    QTest::keyClick(combo_->view(), key);
    QCoreApplication::sendPostedEvents();
  }
  void wheel() {
    QWheelEvent event(QPointF(5, 5), combo_->mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(combo_.get(), &event);
  }

  static ValueArchive::Values publishers(const QString& first) {
    return {{first, 7},
            {QStringLiteral("Einaudi"), 3},
            {QStringLiteral("El Aleph"), 4},
            {QStringLiteral("Elliot"), 5}};
  }
  ValueArchive archive_{publishers(QStringLiteral("Adelphi"))};
  LookupListPtr list_ = archive_.list();
  Desk<DataCombo> combo_;
};

TEST_F(DataComboTest, ShowsStoredKeysWithoutReadingTheList) {
  const struct {
    QVariant stored;
    qlonglong key;
    QString text;
  } cases[] = {
      {7, 7, QStringLiteral("Adelphi")},
      {QVariant(), 0, QString()},
      {99, 99, QString()},
      {0, 0, QString()},
  };
  for (const bool loaded : {false, true}) {
    if (loaded) combo_->SetDroppedDown(true);
    combo_->SetDroppedDown(false);
    for (const auto& c : cases) {
      combo_->ShowValue(c.stored);
      EXPECT_EQ(key(), c.key);
      EXPECT_EQ(combo_->currentText(), c.text);
      EXPECT_FALSE(combo_->DataChanged());
    }
    EXPECT_EQ(archive_.loads, loaded ? 1 : 0);
  }
}

// The form drops the list down at a key, which the combo gets afterwards.
TEST_F(DataComboTest, MovesInTheListThatAKeyHasOpened) {
  combo_->ShowValue(7);
  combo_->SetDroppedDown(true);
  const int row = combo_->view()->currentIndex().row();
  combo_.press(Qt::Key_Down);
  EXPECT_EQ(combo_->view()->currentIndex().row(), row + 1);
  EXPECT_EQ(key(), 7);
  pressInList(Qt::Key_Return);
  EXPECT_EQ(key(), 3);
  EXPECT_TRUE(combo_->DataChanged());
}

TEST_F(DataComboTest, SelectsByTheBeginningThatIsTyped) {
  QSignalSpy activated(combo_.get(), &QComboBox::activated);
  combo_.type(QStringLiteral("EL"));
  EXPECT_EQ(combo_->Text(), QStringLiteral("El Aleph"));
  EXPECT_TRUE(combo_->DataChanged());
  combo_.press(Qt::Key_Shift);
  combo_.type(QStringLiteral("li"));
  EXPECT_EQ(key(), 5);
  combo_.type(QStringLiteral("x"));
  EXPECT_EQ(key(), 5);
  combo_.press(Qt::Key_Backspace);
  combo_.press(Qt::Key_Backspace);
  EXPECT_EQ(key(), 4);
  combo_.type(QStringLiteral(" a"));
  EXPECT_EQ(key(), 4);
  EXPECT_FALSE(combo_->DroppedDown());
  EXPECT_EQ(activated.count(), 4);
}

TEST_F(DataComboTest, ForgetsTheTypedBeginning) {
  combo_.type(QStringLiteral("e"));
  combo_.press(Qt::Key_Down);
  EXPECT_EQ(key(), 4);
  combo_.type(QStringLiteral("a"));
  EXPECT_EQ(key(), 7);
  combo_.leave();
  combo_.enter();
  combo_.type(QStringLiteral("e"));
  EXPECT_EQ(key(), 3);
  combo_.press(Qt::Key_F4);
  QTest::keyClicks(combo_->view(), QStringLiteral("a"));
  EXPECT_EQ(key(), 7);
  combo_->SetDroppedDown(false);
  combo_.type(QStringLiteral("e"));
  EXPECT_EQ(key(), 3);
}

TEST_F(DataComboTest, GoesOnFromTheStoredValueByArrows) {
  combo_->ShowValue(7);
  combo_.press(Qt::Key_Down);
  EXPECT_EQ(key(), 3);
  EXPECT_TRUE(combo_->DataChanged());
  combo_.press(Qt::Key_Home);
  EXPECT_EQ(key(), 0);
}

TEST_F(DataComboTest, LetsTheFormHaveItsKeys) {
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_F6}) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(combo_.get(), &event);
    EXPECT_FALSE(event.isAccepted()) << key;
  }
  EXPECT_FALSE(combo_->DataChanged());
}

TEST_F(DataComboTest, AcceptsTheRowOfTheOpenListByEnterAndTab) {
  for (const Qt::Key leaving : {Qt::Key_Return, Qt::Key_Tab}) {
    combo_.enter();
    combo_->ShowValue(7);
    combo_->SetDroppedDown(true);
    EXPECT_EQ(combo_->view()->currentIndex().data().toString(), QStringLiteral("Adelphi"));
    pressInList(Qt::Key_Down);
    EXPECT_EQ(key(), 7);
    pressInList(leaving);
    EXPECT_FALSE(combo_->DroppedDown());
    EXPECT_EQ(key(), 3);
    EXPECT_TRUE(combo_->DataChanged());
    EXPECT_EQ(combo_->hasFocus(), leaving == Qt::Key_Return);
  }
}

TEST_F(DataComboTest, RestoresWhatWasThereByEscape) {
  combo_->ShowValue(99);
  combo_->SetDroppedDown(true);
  QTest::keyClicks(combo_->view(), QStringLiteral("ell"));
  EXPECT_EQ(key(), 5);
  EXPECT_EQ(combo_->view()->currentIndex().row(), 4);
  pressInList(Qt::Key_Escape);
  EXPECT_FALSE(combo_->DroppedDown());
  EXPECT_EQ(key(), 99);
  EXPECT_EQ(combo_->Text(), QString());
  EXPECT_FALSE(combo_->DataChanged());
}

TEST_F(DataComboTest, OpeningTheListChangesNothing) {
  combo_->ShowValue(QVariant());
  combo_->SetDroppedDown(true);
  EXPECT_TRUE(combo_->DroppedDown());
  EXPECT_GE(combo_->view()->width(), combo_->fontMetrics().horizontalAdvance("El Aleph"));
  pressInList(Qt::Key_Return);
  EXPECT_FALSE(combo_->DataChanged());
}

TEST_F(DataComboTest, ChoosesByText) {
  const struct {
    QString text;
    bool found;
    qlonglong key;
  } cases[] = {
      {QStringLiteral("einaudi"), true, 3},
      {QStringLiteral("eina"), false, 0},
      {QString(), true, 0},
  };
  for (const auto& c : cases) {
    combo_->ShowValue(7);
    EXPECT_EQ(combo_->SelectText(c.text), c.found);
    EXPECT_EQ(key(), c.key);
    EXPECT_TRUE(combo_->DataChanged());
  }
}

TEST_F(DataComboTest, IgnoresTheWheelWithoutTheFocus) {
  combo_->ShowValue(7);
  combo_.leave();
  wheel();
  EXPECT_EQ(key(), 7);
  EXPECT_EQ(combo_->focusPolicy() & ~Qt::StrongFocus, 0);  // the wheel brings no focus either
  combo_.enter();
  wheel();
  EXPECT_EQ(key(), 3);
}

TEST_F(DataComboTest, AsksForItsTextAgainWhenTheListHasChanged) {
  combo_->ShowValue(7);
  combo_->SetDroppedDown(true);
  archive_.set(publishers(QStringLiteral("Zanichelli")));
  list_->invalidate();
  EXPECT_FALSE(combo_->DroppedDown());
  EXPECT_EQ(combo_->Text(), QStringLiteral("Zanichelli"));
  EXPECT_FALSE(combo_->DataChanged());
  combo_.type(QStringLiteral("z"));
  EXPECT_EQ(key(), 7);
  EXPECT_EQ(archive_.loads, 2);
}

}  // namespace
}  // namespace platform
