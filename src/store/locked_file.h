#pragma once

#include <QString>
#include <memory>

struct sqlite3_file;

namespace store {

// A file read below the engine but through its file layer: it may be an archive that the process
// has open, which a descriptor of one's own would take the locks away from when it is closed.
class LockedFile final {
 public:
  // Fails with 53, 70, 75, 76.
  explicit LockedFile(const QString& path);
  ~LockedFile();
  LockedFile(const LockedFile&) = delete;
  LockedFile& operator=(const LockedFile&) = delete;

  // From here on no other program writes into it; it is waited for as for any lock. Fails with
  // 3260.
  void keepFromWriters();
  // No other program reads it either, and this one does not elsewhere. Needs the former.
  void keepFromAll();

  qint64 size() const;
  // Reads as many bytes as there are; fails with 3043.
  qint64 read(char* to, qint64 size, qint64 from) const;

 private:
  void lock(int kind);

  QString path_;
  const char* name_;  // in the engine's own form
  std::unique_ptr<char[]> room_;
  bool canWrite_ = false;
};

}  // namespace store
