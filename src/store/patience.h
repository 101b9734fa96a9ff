#pragma once

#include <QElapsedTimer>

struct sqlite3;

namespace store {

// How long a lock of another program is waited for, in milliseconds. For tests to lower.
inline int mostPatience = 2000;
// How often all of that time has been waited in vain.
inline int waitsInVain = 0;

// Waits for locks of other programs. What follows a wait in vain does not wait again: an action of
// the user that tries several times stands still once.
class Patience final {
 public:
  Patience() = default;
  Patience(const Patience&) = delete;
  Patience& operator=(const Patience&) = delete;

  // Becomes the one who waits for a connection; it has to live as long as that.
  void waitFor(sqlite3* connection);
  // The file could be written: the lock is gone.
  void restore() { inVain_.invalidate(); }

 private:
  bool wait(bool first);

  QElapsedTimer waiting_;
  QElapsedTimer inVain_;
};

}  // namespace store
