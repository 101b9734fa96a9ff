#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
