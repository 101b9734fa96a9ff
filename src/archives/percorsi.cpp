#include "archives/percorsi.h"

#include <QDir>
#include <algorithm>

#include "core/modini.h"
#include "core/modutil.h"
#include "platform/file_system.h"
#include "platform/system_path.h"
#include "store/failure.h"

namespace tavolix {
namespace {

constexpr int kNoMedium = 71;
const QString kArchivi = QStringLiteral("db_DirArc");

bool isOnDrive(const QString& path) {
  return path.size() > 1 && path[1] == u':' &&
         (path[0].toUpper() == u'A' || path[0].toUpper() == u'B');
}

QString separatorOf(const QString& path) {
  return path.contains(u'\\') ? QStringLiteral("\\") : QStringLiteral("/");
}

QString closed(const QString& folder, const QString& separator) {
  return folder.endsWith(u'/') || folder.endsWith(u'\\') ? folder : folder + separator;
}

qsizetype nameAt(const QString& path) {
  return path.size() - sNomeArchivio(path).size();
}

}  // namespace

QString sNomeArchivio(const QString& sPath) {
  const bool hasDrive = sPath.size() > 1 && sPath[1] == u':' && sPath[0].isLetter();
  const qsizetype separator = std::max(sPath.lastIndexOf(u'/'), sPath.lastIndexOf(u'\\'));
  return sPath.mid(std::max<qsizetype>(separator + 1, hasDrive ? 2 : 0));
}

QString sCartellaMostrata(const QString& sPath) {
  if (sPath.trimmed().isEmpty()) return {};
  if (isOnDrive(sPath)) return closed(sPath, QStringLiteral("\\"));
  return closed(platform::systemPath(sPath), QStringLiteral("/"));
}

QString sPercorsoScritto(const QString& sMostrato, const QString& sPrecedente) {
  const QString name = sNomeArchivio(sMostrato);
  const QString folder = sMostrato.left(nameAt(sMostrato));
  const bool same = sNomeArchivio(sPrecedente) == name &&
                    sCartellaMostrata(sPrecedente.left(nameAt(sPrecedente))) == folder;
  if (same || (name.isEmpty() && sCartellaMostrata(sPrecedente) == folder)) return sPrecedente;
  if (!sPrecedente.contains(u'\\')) return sMostrato;
  return QString(sMostrato).replace(u'/', separatorOf(sPrecedente));
}

QString sFileEsatto(const QString& sPath) {
  const QString folder = sPath.left(nameAt(sPath));
  const QString system = platform::systemPath(folder.isEmpty() ? QStringLiteral(".") : folder);
  if (system.isEmpty()) return {};
  return closed(system, QStringLiteral("/")) + sNomeArchivio(sPath);
}

void RichiediDisco(const QString& sPath) {
  if (!isOnDrive(sPath) || !platform::systemPath(sPath.left(2)).isEmpty()) return;
  throw store::Failure(kNoMedium,
                       QStringLiteral("Non c'e' nessun disco nell'unita' %1").arg(sPath.left(2)));
}

QString sCartellaArchivi() {
  QString folder;
  if (!bLeggiStr(kArchivi, folder) || folder.trimmed().isEmpty()) {
    folder = sCartellaProgramma() + u'\\';
  }
  return sCartellaMostrata(folder);
}

QString sEstensioneArchivi() {
  QString extension;
  return bLeggiStr(QStringLiteral("db_Ext"), extension) ? extension : QStringLiteral(".mdb");
}

QString sModello() {
  QString source;
  bLeggiStr(QStringLiteral("db_Source"), source);
  return sCartellaProgramma() + u'\\' + source;
}

QStringList sElencoArchivi(const QString& sDir, const QString& sExt) {
  QStringList names = platform::listFiles(sDir + u'*' + sExt);
  const QString source = sModello();
  names.removeIf([&](const QString& name) { return platform::isSameFile(sDir + name, source); });
  return names;
}

QString sCartellaCopie(const QString& sAltrimenti) {
  QString folder;
  const bool set = bLeggiStr(QStringLiteral("db_DirCopie"), folder) && !folder.trimmed().isEmpty();
  return sCartellaMostrata(set ? folder : sAltrimenti);
}

void ScriviPercorso(const QString& sChiave, const QString& sMostrato) {
  QString before;
  bLeggiStr(sChiave, before);
  bScriviStr(sChiave, sPercorsoScritto(sMostrato, before));
}

}  // namespace tavolix
