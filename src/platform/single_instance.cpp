#include "platform/single_instance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>
#include <cerrno>

namespace platform {
namespace {

QString defaultFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/tavolix";
}

constexpr int kMostWait = 500;  // milliseconds

QString folderOr(const QString& folder) {
  return folder.isEmpty() ? defaultFolder() : folder;
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
    : socket_(folderOr(folder) + "/tavolix.socket"),
      descriptor_(openLockFile(folderOr(folder))),
      first_(takeLock(descriptor_)) {}

void SingleInstance::listen(std::function<void()> called) {
  server_ = std::make_unique<QLocalServer>();
  server_->setSocketOptions(QLocalServer::UserAccessOption);
  QObject::connect(server_.get(), &QLocalServer::newConnection,
                   [server = server_.get(), called = std::move(called)] {
                     while (QLocalSocket* caller = server->nextPendingConnection()) {
                       caller->deleteLater();
                       called();
                     }
                   });
  // One that a killed copy has left: the lock says that nobody listens there.
  QLocalServer::removeServer(socket_);
  server_->listen(socket_);
}

bool SingleInstance::callFirst() const {
  QLocalSocket caller;
  caller.connectToServer(socket_);
  return caller.waitForConnected(kMostWait);
}

SingleInstance::~SingleInstance() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

}  // namespace platform
