#pragma once

#include <QString>

namespace tavolix {

// What a process does until it is killed; it says "ready" when it begins. By the program's own
// procedures it backs two archives up in turn to one place, restores two copies, duplicates,
// renames or compacts an archive, or puts a damaged one in its place and repairs it. In `folder`
// are "uno.tvx", "due.tvx", "una/casa.tvx", "altra/casa.tvx", "guasto", "modello.tvx" and
// "tvx.ini"; the work is done on "casa.tvx", and on "altro.tvx" where it is of two names.
[[noreturn]] void workOnFiles(const QString& work, const QString& folder);

}  // namespace tavolix
