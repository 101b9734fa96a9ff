#include "app/program_folder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
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

// The copy gets its name once it is whole and can be written: a start that is cut short leaves
// nothing that the next one would take for a file of the user.
void copyFile(const QFileInfo& file, const QString& copy) {
  QFile source(file.filePath());
  QSaveFile target(copy);
  if (!source.open(QIODevice::ReadOnly) || !target.open(QIODevice::WriteOnly)) return;
  const QByteArray content = source.readAll();
  if (source.error() == QFile::NoError && target.write(content) == content.size() &&
      target.setPermissions(source.permissions() | QFile::WriteOwner)) {
    target.commit();
  }
}

}  // namespace

QString programFolder() {
  const QString own = QCoreApplication::applicationDirPath();
  if (isPortable(own)) return own;
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
         QStringLiteral("/tavolix");
}

void copyMissingFiles(const QString& from, const QString& to) {
  QDir().mkpath(to);
  for (const QFileInfo& file : QDir(from).entryInfoList(QDir::Files)) {
    const QString copy = QDir(to).filePath(file.fileName());
    if (!QFileInfo::exists(copy)) copyFile(file, copy);
  }
}

void prepareProgramFolder() {
  const QString installed = installedFolder();
  if (!installed.isEmpty()) copyMissingFiles(installed, sCartellaProgramma());
}

}  // namespace tavolix
