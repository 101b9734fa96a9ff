#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>

#include "platform/theme.h"

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  platform::applyTheme(application, "chiaro");
  return RUN_ALL_TESTS();
}
