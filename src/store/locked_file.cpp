#include "store/locked_file.h"

#include <sqlite3.h>

#include <QFileInfo>
#include <QThread>
#include <algorithm>
#include <cerrno>

#include "store/failure.h"
#include "store/file_failure.h"
#include "store/patience.h"

namespace store {
namespace {

constexpr int kPause = 10;  // milliseconds

sqlite3_file* fileIn(const std::unique_ptr<char[]>& room) {
  return reinterpret_cast<sqlite3_file*>(room.get());
}

sqlite3_vfs* layer() {
  return sqlite3_vfs_find(nullptr);
}

}  // namespace

LockedFile::LockedFile(const QString& path)
    : path_(QFileInfo(path).absoluteFilePath()),
      name_(sqlite3_create_filename(path_.toUtf8().constData(), "", "", 0, nullptr)),
      room_(new char[static_cast<std::size_t>(layer()->szOsFile)]()) {
  constexpr int kFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_MAIN_DB;
  int flags = 0;
  errno = 0;
  const int code = layer()->xOpen(layer(), name_, fileIn(room_), kFlags, &flags);
  canWrite_ = (flags & SQLITE_OPEN_READWRITE) != 0;
  if (code == SQLITE_OK && QFileInfo(path_).isFile()) return;
  const int error = code == SQLITE_OK ? EISDIR : errno;
  if (code == SQLITE_OK) fileIn(room_)->pMethods->xClose(fileIn(room_));
  sqlite3_free_filename(name_);
  failAtFile(fileFailureOf(QFileInfo(path_).isDir() ? EISDIR : error, path_), path);
}

LockedFile::~LockedFile() {
  fileIn(room_)->pMethods->xUnlock(fileIn(room_), SQLITE_LOCK_NONE);
  fileIn(room_)->pMethods->xClose(fileIn(room_));
  sqlite3_free_filename(name_);
}

// A file system without locks has nobody to wait for.
void LockedFile::lock(int kind) {
  for (int waited = 0;; waited += kPause) {
    if (fileIn(room_)->pMethods->xLock(fileIn(room_), kind) != SQLITE_BUSY) return;
    if (waited >= mostPatience) break;
    QThread::msleep(kPause);
  }
  ++waitsInVain;
  throw Failure(failure::kLocked,
                QStringLiteral("L'archivio %1 e' bloccato da un altro programma").arg(path_));
}

void LockedFile::keepFromWriters() {
  lock(SQLITE_LOCK_SHARED);
}

void LockedFile::keepFromAll() {
  if (canWrite_) lock(SQLITE_LOCK_EXCLUSIVE);
}

qint64 LockedFile::size() const {
  sqlite3_int64 size = 0;
  if (fileIn(room_)->pMethods->xFileSize(fileIn(room_), &size) != SQLITE_OK) {
    throw Failure(failure::kDiskError, QStringLiteral("Impossibile leggere il file %1").arg(path_));
  }
  return size;
}

qint64 LockedFile::read(char* to, qint64 size, qint64 from) const {
  size = std::min(size, this->size() - from);
  if (size <= 0) return 0;
  const int code = fileIn(room_)->pMethods->xRead(fileIn(room_), to, static_cast<int>(size), from);
  if (code == SQLITE_OK) return size;
  throw Failure(failure::kDiskError, QStringLiteral("Impossibile leggere il file %1").arg(path_));
}

}  // namespace store
