#include "store/safe_copy.h"

#include <xxhash.h>

#include <QDateTime>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <memory>

#include "store/connection.h"
#include "store/failure.h"
#include "store/file_failure.h"
#include "store/journal.h"
#include "store/locked_file.h"
#include "store/page_scan.h"
#include "store/unfinished_file.h"
#include "store/write_anew.h"

namespace store {
namespace {

using Bytes = std::vector<char>;

// Tells copies apart, not forgeries.
class Digest final {
 public:
  Digest() { XXH3_64bits_reset(state_.get()); }
  void take(const Bytes& bytes, qint64 size) {
    XXH3_64bits_update(state_.get(), bytes.data(), static_cast<std::size_t>(size));
  }
  quint64 value() const { return XXH3_64bits_digest(state_.get()); }

 private:
  struct Free {
    void operator()(XXH3_state_t* state) const { XXH3_freeState(state); }
  };
  std::unique_ptr<XXH3_state_t, Free> state_{XXH3_createState()};
};

struct Stamp {
  qint64 size;
  QDateTime modified;
  bool operator==(const Stamp&) const = default;
};

Stamp stampOf(const QString& path) {
  const QFileInfo file(path);
  return {file.size(), file.lastModified()};
}

void requireUnchanged(const QString& path, const Stamp& before) {
  if (stampOf(path) == before) return;
  throw Failure(failure::kChanged,
                QStringLiteral("Il file %1 e' cambiato durante la copia").arg(path));
}

// What opening says of a file, which takes back an interrupted write.
Condition settle(const QString& path) {
  try {
    settleJournal(path);
    return Condition::Whole;
  } catch (const Failure& failure) {
    switch (failure.number()) {
      case failure::kUnknownFormat:
        return Condition::NoArchive;
      case failure::kDamaged:
      case failure::kPageDamaged:
      case failure::kDiskError:  // the engine does not always say that it was a page
        return Condition::Damaged;
      default:
        throw;
    }
  }
}

// One pass over all bytes of a file; half of the work.
template <typename Read, typename Each>
void pass(qint64 size, qint64 before, const Progress& progress, Read&& read, Each&& each) {
  Bytes bytes(static_cast<std::size_t>(PageScan::kPiece));
  for (qint64 done = 0; done < size;) {
    tell(progress, (before + done) / 2, size);
    const qint64 some = read(bytes.data(), PageScan::kPiece, done);
    if (some == 0) break;
    each(bytes, some);
    done += some;
  }
}

void copyBytes(const LockedFile& from, UnfinishedFile& to, CopyReport& report, Digest& digest,
               const Progress& progress) {
  PageScan scan;
  pass(
      from.size(), 0, progress,
      [&](char* bytes, qint64 size, qint64 at) { return from.read(bytes, size, at); },
      [&](const Bytes& bytes, qint64 size) {
        scan.take(bytes.data(), size);
        digest.take(bytes, size);
        to.write(bytes.data(), size);
        to.startSync();
      });
  report.damaged = scan.report().damaged;
  if (!report.damaged.empty()) report.condition = Condition::Damaged;
}

void compare(const UnfinishedFile& copy, qint64 size, const Digest& wanted,
             const Progress& progress) {
  Digest digest;
  pass(
      size, size, progress,
      [&](char* bytes, qint64 some, qint64 at) { return copy.read(bytes, some, at); },
      [&](const Bytes& bytes, qint64 some) { digest.take(bytes, some); });
  if (copy.size() == size && digest.value() == wanted.value()) return;
  throw Failure(failure::kDiskError,
                QStringLiteral("La copia di %1 riletta dal disco non e' uguale all'originale")
                    .arg(copy.target()));
}

void requireOther(const QString& source, const QString& target) {
  const QFileInfo from(source);
  if (from.isDir()) failAtFile(file_failure::kAccess, source);
  if (!from.exists()) failAtFile(fileFailureOf(ENOENT, source), source);
  const QFileInfo to(target);
  if (to.exists() && from == to) failAtFile(file_failure::kDenied, target);
}

}  // namespace

CopyReport CopyDatabase(const QString& source, const QString& target, NotWhole notWhole,
                        const Progress& progress) {
  requireOther(source, target);
  CopyReport report;
  report.condition = settle(source);
  if (report.condition != Condition::Whole && notWhole == NotWhole::Refuse) return report;
  LockedFile from(source);
  from.keepFromWriters();
  const Stamp before = stampOf(source);
  UnfinishedFile copy(target);
  Digest digest;
  copyBytes(from, copy, report, digest, progress);
  if (report.condition != Condition::Whole && notWhole == NotWhole::Refuse) return report;
  requireUnchanged(source, before);
  copy.sync();
  compare(copy, from.size(), digest, progress);
  if (QFileInfo::exists(copy.target())) settle(copy.target());
  requireUnchanged(source, before);
  copy.putInPlace();
  report.isCopied = true;
  return report;
}

void CompactInPlace(const QString& path, const Progress& progress) {
  settleJournal(path);
  LockedFile archive(path);
  archive.keepFromWriters();
  UnfinishedFile compact(path);
  const qint64 total = archive.size();
  guarded([&] {
    writeAnew(path, compact.path(), [&] {
      compact.startSync();
      return !progress || progress(std::min(compact.size(), total) / 2, total);
    });
  });
  compact.sync();
  verifyAnew(compact.path(), [&](qint64 done, qint64 size) {
    return !progress || progress((size + done) / 2 * total / size, total);
  });
  compact.putInPlace(&archive);
}

}  // namespace store
