#include "app/program_folder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "core/modutil.h"

namespace tavolix {
namespace {

// Beside the executable in a build, under share in an installation.
QString installedFolder() {
  const QDir program(QCoreApplication::applicationDirPath());
  for (const char* candidate : {"share/tavolix", "../share/tavolix"}) {
    const QFileInfo folder(program.filePath(QString::fromLatin1(candidate)));
    if (folder.isDir()) return folder.canonicalFilePath();
  }
  return {};
}

bool isPortable(const QString& folder) {
  const QFileInfo settings(folder + QStringLiteral("/tvx.ini"));
  return settings.isFile() && settings.isWritable();
}

}  // namespace

QString programFolder() {
  const QString own = QCoreApplication::applicationDirPath();
  if (isPortable(own)) return own;
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
         QStringLiteral("/tavolix");
}

void prepareProgramFolder() {
  const QDir target(sCartellaProgramma());
  const QString installed = installedFolder();
  if (installed.isEmpty()) return;
  QDir().mkpath(target.path());
  for (const QFileInfo& file : QDir(installed).entryInfoList(QDir::Files)) {
    const QString copy = target.filePath(file.fileName());
    if (QFileInfo::exists(copy)) continue;
    if (QFile::copy(file.filePath(), copy)) {
      QFile::setPermissions(copy, QFile::permissions(copy) | QFile::WriteOwner);
    }
  }
}

}  // namespace tavolix
