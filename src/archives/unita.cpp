#include "archives/unita.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <algorithm>

#include "platform/settings_file.h"
#include "platform/system_path.h"

namespace tavolix {
namespace {

// Where desktops mount what the user plugs in.
constexpr const char* kForUsers[] = {"/media/", "/run/media/"};
// What the system keeps for itself.
constexpr const char* kOfSystem[] = {"/boot", "/dev", "/etc", "/proc", "/run",
                                     "/snap", "/sys", "/tmp", "/usr",  "/var"};

bool liesIn(const QString& path, const QString& folder) {
  return path == folder || folder == u'/' || path.startsWith(folder + u'/');
}

bool isForUsers(const Volume& volume) {
  return std::any_of(std::begin(kForUsers), std::end(kForUsers), [&](const char* place) {
    return volume.sRadice.startsWith(QLatin1String(place));
  });
}

bool isOfSystem(const Volume& volume) {
  return std::any_of(std::begin(kOfSystem), std::end(kOfSystem), [&](const char* place) {
    return liesIn(volume.sRadice, QString::fromLatin1(place));
  });
}

bool isDisc(const Volume& volume) {
  return volume.sTipo == QLatin1String("iso9660") || volume.sTipo == QLatin1String("udf");
}

// A partition says what its disk is.
bool isRemovable(const QString& device) {
  const QFileInfo block(QStringLiteral("/sys/class/block/") + QFileInfo(device).fileName());
  const QString own = block.canonicalFilePath();
  for (const QString& folder : {own, QFileInfo(own).path()}) {
    QFile flag(folder + QStringLiteral("/removable"));
    if (flag.open(QIODevice::ReadOnly)) return flag.readAll().trimmed() == "1";
  }
  return false;
}

}  // namespace

QVector<Volume> Volumi() {
  QVector<Volume> all;
  for (const QStorageInfo& info : QStorageInfo::mountedVolumes()) {
    if (!info.isValid() || !info.isReady() || !QFileInfo(info.rootPath()).isDir()) continue;
    const QString device = QFile::decodeName(info.device());
    all.append(
        {info.rootPath(), device, QString::fromLatin1(info.fileSystemType()), isRemovable(device)});
  }
  return all;
}

Unita UnitaDischetti(const QVector<Volume>& volumi, const Unita& impostate) {
  QStringList media;
  for (const Volume& volume : volumi) {
    const bool removable = isForUsers(volume) || (volume.bRimovibile && !isOfSystem(volume));
    if (removable && volume.sRadice != u'/' && !isDisc(volume)) media.append(volume.sRadice);
  }
  return {impostate.sA.isEmpty() ? media.value(0) : impostate.sA,
          impostate.sB.isEmpty() ? media.value(1) : impostate.sB};
}

Unita AggiornaUnita(const QString& sFileIni) {
  const QString section = QStringLiteral("Unita");
  const auto setting = [&](QChar drive) {
    return platform::readString(sFileIni, section, drive, {});
  };
  Unita found = UnitaDischetti(Volumi(), {setting(u'A'), setting(u'B')});
  for (auto& [drive, folder] : {std::pair<QChar, QString&>{u'A', found.sA}, {u'B', found.sB}}) {
    if (!QFileInfo(folder).isDir()) folder.clear();
    platform::setDriveFolder(drive, folder);
  }
  return found;
}

QStringList sRadici(const QVector<Volume>& volumi, const QString& sPersonale) {
  QStringList roots{QStringLiteral("/"), sPersonale};
  for (const Volume& volume : volumi) {
    const bool ofUser = isForUsers(volume) || !isOfSystem(volume);
    if (ofUser && !roots.contains(volume.sRadice)) roots.append(volume.sRadice);
  }
  return roots;
}

int iRadiceDi(const QStringList& radici, const QString& sDir) {
  const QString folder = QDir::cleanPath(sDir);
  int best = 0;
  for (int i = 1; i < radici.size(); ++i) {
    if (liesIn(folder, radici[i]) && radici[i].size() > radici[best].size()) best = i;
  }
  return best;
}

}  // namespace tavolix
