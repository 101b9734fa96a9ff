#include "store/patience.h"

#include <sqlite3.h>

#include <QThread>

namespace store {
namespace {

constexpr unsigned long kStep = 10;  // milliseconds
// Longer than what tries again by itself takes until then.
constexpr qint64 kMemory = 3000;  // milliseconds

}  // namespace

void Patience::waitFor(sqlite3* connection) {
  sqlite3_busy_handler(
      connection,
      [](void* self, int attempts) {
        return static_cast<Patience*>(self)->wait(attempts == 0) ? 1 : 0;
      },
      this);
}

bool Patience::wait(bool first) {
  if (first) waiting_.start();
  const bool known = inVain_.isValid() && !inVain_.hasExpired(kMemory);
  if (!known && !waiting_.hasExpired(mostPatience)) {
    QThread::msleep(kStep);
    return true;
  }
  if (!known) ++waitsInVain;
  inVain_.start();
  return false;
}

}  // namespace store
