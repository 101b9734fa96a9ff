#pragma once

#include "store/recordset.h"

namespace tavolix {

// The access code of an archive: a gate of the program, no encryption.

// The code in capital letters, kSenzaCodice for an archive without one, empty if the archive holds
// none of both or cannot be read (the user has been told).
QString sLeggiCodiceAccesso(const QString& sPath);
// Asks for the code, where the archive has one, at most twice. True if the archive may be opened.
bool bRichiediPWD(const QString& sPath);
// The same for a code that was read already, as sLeggiCodiceAccesso gives it.
bool bRichiediCodice(const QString& sCodice, const QString& sPath);
// Lets the user change the code of the open archive; `rsCfg` is its table of named values. True if
// a new code was written.
bool bModificaCodiceAccesso(const store::RecordsetPtr& rsCfg, const QString& sPath);

}  // namespace tavolix
