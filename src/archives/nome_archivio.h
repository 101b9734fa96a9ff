#pragma once

#include <QString>

namespace tavolix {

// True if a name, without its extension, holds only letters A to Z, digits, blanks, "-" and "_".
bool bNomeArchivioValido(const QString& sNome);
// What was typed, without blanks around it and without the extension.
QString sSenzaEstensione(const QString& sDigitato, const QString& sExt);
// Asks until the new name of an archive in a folder is good; with the extension, empty if the user
// gave up. The archive that is to get it, if it is there already, may have it in another case.
QString sChiediNomeArchivio(const QString& sDir, const QString& sPrompt, const QString& sExt,
                            const QString& sVecchio = {});

}  // namespace tavolix
