#pragma once

#include <QString>

namespace tavolix {

// What is to be opened in place of a file that the user has chosen.
struct Portato {
  QString sPath;  // the file itself where it is no old archive; empty if the user gave up
  bool bCodiceNoto = false;  // the access code was asked already
};

// An archive of the earlier record engine is brought over into a new one beside it, if the user
// wants to; the user is told what came of it, or why nothing did.
Portato ArchivioAttuale(const QString& sPath);
// Brings an old archive over into a folder, under its own name. True if there is a new archive.
bool bPortaInCartella(const QString& sVecchio, const QString& sDir, const QString& sExt);

}  // namespace tavolix
