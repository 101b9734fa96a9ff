#include "store/repair.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <algorithm>
#include <cerrno>

#include "store/connection.h"
#include "store/file_failure.h"
#include "store/journal.h"
#include "store/locked_file.h"
#include "store/page_image.h"
#include "store/page_scan.h"
#include "store/repaired_file.h"
#include "store/salvage.h"
#include "store/sqlite_language.h"
#include "store/unfinished_file.h"
#include "store/write_anew.h"

namespace store {
namespace {

constexpr int kStepsACall = 10000;
constexpr const char* kJournal = "-journal";

// Takes back an interrupted write where the file still can be opened.
void settle(const QString& path) {
  try {
    settleJournal(path);
  } catch (const Failure& failure) {
    // The engine does not always say of a disk's error that it was a page.
    const int number = failure.number();
    if (number != failure::kUnknownFormat && number != failure::kDamaged &&
        number != failure::kPageDamaged && number != failure::kDiskError) {
      throw;
    }
  }
}

bool provesItself(const LockedFile& file, const Progress& progress) {
  PageScan scan;
  QByteArray piece(PageScan::kPiece, '\0');
  const qint64 size = file.size();
  for (qint64 done = 0; done < size; done += PageScan::kPiece) {
    tell(progress, done / 8, size);
    scan.take(piece.constData(), file.read(piece.data(), PageScan::kPiece, done));
  }
  return scan.report().damaged.empty();
}

// The engine's own check, of which the pages read so far tell how far it is.
struct Check {
  sqlite3* handle;
  const Progress& progress;
  qint64 size;

  bool goesOn() const {
    int misses = 0;
    int most = 0;
    sqlite3_db_status(handle, SQLITE_DBSTATUS_CACHE_MISS, &misses, &most, 0);
    constexpr qint64 kPage = 4096;
    const qint64 done = std::min(size, size / 8 + misses * kPage);
    return !progress || progress(std::min(done, size - 1), size);
  }
};

// Pages prove themselves by now: they are read as any tool would.
bool isConsistent(const QString& path, qint64 size, const Progress& progress) {
  try {
    OpenDatabase(path);
    SQLite::Database file(path.toStdString(), SQLite::OPEN_READWRITE);
    addLanguage(file.getHandle());
    file.exec("PRAGMA cell_size_check = ON; PRAGMA cache_size = -50000");
    Check check{file.getHandle(), progress, size};
    SQLite::Statement statement(file, "PRAGMA integrity_check(1)");
    sqlite3_progress_handler(
        file.getHandle(), kStepsACall,
        [](void* self) { return static_cast<const Check*>(self)->goesOn() ? 0 : 1; }, &check);
    const int code = statement.tryExecuteStep();
    if (code == SQLITE_INTERRUPT) interrupted();
    if (code == SQLITE_IOERR) throwFailure(SQLite::Exception(file.getHandle(), code));
    return code == SQLITE_ROW && statement.getColumn(0).getString() == "ok";
  } catch (const Failure& failure) {
    const int number = failure.number();
    const bool isDamage = number == failure::kUnknownFormat || number == failure::kDamaged ||
                          number == failure::kPageDamaged;
    if (!isDamage) throw;
    return false;
  }
}

QByteArray contentOf(const LockedFile& file) {
  QByteArray content(file.size(), Qt::Uninitialized);
  qint64 done = 0;
  while (done < content.size()) {
    const qint64 some = file.read(content.data() + done,
                                  std::min<qint64>(PageScan::kPiece, content.size() - done), done);
    if (some == 0) break;
    done += some;
  }
  content.truncate(done);
  return content;
}

bool isEmpty(const Salvage& salvage) {
  return std::all_of(salvage.tables().begin(), salvage.tables().end(),
                     [](const FoundTable& table) { return table.rows.empty(); });
}

bool isSameFile(const QByteArray& a, const QByteArray& b) {
  struct stat first = {};
  struct stat second = {};
  return ::stat(a.constData(), &first) == 0 && ::stat(b.constData(), &second) == 0 &&
         first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

// A second name for the damaged file, and for the journal that could not be played into it. It may
// have that name already, from a repair that was killed.
QString keep(const QString& path) {
  const QByteArray from = QFile::encodeName(path);
  for (int number = 1;; ++number) {
    QString name = path + QStringLiteral(".danneggiato");
    if (number > 1) name += QString::number(number);
    const QByteArray to = QFile::encodeName(name);
    const bool isLinked = ::link(from.constData(), to.constData()) == 0;
    const int error = errno;
    if (isLinked) {
      ::link((from + kJournal).constData(), (to + kJournal).constData());
      return name;
    }
    if (error == EEXIST) {
      if (isSameFile(from, to)) return name;
      continue;
    }
    // A file system without second names.
    if (QFile::copy(path, name)) return name;
    failAtFile(fileFailureOf(error, name), name);
  }
}

RepairReport recover(const QString& path, LockedFile& damaged, const RepairPlan& plan,
                     const Progress& progress) {
  const qint64 size = damaged.size();
  const PageImage image(contentOf(damaged), [&](qint64 done, qint64 total) {
    return !progress || progress(done * size / std::max<qint64>(total, 1) / 4, size);
  });
  UnfinishedFile repaired(path);
  RepairReport report = guarded([&] {
    RepairedFile file(repaired.path(), plan);
    const Salvage salvage(image, file.model());
    if (isEmpty(salvage)) {
      throw Failure(failure::kUnknownFormat,
                    QStringLiteral("Il file %1 non e' un archivio riconosciuto").arg(path));
    }
    file.fill(salvage, [&] {
      return !progress || progress(size / 4 + std::min(repaired.size(), size) / 2, size);
    });
    return file.finish();
  });
  OpenDatabase(repaired.path())->RaiseCounter(plan.counter, plan.keys);
  repaired.sync();
  verifyAnew(repaired.path(), [&](qint64 done, qint64 total) {
    return !progress || progress(size * 3 / 4 + done * size / total / 4, size);
  });
  auto notReplaced = qScopeGuard([&] {
    if (report.original.isEmpty()) return;
    QFile::remove(report.original);
    QFile::remove(report.original + QLatin1String(kJournal));
  });
  repaired.putInPlace(&damaged, [&] { report.original = keep(repaired.target()); });
  notReplaced.dismiss();
  return report;
}

}  // namespace

qint64 RepairReport::doubtful() const {
  qint64 sum = 0;
  for (const Table& table : tables) sum += table.doubtful;
  return sum;
}

qint64 RepairReport::lost() const {
  qint64 sum = 0;
  for (const Table& table : tables) sum += table.lost;
  return sum;
}

bool RepairReport::isAllKnown() const {
  return std::all_of(tables.begin(), tables.end(),
                     [](const Table& table) { return table.isLostKnown; });
}

RepairReport RepairDatabase(const QString& path, const RepairPlan& plan, const Progress& progress) {
  if (!QFileInfo(path).isFile()) {
    throw Failure(failure::kFileNotFound, QStringLiteral("File %1 non trovato").arg(path));
  }
  const QString full = QFileInfo(path).canonicalFilePath();
  settle(full);
  LockedFile file(full);
  file.keepFromWriters();
  if (provesItself(file, progress) &&
      guarded([&] { return isConsistent(full, file.size(), progress); })) {
    RepairReport sound;
    sound.isSound = true;
    return sound;
  }
  return recover(full, file, plan, progress);
}

}  // namespace store
