#include "platform/random_source.h"

#include <QRandomGenerator>

namespace platform {
namespace {

QRandomGenerator& generator() {
  static QRandomGenerator source = QRandomGenerator::securelySeeded();
  return source;
}

}  // namespace

int nextInt(int bound) {
  return bound < 1 ? 0 : generator().bounded(bound);
}

void RandomSeam::setSeed(quint32 seed) {
  generator() = QRandomGenerator(seed);
}

void RandomSeam::clear() {
  generator() = QRandomGenerator::securelySeeded();
}

}  // namespace platform
