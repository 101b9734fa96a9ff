#pragma once

#include <functional>

// What SQLite asks of the system; several kinds may be joined.
enum DiskCall : unsigned {
  kOpen = 1,
  kOpenToWrite = 2,
  kOpenJournal = 4,
  kRead = 8,
  kWrite = 16,
  kSync = 32,
  kTruncate = 64,
  kDelete = 128,
  kLock = 256,
  kUnlock = 512,
  kSize = 1024,
  kAnyCall = 2047,
};

// The disk under SQLite while it lives, as good as the real one until some trouble is ordered.
// One at a time.
class FaultyDisk final {
 public:
  FaultyDisk();
  ~FaultyDisk();
  FaultyDisk(const FaultyDisk&) = delete;
  FaultyDisk& operator=(const FaultyDisk&) = delete;

  // From now on counts the calls of some kinds; the nth one fails, and all behind it if the trouble
  // lasts. A call that fails leaves an errno; with 0 it reads nothing. `atFirst` sees the files as
  // the first failing call leaves them.
  void order(unsigned calls, int error, int nth, bool lasts, std::function<void()> atFirst = {});
  void mend() { nth_ = 0; }
  int calls() const { return count_; }

  // For the disk's own calls: whether this one fails, and then its result.
  bool meets(unsigned call);
  int fail();

 private:
  unsigned calls_ = 0;
  int error_ = 0;
  int nth_ = 0;
  bool lasts_ = false;
  std::function<void()> atFirst_;
  int count_ = 0;
};
