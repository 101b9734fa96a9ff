#pragma once

#include <QString>

#include "store/page_scan.h"
#include "store/progress.h"

namespace store {

// Reads all pages of an archive that this process does not have open (closing the file gives up the
// locks on it). Fails with 3024 (no such file), 3043 (cannot be read).
PageReport VerifyPages(const QString& path, const Progress& progress = {});

// Writes an archive anew into a file that does not exist yet: without free space, each page with
// its checksum, on the disk and read back. Fails as OpenDatabase does, with 3204 (the target
// exists) and 3428 (a damaged page); the target is then gone.
void CompactDatabase(const QString& source, const QString& target);

}  // namespace store
