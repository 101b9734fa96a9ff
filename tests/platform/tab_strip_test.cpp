#include "platform/tab_strip.h"

#include <gtest/gtest.h>

#include <QTest>

namespace platform {
namespace {

TEST(TabStripTest, TellsEachSelectionOnceWhoeverMakesIt) {
  TabStrip strip;
  QStringList told;
  QObject::connect(&strip, &TabStrip::clicked, &strip, [&] { told << strip.SelectedTag(); });
  strip.addTab({}, "Libri", "10");
  strip.addTab({}, "Dischi", "20");
  strip.addTab({}, "Videocassette e altro", "30");
  strip.resize(strip.sizeHint());
  strip.Select(2);
  strip.Select(2);
  QTest::mouseClick(&strip, Qt::LeftButton, {}, strip.tabRect(2).center());
  strip.setTabEnabled(1, false);
  for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Up, Qt::Key_Down}) QTest::keyClick(&strip, key);
  QTest::keyClick(&strip, Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(told, QStringList({"10", "20", "30", "10", "30"}));
  const int text = strip.fontMetrics().horizontalAdvance(strip.tabText(2));
  EXPECT_GE(strip.tabRect(2).width(), text + strip.iconSize().width());
}

}  // namespace
}  // namespace platform
