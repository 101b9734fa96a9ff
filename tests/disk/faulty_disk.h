#pragma once

#include <sqlite3.h>

#include <functional>

// What SQLite asks of the system.
enum class DiskCall { Any, Open, Access, Read, Write, Sync, Truncate, Delete, Lock, Unlock, Size };

// A trouble of the disk: a kind of call that ends with an error of SQLite.
struct Trouble {
  DiskCall call;
  int code;
  int files = ~0;  // the SQLITE_OPEN_ flags of the files it concerns
};

// The disk under SQLite while it lives, as good as the real one until some trouble is ordered.
// One at a time; connections opened before it do not notice.
class FaultyDisk final {
 public:
  FaultyDisk();
  ~FaultyDisk();
  FaultyDisk(const FaultyDisk&) = delete;
  FaultyDisk& operator=(const FaultyDisk&) = delete;

  // From now on counts the calls that a trouble concerns; the nth one fails, and all behind it if
  // the trouble lasts. `atFirst` sees the files as the first failing call leaves them.
  void order(const Trouble& trouble, int nth, bool lasts, std::function<void()> atFirst = {});
  void mend() { nth_ = 0; }
  int calls() const { return calls_; }

  // For the disk itself: what a call ends with, SQLITE_OK for a good one. `before` is done by a
  // call that fails.
  int meet(DiskCall call, int file, int usualCode, const std::function<void()>& before = {});
  sqlite3_vfs* real() const { return real_; }

 private:
  sqlite3_vfs* real_;
  sqlite3_vfs own_;
  Trouble trouble_{};
  std::function<void()> atFirst_;
  int nth_ = 0;
  bool lasts_ = false;
  int calls_ = 0;
};
