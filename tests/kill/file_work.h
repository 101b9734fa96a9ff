#pragma once

#include <QString>

namespace tavolix {

// What a process does until it is killed; it says "ready" when it begins. Copies two archives in
// turn to one place, compacts an archive, or puts a damaged one in its place and repairs it. In
// `folder` are "uno.tvx", "due.tvx", "guasto" and "modello.tvx"; the work is done on "casa.tvx".
[[noreturn]] void workOnFiles(const QString& work, const QString& folder);

}  // namespace tavolix
