#include "platform/single_instance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <cerrno>

namespace platform {
namespace {

QString defaultFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/tavolix";
}

int openLockFile(const QString& folder) {
  QDir().mkpath(folder);
  const QByteArray path = QFile::encodeName(folder + "/tavolix.lock");
  return ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
}

// The file itself stays: removing it would let two copies lock two files of the same name.
bool takeLock(int descriptor) {
  return descriptor < 0 || ::flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

}  // namespace

SingleInstance::SingleInstance(const QString& folder)
    : descriptor_(openLockFile(folder.isEmpty() ? defaultFolder() : folder)),
      first_(takeLock(descriptor_)) {}

SingleInstance::~SingleInstance() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

}  // namespace platform
