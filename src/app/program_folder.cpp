#include "app/program_folder.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "archives/file_archivio.h"
#include "core/errore.h"
#include "core/modutil.h"
#include "platform/file_system.h"
#include "platform/settings_file.h"

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

// The file in which is kept what was laid down: for each installed file, which content of it.
constexpr const char* kLaidDown = ".installati";
constexpr const char* kFiles = "File";

const QString kSettings = QStringLiteral("tvx.ini");
const QString kTemplate = QStringLiteral("modello.tvx");

// Settings that are the program's, not the user's.
constexpr const char* kOwnKeys[] = {"db_Ext",         "db_Source", "db_version",
                                    "db_application", "HelpID",    "Icon"};

// What becomes the user's own is laid down once: it does not come back after it was deleted, nor
// over what it was changed to. All else follows the program.
bool isUsers(const QString& name) {
  return name == kSettings || name == QLatin1String("esempio.tvx");
}

QString contentOf(const QString& path) {
  QFile file(path);
  QCryptographicHash hash(QCryptographicHash::Sha1);
  if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file)) return {};
  return QString::fromLatin1(hash.result().toHex());
}

// The keys that archives are judged by are there whatever became of the file.
void renewKeys(const QString& from, const QString& to, bool all) {
  const QString section = QStringLiteral("ManArc");
  for (const char* name : kOwnKeys) {
    const QString key = QString::fromLatin1(name);
    const QString wanted = platform::readString(from, section, key, {});
    const QString found = platform::readString(to, section, key, {});
    if (wanted.isEmpty() || found == wanted || !(all || found.isEmpty())) continue;
    platform::writeString(to, section, key, wanted);
  }
}

// What somebody has written into the template stays, under another name.
void setAside(const QString& target, const QString& laidDown, const QString& now) {
  const QString content = contentOf(target);
  if (content == laidDown || content == now) return;
  const QFileInfo file(target);
  const QString name = file.dir().filePath(file.completeBaseName() +
                                           QStringLiteral(" (vecchio%1).") + file.suffix());
  QString kept = name.arg(QString());
  for (int number = 2; QFileInfo::exists(kept); ++number) {
    kept = name.arg(u' ' + QString::number(number));
  }
  RinominaArchivio(target, kept);
}

void layDown(const QFileInfo& file, const QDir& folder) {
  const QString record = folder.filePath(QString::fromLatin1(kLaidDown));
  const QString section = QString::fromLatin1(kFiles);
  const QString name = file.fileName();
  const QString target = folder.filePath(name);
  const QString before = platform::readString(record, section, name, {});
  const QString now = contentOf(file.filePath());
  const bool isThere = QFileInfo::exists(target);
  const bool isWanted = isUsers(name) ? !isThere && before.isEmpty() : !isThere || before != now;
  // The copy gets its name once it is whole: a start that is cut short leaves nothing that the
  // next one would take for a file of the user.
  const bool isDone = !isWanted || ignorando([&] {
    if (isThere && name == kTemplate) setAside(target, before, now);
    platform::copyFile(file.filePath(), target);
  });
  if (name == kSettings) renewKeys(file.filePath(), target, before != now);
  if (isDone && before != now) platform::writeString(record, section, name, now);
}

}  // namespace

QString programFolder() {
  QString own = QCoreApplication::applicationDirPath();
  if (isPortable(own)) return own;
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
         QStringLiteral("/tavolix");
}

void layDownFiles(const QString& from, const QString& to) {
  QDir().mkpath(to);
  for (const QFileInfo& file : QDir(from).entryInfoList(QDir::Files)) layDown(file, QDir(to));
}

void prepareProgramFolder() {
  const QString installed = installedFolder();
  if (installed.isEmpty()) return;
  layDownFiles(installed, sCartellaProgramma());
  const QString reports = QStringLiteral("/report");
  layDownFiles(installed + reports, sCartellaProgramma() + reports);
}

}  // namespace tavolix
