#pragma once

#include <functional>

// The disk under SQLite in this program: as good as the real one until some trouble is ordered.
namespace faulty {

// What SQLite and the store ask of the system; several kinds may be joined.
enum Call : unsigned {
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
  kRename = 2048,
  kAnyCall = 4095,
};

struct Order {
  unsigned calls = 0;  // the kinds that are counted from now on
  int error = 0;       // the errno that a failing call leaves; with 0 it reads nothing
  int nth = 0;         // the call that fails
  bool lasts = false;  // and all behind it
  std::function<void()> atFirst = {};  // sees the files as the first failing call leaves them
};
// The disk is well again without one.
void order(const Order& trouble = {});
// How many calls the last order has counted.
int calls();

}  // namespace faulty
