#pragma once

#include <QString>

#include "store/repair.h"

namespace tavolix {

// What became of the rows of a repaired archive, for the user to read: the records that are lost,
// cut or doubtful, by title.
QString sRapportoRiparazione(const store::RepairReport& report, const QString& sArchivio);
// What the user is told of it in short; empty where nothing was lost and nothing is in doubt.
QString sEsitoRiparazione(const store::RepairReport& report);
// Tells the user, and lays a text with all of it beside the archive.
void DiRiparazione(const store::RepairReport& report, const QString& sPath);

}  // namespace tavolix
