#pragma once

#include <QString>
#include <optional>

#include "store/repair.h"

namespace tavolix {

// What is done to the file of an archive that is not open in this process, with the way that it has
// come shown under a title. Paths as in sFileEsatto. All fail with store::Failure; what was there
// before is then as it was.

enum class EsitoFile { kFatto, kInterrotto };

// A copy, which takes the place of an older one only when it has been read back. A source that is
// damaged or no archive is told before, and the user may break off.
EsitoFile CopiaArchivio(const QString& sOrigine, const QString& sDestinazione,
                        const QString& sCosa);
void RinominaArchivio(const QString& sDa, const QString& sA);
void EliminaArchivio(const QString& sPath);
// Repairs an archive that is damaged, the original being kept beside it; nothing if the user broke
// off.
std::optional<store::RepairReport> RiparaArchivio(const QString& sPath);
// Writes an archive anew without its free space.
EsitoFile ComprimiArchivio(const QString& sPath);

// Tells that a journal was set aside under a name; nothing for an empty one.
void DiGiornale(const QString& sNome);

// Clears a folder of the unfinished files that work cut short has left there.
void TogliResti(const QString& sDir);

}  // namespace tavolix
