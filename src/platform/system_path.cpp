#include "platform/system_path.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

#include "platform/file_system.h"
#include "store/failure.h"

namespace platform {
namespace {

QHash<QChar, QString>& driveFolders() {
  static QHash<QChar, QString> folders;
  return folders;
}

QString& current() {
  static QString folder = QDir::currentPath();
  return folder;
}

// A path below a drive's folder, from "/": steps above the folder lead nowhere.
QString cleanBelow(const QString& path) {
  QString clean = QDir::cleanPath("/" + path);
  while (clean == "/.." || clean.startsWith("/../")) clean.remove(0, 3);
  return clean;
}

QString childOf(const QString& folder, const QString& name) {
  const QString prefix = folder.endsWith('/') ? folder : folder + "/";
  if (QFileInfo::exists(prefix + name)) return prefix + name;
  const auto kinds = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
  for (const QString& entry : QDir(folder).entryList(kinds, QDir::Name)) {
    if (entry.compare(name, Qt::CaseInsensitive) == 0) return prefix + entry;
  }
  return prefix + name;
}

}  // namespace

QString fullPath(const QString& given) {
  QString path = QString(given).replace('\\', '/');
  const bool hasDrive = path.size() > 1 && path[1] == ':' && path[0].isLetter();
  const QChar drive = hasDrive ? path[0].toUpper() : QChar();
  if (hasDrive) path.remove(0, 2);
  if (drive == 'A' || drive == 'B') {
    const QString folder = driveFolders().value(drive);
    return folder.isEmpty() ? QString() : QDir::cleanPath(folder + cleanBelow(path));
  }
  if (path.isEmpty() && !hasDrive) return {};
  return QDir::cleanPath(path.startsWith('/') ? path : current() + "/" + path);
}

QString systemPath(const QString& given) {
  QString full = fullPath(given);
  if (full.isEmpty() || QFileInfo::exists(full)) return full;
  QString found = "/";
  for (const QString& name : full.split('/', Qt::SkipEmptyParts)) found = childOf(found, name);
  return found;
}

void setDriveFolder(QChar drive, const QString& folder) {
  driveFolders().insert(drive.toUpper(), folder);
}

QString currentDirectory() {
  return current();
}

void setCurrentDirectory(const QString& path) {
  const QString folder = systemPath(path);
  if (folder.isEmpty() || !QFileInfo(folder).isDir()) {
    throw store::Failure(file_failure::kPathNotFound, "Percorso non trovato: " + path);
  }
  current() = folder;
}

}  // namespace platform
