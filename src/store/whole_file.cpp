#include "store/whole_file.h"

#include <sqlite3.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QUrl>

#include "store/connection.h"
#include "store/database.h"
#include "store/page_checksum.h"

namespace store {
namespace {

constexpr qint64 kHeader = 100;
constexpr int kPageSizeAt = 16;

const uchar* bytesOf(const QByteArray& data) {
  return reinterpret_cast<const uchar*>(data.constData());
}

[[noreturn]] void unreadable(const QString& path) {
  throw Failure(failure::kDiskError, QStringLiteral("Impossibile leggere il file %1").arg(path));
}

// The header's 1 stands for 65,536 bytes.
qint64 pageSizeIn(const QByteArray& header) {
  const qint64 size = bytesOf(header)[kPageSizeAt] << 8 | bytesOf(header)[kPageSizeAt + 1];
  return size == 1 ? 65536 : size;
}

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
  if (!file.open(QIODevice::ReadOnly)) unreadable(path);
  PageReport report;
  const QByteArray header = file.peek(kHeader);
  report.hasChecksums = header.size() == kHeader && saysChecksums(bytesOf(header));
  if (!report.hasChecksums) return report;
  const qint64 size = pageSizeIn(header);
  const qint64 total = file.size();
  for (qint64 done = 0; size > kChecksumBytes && done < total; done += size) {
    if (progress && !progress(done, total)) {
      report.isComplete = false;
      return report;
    }
    const QByteArray page = file.read(size);
    if (page.isEmpty()) unreadable(path);
    const qint64 number = done / size + 1;
    if (page.size() != size || !isWholePage(bytesOf(page), size, number)) {
      report.damaged.push_back(number);
    }
  }
  return report;
}

void CompactDatabase(const QString& source, const QString& target) {
  const QString full = QFileInfo(target).absoluteFilePath();
  if (QFileInfo::exists(full)) {
    throw Failure(failure::kFileExists, QStringLiteral("Il file %1 esiste gia'").arg(target));
  }
  const DatabasePtr archive = OpenDatabase(source);
  auto unfinished = qScopeGuard([&] { QFile::remove(full); });
  guarded([&] {
    Connection connection(archive->Name(), SQLite::OPEN_READWRITE | SQLite::OPEN_URI);
    sqlite3* const handle = connection.database().getHandle();
    sqlite3_limit(handle, SQLITE_LIMIT_ATTACHED, 1);
    reserveChecksums(handle);
    const QByteArray uri = QUrl::fromLocalFile(full).toEncoded() + "?checksums=1";
    SQLite::Statement copy(connection.database(), "VACUUM INTO ?");
    copy.bind(1, uri.toStdString());
    copy.exec();
  });
  flushToDisk(full);
  const PageReport report = VerifyPages(full);
  if (!report.hasChecksums || !report.damaged.empty()) {
    throw Failure(failure::kPageDamaged,
                  QStringLiteral("Il file %1 non e' stato scritto per intero").arg(target));
  }
  unfinished.dismiss();
}

}  // namespace store
