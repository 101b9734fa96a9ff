#include "archives/file_archivio.h"

#include <QFile>
#include <QFileInfo>
#include <QLocale>

#include "archives/percorsi.h"
#include "core/errore.h"
#include "core/modutil.h"
#include "platform/file_system.h"
#include "platform/progress_window.h"
#include "store/failure.h"
#include "store/journal.h"
#include "store/whole_file.h"

namespace tavolix {
namespace {

QString requirePlace(const QString& path) {
  RichiediDisco(path);
  return sFileEsatto(path);
}

// A write that was interrupted is taken back, so that the file alone is the archive.
void settle(const QString& path) {
  // What is no archive, or a damaged one, has nothing to be taken back but by a journal.
  const auto failure = fallimentoDi([&] { store::settleJournal(path); });
  if (failure && QFile::exists(path + QStringLiteral("-journal"))) throw *failure;
}

bool acceptsDamage(const QString& path, std::size_t pages) {
  if (pages == 0) return true;
  const QString text = QStringLiteral(
      "L'archivio %1 ha pagine danneggiate: %2. La copia le conterra' come sono. "
      "Vuoi continuare?");
  return iMsg(text.arg(sNomeFile(path), QLocale().toString(static_cast<qlonglong>(pages))), 2) == 1;
}

}  // namespace

EsitoFile CopiaArchivio(const QString& sOrigine, const QString& sDestinazione,
                        const QString& sCosa) {
  const QString source = requirePlace(sOrigine);
  const QString target = requirePlace(sDestinazione);
  platform::ProgressWindow progress(sCosa);
  settle(source);
  const auto report = [&](qint64 done, qint64 total) { return progress.report(done, total); };
  const store::PageReport pages = store::VerifyPages(source, report);
  if (!pages.isComplete) return EsitoFile::kInterrotto;
  if (pages.hasChecksums && !acceptsDamage(source, pages.damaged.size()))
    return EsitoFile::kInterrotto;
  platform::copyFile(source, target);
  store::removeJournals(target);
  return EsitoFile::kFatto;
}

void RinominaArchivio(const QString& sDa, const QString& sA) {
  const QString source = requirePlace(sDa);
  const QString target = requirePlace(sA);
  settle(source);
  store::removeJournals(target);
  platform::renameFile(source, target);
  store::removeJournals(source);
}

void EliminaArchivio(const QString& sPath) {
  const QString path = requirePlace(sPath);
  platform::deleteFile(path);
  store::removeJournals(path);
}

void RiparaArchivio(const QString& sPath) {
  const QString path = requirePlace(sPath);
  settle(path);
}

EsitoFile ComprimiArchivio(const QString& sPath) {
  const QString path = requirePlace(sPath);
  const QString partial = path + QStringLiteral(".parziale");
  QFile::remove(partial);
  store::CompactDatabase(path, partial);
  if (QFile::rename(path, path + QStringLiteral(".prima")) && QFile::rename(partial, path)) {
    QFile::remove(path + QStringLiteral(".prima"));
  }
  return EsitoFile::kFatto;
}

}  // namespace tavolix
