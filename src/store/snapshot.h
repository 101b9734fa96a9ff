#pragma once

#include <memory>

#include "store/database.h"

namespace store {

// While it lives, all that is read of an archive is the archive at one moment, and other programs
// wait with their writes. A write of this process, or the archive's end, ends it.
std::shared_ptr<const void> takeSnapshot(const Database& database);
// Grows with each write to an archive, by whatever program.
quint64 writesOf(const Database& database);

}  // namespace store
