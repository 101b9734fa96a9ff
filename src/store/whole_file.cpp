#include "store/whole_file.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QUrl>
#include <vector>

#include "store/connection.h"
#include "store/database.h"
#include "store/page_checksum.h"
#include "store/write_anew.h"

namespace store {
namespace {

[[noreturn]] void unreadable(const QString& path) {
  throw Failure(failure::kDiskError, QStringLiteral("Impossibile leggere il file %1").arg(path));
}

constexpr int kStepsACall = 10000;
// The disk reads so far ahead of what is being verified.
constexpr qint64 kAhead = 8 * PageScan::kPiece;

void flushToDisk(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadWrite) || ::fsync(file.handle()) != 0) {
    throw Failure(failure::kDiskError, QStringLiteral("Impossibile scrivere il file %1").arg(path));
  }
}

}  // namespace

PageReport VerifyPages(const QString& path, const Progress& progress) {
  QFile file(path);
  if (!file.exists()) {
    throw Failure(failure::kFileNotFound, QStringLiteral("File %1 non trovato").arg(path));
  }
  if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) unreadable(path);
  PageScan scan;
  std::vector<char> piece(static_cast<std::size_t>(PageScan::kPiece));
  const qint64 total = file.size();
  for (qint64 done = 0; done < total && (done == 0 || scan.report().hasChecksums);) {
    if (progress && !progress(done, total)) {
      PageReport report = scan.report();
      report.isComplete = false;
      return report;
    }
    ::posix_fadvise(file.handle(), done + PageScan::kPiece, kAhead, POSIX_FADV_WILLNEED);
    const qint64 some = file.read(piece.data(), PageScan::kPiece);
    if (some <= 0) unreadable(path);
    scan.take(piece.data(), some);
    done += some;
  }
  return scan.report();
}

void writeAnew(const QString& source, const QString& target, const std::function<bool()>& goesOn) {
  const DatabasePtr archive = OpenDatabase(source);
  Connection connection(archive->Name(), SQLite::OPEN_READWRITE | SQLite::OPEN_URI);
  sqlite3* const handle = connection.database().getHandle();
  sqlite3_limit(handle, SQLITE_LIMIT_ATTACHED, 1);
  reserveChecksums(handle);
  connection.database().exec("PRAGMA cache_size = -50000");
  // In place of the limit of a query's steps.
  auto callback = [](void* wanted) {
    const auto& ask = *static_cast<const std::function<bool()>*>(wanted);
    return ask && !ask() ? 1 : 0;
  };
  sqlite3_progress_handler(handle, kStepsACall, callback,
                           const_cast<void*>(static_cast<const void*>(&goesOn)));
  const QByteArray uri = QUrl::fromLocalFile(target).toEncoded() + "?checksums=1";
  SQLite::Statement copy(connection.database(), "VACUUM INTO ?");
  copy.bind(1, uri.toStdString());
  const int code = copy.tryExecuteStep();
  if (code == SQLITE_INTERRUPT) interrupted();
  // The engine does not say of a disk's error that it was a page.
  if (code == SQLITE_IOERR && !VerifyPages(archive->Name()).damaged.empty()) {
    throw Failure(failure::kPageDamaged,
                  QStringLiteral("L'archivio %1 e' danneggiato: occorre ripararlo").arg(source));
  }
  if (code != SQLITE_DONE) throwFailure(SQLite::Exception(handle, code));
}

void verifyAnew(const QString& path, const Progress& progress) {
  const PageReport report = VerifyPages(path, progress);
  if (!report.isComplete) interrupted();
  if (report.hasChecksums && report.damaged.empty()) return;
  throw Failure(failure::kPageDamaged,
                QStringLiteral("Il file %1 non e' stato scritto per intero").arg(path));
}

void CompactDatabase(const QString& source, const QString& target) {
  const QString full = QFileInfo(target).absoluteFilePath();
  if (QFileInfo::exists(full)) {
    throw Failure(failure::kFileExists, QStringLiteral("Il file %1 esiste gia'").arg(target));
  }
  auto unfinished = qScopeGuard([&] { QFile::remove(full); });
  guarded([&] { writeAnew(source, full, {}); });
  flushToDisk(full);
  verifyAnew(full, {});
  unfinished.dismiss();
}

}  // namespace store
