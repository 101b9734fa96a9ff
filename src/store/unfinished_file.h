#pragma once

#include <QString>
#include <QStringList>
#include <functional>

#include "store/progress.h"

namespace store {

class LockedFile;

// A file in the making, beside the one that it is to be or to replace, under that one's name with
// an ending of its own. It is removed again unless it is put in place.
class UnfinishedFile final {
 public:
  // Fails with 61, 70 (also while another program makes the same one), 75 (a folder), 76.
  explicit UnfinishedFile(const QString& target);
  ~UnfinishedFile();
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;

  const QString& path() const { return path_; }
  const QString& target() const { return target_; }
  qint64 size() const;
  // These fail with 61, 70, 75.
  void write(const char* data, qint64 size);
  void sync();
  // Lets the system begin to put onto the disk what it was given so far.
  void startSync();
  // Reads from the disk, not from the system's memory where that can be told; fewer bytes than
  // asked for at the end.
  qint64 read(char* to, qint64 size, qint64 from) const;

  // In one step its name becomes that of the target, whose former file is gone; `before` is what
  // is to be done with that in the last moment, while no other program is at work on it. `held` is
  // the former file if the caller holds it. Fails with 3260 and what a rename may fail with.
  void putInPlace(LockedFile* held = nullptr, const std::function<void()>& before = {});

 private:
  [[noreturn]] void fail(int error) const;

  QString target_;
  QString path_;
  int descriptor_ = -1;
  qint64 started_ = 0;
  bool isPlaced_ = false;
};

// Removes the unfinished files of a folder that no program is at work on, as one that was killed
// leaves them; their names.
QStringList ClearLeftovers(const QString& folder);

}  // namespace store
