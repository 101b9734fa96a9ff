#pragma once

#include <QString>
#include <functional>

#include "store/progress.h"

namespace store {

// The steps of a compaction. Writes an archive, without free space and with checksums, into a file
// that is empty or does not exist; `goesOn` is asked now and then. Fails as OpenDatabase does, with
// 3428 (a damaged page) and 3059 (it does not go on).
void writeAnew(const QString& source, const QString& target, const std::function<bool()>& goesOn);
// Fails with 3428 if a page is not what was written, and with 3059.
void verifyAnew(const QString& path, const Progress& progress);

}  // namespace store
