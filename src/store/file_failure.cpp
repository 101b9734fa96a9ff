#include "store/file_failure.h"

#include <QFileInfo>
#include <cerrno>

#include "store/failure.h"

namespace store {
namespace {

QString describe(int number) {
  switch (number) {
    case file_failure::kNotFound:
      return QStringLiteral("File non trovato");
    case file_failure::kExists:
      return QStringLiteral("Il file esiste già");
    case file_failure::kDiskFull:
      return QStringLiteral("Disco pieno");
    case file_failure::kDenied:
      return QStringLiteral("Permesso negato");
    case file_failure::kPathNotFound:
      return QStringLiteral("Percorso non trovato");
    default:
      return QStringLiteral("Errore di accesso al percorso o al file");
  }
}

bool hasFolder(const QString& path) {
  return !path.isEmpty() && QFileInfo(QFileInfo(path).path()).isDir();
}

}  // namespace

int fileFailureOf(int error, const QString& path) {
  switch (error) {
    case ENOENT:
      return hasFolder(path) ? file_failure::kNotFound : file_failure::kPathNotFound;
    case ENOTDIR:
      return file_failure::kPathNotFound;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return file_failure::kDiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
    case EBUSY:
    case ETXTBSY:
      return file_failure::kDenied;
    default:
      return file_failure::kAccess;
  }
}

void failAtFile(int number, const QString& path) {
  throw Failure(number, describe(number) + QStringLiteral(": ") + path);
}

}  // namespace store
