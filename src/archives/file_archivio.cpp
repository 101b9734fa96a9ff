#include "archives/file_archivio.h"

#include <QFileInfo>
#include <QLocale>

#include "archives/percorsi.h"
#include "core/errore.h"
#include "core/modini.h"
#include "core/modutil.h"
#include "model/riparazione.h"
#include "platform/file_system.h"
#include "platform/progress_window.h"
#include "platform/system_path.h"
#include "store/journal.h"
#include "store/safe_copy.h"
#include "store/unfinished_file.h"

namespace tavolix {
namespace {

QString requirePlace(const QString& path) {
  RichiediDisco(path);
  return sFileEsatto(path);
}

// Runs work that tells how far it has come. Broken off by the user is no failure.
template <typename Work>
EsitoFile withProgress(const QString& what, Work&& work) {
  platform::ProgressWindow window(what);
  const auto failure = fallimentoDi(
      [&] { work([&](qint64 done, qint64 total) { return window.report(done, total); }); });
  if (!failure) return EsitoFile::kFatto;
  if (failure->number() == store::failure::kInterrupted) return EsitoFile::kInterrotto;
  throw *failure;
}

bool acceptsAsItIs(const QString& path, const store::CopyReport& report) {
  const QString name = sNomeArchivio(path);
  if (report.condition == store::Condition::NoArchive) {
    const QString text =
        QStringLiteral("Il file %1 non e' un archivio riconosciuto. Vuoi copiarlo ugualmente?");
    return iMsg(text.arg(name), 2) == 1;
  }
  QString text = QStringLiteral("L'archivio %1 e' danneggiato").arg(name);
  if (!report.damaged.empty()) {
    text += QStringLiteral(" (pagine danneggiate: %1)")
                .arg(QLocale().toString(static_cast<qlonglong>(report.damaged.size())));
  }
  text += QStringLiteral(": la copia sara' danneggiata allo stesso modo. Vuoi continuare?");
  return iMsg(text, 2) == 1;
}

// The same for a file that is about to be opened, whose journal may belong to another one: the user
// is told, as at any opening.
QString requireSettled(const QString& given) {
  QString path = requirePlace(given);
  if (QFileInfo(path).isFile()) DiGiornale(store::setAsideForeignJournal(path));
  return path;
}

// Taken back before the file moves, a write that was interrupted needs its journal no more.
void settle(const QString& path) {
  const auto failure = fallimentoDi([&] { store::settleJournal(path); });
  // What does not open has nothing to be taken back, unless a journal says so.
  if (failure && QFileInfo::exists(path + QStringLiteral("-journal"))) throw *failure;
}

}  // namespace

EsitoFile CopiaArchivio(const QString& sOrigine, const QString& sDestinazione,
                        const QString& sCosa) {
  const QString source = requireSettled(sOrigine);
  const QString target = requireSettled(sDestinazione);
  // What lies there of a file that is gone would be played into the new one.
  if (!QFileInfo::exists(target)) store::removeJournals(target);
  store::CopyReport report;
  const auto copy = [&](store::NotWhole notWhole) {
    return withProgress(sCosa, [&](const store::Progress& progress) {
      report = store::CopyDatabase(source, target, notWhole, progress);
    });
  };
  const EsitoFile first = copy(store::NotWhole::Refuse);
  if (first != EsitoFile::kFatto || report.isCopied) return first;
  if (!acceptsAsItIs(source, report)) return EsitoFile::kInterrotto;
  return copy(store::NotWhole::Copy);
}

void RinominaArchivio(const QString& sDa, const QString& sA) {
  const QString source = requireSettled(sDa);
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

std::optional<store::RepairReport> RiparaArchivio(const QString& sPath) {
  const QString path = requireSettled(sPath);
  const store::RepairPlan plan = PianoRiparazione(platform::systemPath(sModello()));
  store::RepairReport report;
  const EsitoFile done =
      withProgress(QStringLiteral("Riparazione archivio"), [&](const store::Progress& progress) {
        report = store::RepairDatabase(path, plan, progress);
      });
  if (done != EsitoFile::kFatto) return std::nullopt;
  return report;
}

EsitoFile ComprimiArchivio(const QString& sPath) {
  const QString path = requireSettled(sPath);
  return withProgress(
      QStringLiteral("Compressione archivio"),
      [&](const store::Progress& progress) { store::CompactInPlace(path, progress); });
}

void DiGiornale(const QString& sNome) {
  if (sNome.isEmpty()) return;
  iMsg(QStringLiteral("Accanto all'archivio c'era un giornale di modifiche interrotte che non e' "
                      "dello stato attuale dell'archivio. Non e' stato usato, ed e' stato messo "
                      "da parte con il nome ") +
           sNome,
       0);
}

void TogliResti(const QString& sDir) {
  const QString folder = platform::systemPath(sDir);
  if (!folder.isEmpty()) ignorando([&] { store::ClearLeftovers(folder); });
}

}  // namespace tavolix
