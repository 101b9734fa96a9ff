#include "platform/tab_strip.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

namespace platform {
namespace {

class TabStripTest : public ::testing::Test {
 protected:
  TabStripTest() {
    strip_.addTab({}, QStringLiteral("Libri"), QStringLiteral("10"));
    strip_.addTab({}, QStringLiteral("Dischi"), QStringLiteral("20"));
    strip_.addTab({}, QStringLiteral("Videocassette e altro"), QStringLiteral("30"));
  }

  TabStrip strip_;
};

TEST_F(TabStripTest, CountsTabsFromOne) {
  EXPECT_EQ(strip_.Count(), 3);
  EXPECT_EQ(strip_.Tag(1), QStringLiteral("10"));
  EXPECT_EQ(strip_.Tag(3), QStringLiteral("30"));
  EXPECT_EQ(strip_.Tag(4), QString());
  EXPECT_EQ(strip_.SelectedTag(), QStringLiteral("10"));
  strip_.Select(2);
  EXPECT_EQ(strip_.SelectedTag(), QStringLiteral("20"));
}

TEST_F(TabStripTest, TellsASelectionOnceWhoeverMakesIt) {
  QSignalSpy spy(&strip_, &TabStrip::clicked);
  strip_.Select(2);
  strip_.Select(2);
  EXPECT_EQ(spy.size(), 1);
  QTest::mouseClick(&strip_, Qt::LeftButton, {}, strip_.tabRect(2).center());
  EXPECT_EQ(spy.size(), 2);
  EXPECT_EQ(strip_.SelectedTag(), QStringLiteral("30"));
  strip_.blockSignals(true);
  strip_.Select(1);
  strip_.blockSignals(false);
  EXPECT_EQ(spy.size(), 2);
}

TEST_F(TabStripTest, KnowsTheTagOfTheFirstTabWhenItIsTold) {
  TabStrip strip;
  QStringList told;
  QObject::connect(&strip, &TabStrip::clicked, &strip, [&] { told << strip.SelectedTag(); });
  strip.addTab({}, QStringLiteral("Libri"), QStringLiteral("10"));
  strip.addTab({}, QStringLiteral("Dischi"), QStringLiteral("20"));
  EXPECT_EQ(told, QStringList{QStringLiteral("10")});
}

TEST_F(TabStripTest, MovesUpAndDownByKeys) {
  strip_.setTabEnabled(1, false);
  QTest::keyClick(&strip_, Qt::Key_Up);
  EXPECT_EQ(strip_.SelectedTag(), QStringLiteral("10"));
  QTest::keyClick(&strip_, Qt::Key_Down);
  EXPECT_EQ(strip_.SelectedTag(), QStringLiteral("30"));
  QTest::keyClick(&strip_, Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(strip_.SelectedTag(), QStringLiteral("30"));
  QTest::keyClick(&strip_, Qt::Key_Up);
  EXPECT_EQ(strip_.SelectedTag(), QStringLiteral("10"));
}

TEST_F(TabStripTest, StandsUprightWithRoomForTheLongestText) {
  strip_.resize(strip_.sizeHint());
  const int text = strip_.fontMetrics().horizontalAdvance(strip_.tabText(2));
  for (int tab = 0; tab < 3; ++tab) {
    EXPECT_EQ(strip_.tabRect(tab).left(), 0);
    EXPECT_GE(strip_.tabRect(tab).width(), text + strip_.iconSize().width());
    EXPECT_GE(strip_.tabRect(tab).height(), strip_.iconSize().height());
  }
  EXPECT_GT(strip_.tabRect(1).top(), strip_.tabRect(0).top());
}

// In grey the colours tell nothing: the bar and the heavier text have to.
TEST_F(TabStripTest, MarksTheSelectedTabNotByColourAlone) {
  strip_.resize(strip_.sizeHint());
  const auto ink = [this](int tab) {
    const QImage grey =
        strip_.grab(strip_.tabRect(tab)).toImage().convertToFormat(QImage::Format_Grayscale8);
    const int ground = qGray(grey.pixel(grey.width() - 2, grey.height() / 2));
    int pixels = 0;
    for (int y = 0; y < grey.height(); ++y) {
      for (int x = 0; x < grey.width(); ++x) {
        pixels += qAbs(qGray(grey.pixel(x, y)) - ground) > 60 ? 1 : 0;
      }
    }
    return pixels;
  };
  const int plain = ink(1);
  strip_.Select(2);
  EXPECT_GT(ink(1), plain);
}

}  // namespace
}  // namespace platform
