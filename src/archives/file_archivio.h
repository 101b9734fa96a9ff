#pragma once

#include <QString>

namespace tavolix {

// What is done to the file of an archive that is not open in this process. Paths as in sFileEsatto.
// All fail with store::Failure; what was there before is then still there.

enum class EsitoFile { kFatto, kInterrotto };

// A copy beside the target, read back, then put in its place. Progress is shown under `sCosa`.
// A source with damaged pages is told before, and the user may break off.
EsitoFile CopiaArchivio(const QString& sOrigine, const QString& sDestinazione,
                        const QString& sCosa);
void RinominaArchivio(const QString& sDa, const QString& sA);
void EliminaArchivio(const QString& sPath);
// Repairs an archive if it is damaged, the original being kept beside it.
void RiparaArchivio(const QString& sPath);
// Writes an archive anew without its free space.
EsitoFile ComprimiArchivio(const QString& sPath);

}  // namespace tavolix
