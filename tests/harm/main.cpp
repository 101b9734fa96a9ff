#include <gtest/gtest.h>

#include <QCoreApplication>

#include "core/raccolte.h"

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  const QCoreApplication application(argc, argv);
  tavolix::CaricaRegistroRaccolte();
  return RUN_ALL_TESTS();
}
