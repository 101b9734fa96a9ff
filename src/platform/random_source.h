#pragma once

#include <QtGlobal>

namespace platform {

// A number from 0 to bound - 1, every one as likely as the others; 0 for a bound below 1.
int nextInt(int bound);

// Makes the numbers repeatable, for tests.
class RandomSeam final {
 public:
  // From here on the numbers depend on the seed only.
  static void setSeed(quint32 seed);
  // Numbers differ again from run to run.
  static void clear();
};

}  // namespace platform
