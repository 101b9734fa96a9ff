#pragma once

#include "store/repair.h"

namespace tavolix {

// What a repair has to know of an archive's collections and lists; `sModello` is the path of the
// empty archive that comes with the program.
store::RepairPlan PianoRiparazione(const QString& sModello);

}  // namespace tavolix
