#include "store/unfinished_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstdio>
#include <optional>

#include "store/failure.h"
#include "store/file_failure.h"
#include "store/journal.h"
#include "store/locked_file.h"

namespace store {
namespace {

constexpr const char* kEnding = ".parziale-tvx";
// Of the engine, where it writes the file.
constexpr const char* kJournal = "-journal";
constexpr int kFlags = O_RDWR | O_NOFOLLOW | O_CLOEXEC;

// Whoever makes a file holds this lock: what nobody holds is a leftover. Not one of the locks that
// closing another descriptor would drop.
bool isTaken(int descriptor) {
  return ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

// Where a link leads to is replaced, not the link.
QString placeOf(const QString& target) {
  const QFileInfo old(target);
  if (target.isEmpty()) failAtFile(file_failure::kPathNotFound, target);
  if (!old.exists()) return old.absoluteFilePath();
  if (!old.isFile()) failAtFile(file_failure::kAccess, target);
  if (!old.isWritable()) failAtFile(file_failure::kDenied, target);
  return old.canonicalFilePath();
}

// The new name of a file is on the disk once its folder is.
void syncFolderOf(const QString& path) {
  const QByteArray folder = QFile::encodeName(QFileInfo(path).path());
  const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  ::fsync(descriptor);
  ::close(descriptor);
}

}  // namespace

UnfinishedFile::UnfinishedFile(const QString& target)
    : target_(placeOf(target)), path_(target_ + QLatin1String(kEnding)) {
  descriptor_ = ::open(QFile::encodeName(path_).constData(), kFlags | O_CREAT, 0666);
  if (descriptor_ < 0) fail(errno);
  if (isTaken(descriptor_)) {
    ::close(descriptor_);
    failAtFile(file_failure::kDenied, target_);
  }
  if (::ftruncate(descriptor_, 0) != 0) {
    const int error = errno;
    ::close(descriptor_);
    fail(error);
  }
}

UnfinishedFile::~UnfinishedFile() {
  if (!isPlaced_) QFile::remove(path_);
  QFile::remove(path_ + QLatin1String(kJournal));
  ::close(descriptor_);
}

void UnfinishedFile::fail(int error) const {
  failAtFile(fileFailureOf(error, path_), target_);
}

qint64 UnfinishedFile::size() const {
  struct stat found = {};
  return ::fstat(descriptor_, &found) == 0 ? qint64{found.st_size} : 0;
}

void UnfinishedFile::write(const char* data, qint64 size) {
  while (size > 0) {
    const qint64 written = ::write(descriptor_, data, static_cast<std::size_t>(size));
    if (written < 0 && errno != EINTR) fail(errno);
    if (written <= 0) continue;
    data += written;
    size -= written;
  }
}

void UnfinishedFile::startSync() {
  constexpr qint64 kEnough = 1 << 23;
  const qint64 size = this->size();
  if (size - started_ < kEnough) return;
  ::sync_file_range(descriptor_, started_, size - started_, SYNC_FILE_RANGE_WRITE);
  started_ = size;
}

void UnfinishedFile::sync() {
  if (::fsync(descriptor_) != 0) fail(errno);
  ::posix_fadvise(descriptor_, 0, 0, POSIX_FADV_DONTNEED);
}

qint64 UnfinishedFile::read(char* to, qint64 size, qint64 from) const {
  qint64 all = 0;
  while (all < size) {
    const qint64 some =
        ::pread(descriptor_, to + all, static_cast<std::size_t>(size - all), from + all);
    if (some == 0) break;
    if (some < 0 && errno != EINTR) fail(errno);
    if (some > 0) all += some;
  }
  return all;
}

void UnfinishedFile::putInPlace(LockedFile* held, const std::function<void()>& before) {
  const QByteArray to = QFile::encodeName(target_);
  std::optional<LockedFile> former;
  struct stat old = {};
  if (::stat(to.constData(), &old) == 0) {
    if (held == nullptr) {
      held = &former.emplace(target_);
      held->keepFromWriters();
    }
    held->keepFromAll();
    ::fchmod(descriptor_, old.st_mode & 07777);
  }
  if (before) before();
  if (std::rename(QFile::encodeName(path_).constData(), to.constData()) != 0) fail(errno);
  isPlaced_ = true;
  syncFolderOf(target_);
  removeJournals(target_);
}

QStringList ClearLeftovers(const QString& folder) {
  QStringList cleared;
  const QDir place(folder);
  const QStringList names = place.entryList({QLatin1Char('*') + QLatin1String(kEnding)},
                                            QDir::Files | QDir::Hidden | QDir::System);
  for (const QString& name : names) {
    const QString path = place.filePath(name);
    const int descriptor = ::open(QFile::encodeName(path).constData(), kFlags);
    if (descriptor < 0) continue;
    if (!isTaken(descriptor) && QFile::remove(path)) {
      cleared.append(name);
      QFile::remove(path + QLatin1String(kJournal));
    }
    ::close(descriptor);
  }
  return cleared;
}

}  // namespace store
