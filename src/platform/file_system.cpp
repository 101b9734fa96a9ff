#include "platform/file_system.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <cerrno>
#include <cstdio>
#include <vector>

#include "store/unfinished_file.h"

namespace platform {
namespace {

// An open file of the system.
class Descriptor final {
 public:
  Descriptor(const QString& path, int flags)
      : value_(::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, 0666)) {}
  ~Descriptor() {
    if (value_ >= 0) ::close(value_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  bool isOpen() const { return value_ >= 0; }
  int value() const { return value_; }

 private:
  int value_;
};

using store::failAtFile;
using store::fileFailureOf;

// The path of an existing file.
QString requireFile(const QString& given) {
  QString path = systemPath(given);
  if (QFileInfo(path).isDir()) failAtFile(file_failure::kAccess, given);
  if (!QFileInfo::exists(path)) failAtFile(fileFailureOf(ENOENT, path), given);
  return path;
}

QRegularExpression expressionOf(QString pattern) {
  const bool optionalEnd = pattern.endsWith(".*");
  if (optionalEnd) pattern.chop(2);
  QString text = QRegularExpression::escape(pattern).replace("\\*", ".*").replace("\\?", ".");
  if (optionalEnd) text += "(\\..*)?";
  return QRegularExpression(
      QRegularExpression::anchoredPattern(text),
      QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
}

bool writeAll(int target, const char* data, qint64 length) {
  while (length > 0) {
    const qint64 written = ::write(target, data, static_cast<size_t>(length));
    if (written < 0 && errno != EINTR) return false;
    if (written > 0) {
      data += written;
      length -= written;
    }
  }
  return true;
}

// Hands a file on piece by piece, as long as they are taken; 0 or the error number of the system.
template <typename Take>
int readAll(int source, Take take) {
  std::vector<char> piece(1 << 18);
  for (;;) {
    const qint64 length = ::read(source, piece.data(), piece.size());
    if (length < 0 && errno == EINTR) continue;
    if (length < 0) return errno;
    if (length == 0) return 0;
    if (!take(piece.data(), length)) return errno;
  }
}

// A device takes the bytes itself, and has nothing to be put onto a disk.
int copyToDevice(int source, const QString& target) {
  const Descriptor out(target, O_WRONLY);
  if (!out.isOpen()) return errno;
  return readAll(
      source, [&](const char* data, qint64 length) { return writeAll(out.value(), data, length); });
}

// The target stays as it is until all of it has been copied.
int copyToFile(int source, const QString& target) {
  store::UnfinishedFile copy(target);
  const int error = readAll(source, [&](const char* data, qint64 length) {
    copy.write(data, length);
    return true;
  });
  if (error != 0) return error;
  copy.sync();
  copy.putInPlace();
  return 0;
}

// The path of a new file, whose name stays as it was given.
QString spelledAs(const QString& given, const QString& found) {
  return QFileInfo(found).dir().filePath(QFileInfo(fullPath(given)).fileName());
}

int renamePath(const QString& from, const QString& to) {
  const QByteArray target = QFile::encodeName(to);
  return std::rename(QFile::encodeName(from).constData(), target.constData()) == 0 ? 0 : errno;
}

void check(const QString& given, int flags, short lock) {
  const QString path = requireFile(given);
  const Descriptor file(path, flags);
  if (!file.isOpen()) failAtFile(fileFailureOf(errno, path), given);
  struct flock query {};
  query.l_type = lock;
  query.l_whence = SEEK_SET;
  // File systems without this kind of lock have nobody to wait for.
  if (::fcntl(file.value(), F_OFD_GETLK, &query) == 0 && query.l_type != F_UNLCK) {
    failAtFile(file_failure::kDenied, given);
  }
}

}  // namespace

bool exists(const QString& path) {
  return QFileInfo::exists(systemPath(path));
}

bool folderExists(const QString& path) {
  const QString folder = systemPath(path);
  return !folder.isEmpty() && QFileInfo(folder).isDir();
}

qint64 fileLength(const QString& path) {
  const QFileInfo info(systemPath(path));
  if (!info.exists() || info.isDir()) failAtFile(file_failure::kNotFound, path);
  return info.size();
}

bool isSameFile(const QString& left, const QString& right) {
  struct stat first {};
  struct stat second {};
  const auto look = [](const QString& path, struct stat& found) {
    return ::stat(QFile::encodeName(systemPath(path)).constData(), &found) == 0 &&
           S_ISREG(found.st_mode);
  };
  return look(left, first) && look(right, second) && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

QStringList listFiles(const QString& pattern) {
  const QFileInfo full(fullPath(pattern));
  if (full.filePath().isEmpty()) return {};
  const QDir folder(systemPath(full.path()));
  const auto kinds = QDir::Files | QDir::Hidden | QDir::System;
  return folder.entryList(kinds, QDir::Name | QDir::IgnoreCase)
      .filter(expressionOf(full.fileName()));
}

void copyFile(const QString& from, const QString& to) {
  const QString source = requireFile(from);
  const Descriptor in(source, O_RDONLY);
  if (!in.isOpen()) failAtFile(fileFailureOf(errno, source), from);
  const QString target = systemPath(to);
  const QFileInfo old(target);
  if (target.isEmpty()) failAtFile(file_failure::kPathNotFound, to);
  if (old.isDir()) failAtFile(file_failure::kAccess, to);
  if (old.exists() && (!old.isWritable() || old == QFileInfo(source))) {
    failAtFile(file_failure::kDenied, to);
  }
  const bool device = old.exists() && !old.isFile();
  const int error = device ? copyToDevice(in.value(), target) : copyToFile(in.value(), target);
  if (error != 0) failAtFile(fileFailureOf(error, target), to);
}

void deleteFile(const QString& path) {
  const QString file = requireFile(path);
  if (::unlink(QFile::encodeName(file).constData()) != 0)
    failAtFile(fileFailureOf(errno, file), path);
}

bool isTaken(const QString& path, const QString& by) {
  const QString target = systemPath(path);
  return QFileInfo::exists(spelledAs(path, target)) ||
         (QFileInfo::exists(target) && target != systemPath(by));
}

void renameFile(const QString& from, const QString& to) {
  const QString source = systemPath(from);
  if (!QFileInfo::exists(source)) failAtFile(fileFailureOf(ENOENT, source), from);
  const QString target = systemPath(to);
  if (target.isEmpty()) failAtFile(file_failure::kPathNotFound, to);
  const QString spelled = spelledAs(to, target);
  if (isTaken(to, from)) failAtFile(file_failure::kExists, to);
  const int error = renamePath(source, spelled);
  if (error == EXDEV && QFileInfo(source).isFile()) {
    copyFile(from, to);
    deleteFile(from);
  } else if (error != 0) {
    failAtFile(fileFailureOf(error, spelled), to);
  }
}

void createFolder(const QString& path) {
  const QString folder = systemPath(path);
  if (::mkdir(QFile::encodeName(folder).constData(), 0777) == 0) return;
  const bool noParent = errno == ENOENT || errno == ENOTDIR;
  failAtFile(noParent ? file_failure::kPathNotFound : fileFailureOf(errno, folder), path);
}

void checkReadable(const QString& path) {
  check(path, O_RDONLY, F_RDLCK);
}

void checkWritable(const QString& path) {
  check(path, O_RDWR, F_WRLCK);
}

}  // namespace platform
