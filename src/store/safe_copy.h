#pragma once

#include <QString>
#include <vector>

#include "store/progress.h"

namespace store {

// What the file to be copied is: an archive that proves itself, one with damage, or none.
enum class Condition { Whole, Damaged, NoArchive };
// What to do with a file that is not whole: only say so, or copy it as it is.
enum class NotWhole { Refuse, Copy };

struct CopyReport {
  bool isCopied = false;
  Condition condition = Condition::Whole;
  std::vector<qint64> damaged;  // pages from 1; none where the file does not even open
};

// Copies a file, an older one at the target's path staying as it is until the copy has reached the
// disk and has been read back. An interrupted write of the source is taken back before. No other
// program can write into the source meanwhile, and the archive may be open in this process: it is
// read through the engine's own file layer. The last step cannot be broken off.
// Fails with 53, 61 (disk full), 70 (also a file onto itself), 75 (a folder), 76, 3043 (cannot be
// read, or is not read back as written), 3059 (broken off), 3197 (the source was changed by what
// knows no locks), 3260; whatever the failure, the target is as it was.
CopyReport CopyDatabase(const QString& source, const QString& target,
                        NotWhole notWhole = NotWhole::Refuse, const Progress& progress = {});

// Writes an archive anew without free space and puts that in its place, in one step and only once
// it is on the disk and verified. Not for an archive that is open. Fails as OpenDatabase does and
// with 61 or 3026 (disk full), 70, 75, 3059, 3260, 3428 (a damaged page); the archive is then as it
// was.
void CompactInPlace(const QString& path, const Progress& progress = {});

}  // namespace store
