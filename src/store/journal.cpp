// The formats of archive and journal are those of https://www.sqlite.org/fileformat2.html

#include "store/journal.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <QtEndian>
#include <optional>

#include "store/database.h"

namespace store {
namespace {

constexpr const char* kJournal = "-journal";
constexpr const char* kLog = "-wal";
constexpr const char* kShared = "-shm";

// The first page of an archive.
constexpr qint64 kHeaderBytes = 100;
constexpr int kWriteVersionAt = 18;
constexpr char kLogVersion = 2;
constexpr int kCounterAt = 24;
constexpr int kPagesAt = 28;

// A journal: parts of a header, which fills a sector, and the records behind it.
constexpr char kMagic[] = "\xd9\xd5\x05\xf9\x20\xa1\x63\xd7";
constexpr qint64 kMagicBytes = 8;
constexpr qint64 kPartHeaderBytes = 28;
constexpr quint32 kToTheEnd = 0xffffffff;
constexpr qint64 kNumberBytes = 4;

// Bytes of an archive that the engine's locks lie on, beyond any page.
constexpr off_t kLocksAt = 0x40000000;
constexpr off_t kLocksBytes = 512;

quint32 numberAt(const QByteArray& bytes, qint64 place) {
  return qFromBigEndian<quint32>(bytes.constData() + place);
}

// No other program reads or writes the archive while it lives, and none is waited for.
class Lock final {
 public:
  explicit Lock(QFile& file) {
    struct flock wanted = {};
    wanted.l_type = F_WRLCK;
    wanted.l_whence = SEEK_SET;
    wanted.l_start = kLocksAt;
    wanted.l_len = kLocksBytes;
    // Closing the file lets go of it.
    held_ = ::fcntl(file.handle(), F_SETLK, &wanted) == 0;
  }
  bool isHeld() const { return held_; }

 private:
  bool held_ = false;
};

struct Part {
  quint32 records;
  quint32 pages;  // of the archive before the write
  qint64 sector;
  qint64 page;  // bytes
};

std::optional<Part> partAt(QFile& journal, qint64 place) {
  if (!journal.seek(place)) return std::nullopt;
  const QByteArray header = journal.read(kPartHeaderBytes);
  if (header.size() < kPartHeaderBytes || !header.startsWith(kMagic)) return std::nullopt;
  const Part part{numberAt(header, kMagicBytes), numberAt(header, 16), numberAt(header, 20),
                  numberAt(header, 24)};
  const bool makesSense = part.page >= 512 && part.page <= 65536 && part.sector >= 32;
  return makesSense ? std::optional(part) : std::nullopt;
}

// What a journal says of the archive that it takes back a write of.
struct Claim {
  std::optional<quint32> counter;  // of the copy of page 1, which the last part may hold
  quint32 pages = 0;
};

// Nothing of a journal whose first part has not reached the disk, as its magic number shows.
std::optional<Claim> claimOf(QFile& journal) {
  std::optional<Claim> claim;
  qint64 place = 0;
  for (auto part = partAt(journal, 0); part; part = partAt(journal, place)) {
    if (!claim) claim = Claim{std::nullopt, part->pages};
    const qint64 record = kNumberBytes + part->page + kNumberBytes;
    place += part->sector;
    const qint64 whole = (journal.size() - place) / record;
    const qint64 records =
        part->records == kToTheEnd ? whole : std::min<qint64>(part->records, whole);
    for (qint64 i = 0; i < records && !claim->counter; ++i, place += record) {
      journal.seek(place);
      const QByteArray begin = journal.read(kNumberBytes + kHeaderBytes);
      if (begin.size() < kNumberBytes + kHeaderBytes || numberAt(begin, 0) != 1) continue;
      claim->counter = numberAt(begin, kNumberBytes + kCounterAt);
    }
    if (claim->counter) break;
    // The next part begins with a sector.
    place = (place + part->sector - 1) / part->sector * part->sector;
  }
  return claim;
}

// The write is one ahead of the counter, or has not come to page 1 yet: then the number of pages
// there is still that of before.
bool fits(const Claim& claim, const QByteArray& header) {
  const quint32 counter = numberAt(header, kCounterAt);
  if (!claim.counter) return claim.pages == numberAt(header, kPagesAt);
  return counter == *claim.counter || counter == *claim.counter + 1;
}

bool isForeign(const QString& journal, const QByteArray& header) {
  QFile file(journal);
  if (!file.open(QIODevice::ReadOnly)) return false;
  const std::optional<Claim> claim = claimOf(file);
  return claim && !fits(*claim, header);
}

QString renamed(const QString& file) {
  QString name;
  int number = 0;
  do {
    name = QStringLiteral("%1.scartato-%2").arg(file).arg(++number);
  } while (QFile::exists(name));
  if (QFile::rename(file, name)) return name;
  throw Failure(failure::kCannotOpen,
                QStringLiteral("Il file %1 appartiene a un altro stato dell'archivio e non si "
                               "puo' mettere da parte")
                    .arg(file));
}

}  // namespace

QString setAsideForeignJournal(const QString& path) {
  const QString journal = path + QLatin1String(kJournal);
  const QString log = path + QLatin1String(kLog);
  if (!QFile::exists(journal) && !QFile::exists(log)) return {};
  QFile archive(path);
  if (!archive.open(QIODevice::ReadWrite)) return {};
  const Lock lock(archive);
  const QByteArray header = lock.isHeld() ? archive.read(kHeaderBytes) : QByteArray();
  if (header.size() < kHeaderBytes) return {};
  // The engine plays back a log beside any file.
  if (QFile::exists(log) && header[kWriteVersionAt] != kLogVersion) return renamed(log);
  if (QFile::exists(journal) && isForeign(journal, header)) return renamed(journal);
  return {};
}

void settleJournal(const QString& path) {
  OpenDatabase(path)->Close();
}

void removeJournals(const QString& path) {
  for (const char* ending : {kJournal, kLog, kShared}) {
    QFile file(path + QLatin1String(ending));
    if (!file.exists() || file.remove()) continue;
    throw Failure(failure::kCannotOpen,
                  QStringLiteral("Il file %1 non si puo' eliminare").arg(file.fileName()));
  }
}

}  // namespace store
