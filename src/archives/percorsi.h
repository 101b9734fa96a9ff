#pragma once

#include <QString>
#include <QStringList>

namespace tavolix {

// Folders of archives and copies. In windows they stand as this system writes them, with "/" at the
// end; drives A and B stay letters.

// A folder of the settings as a window shows it; empty for an empty one.
QString sCartellaMostrata(const QString& sPath);
// The name at the end of a path. A letter with ":" before it is a drive only at the begin: names of
// this system may hold ":".
QString sNomeArchivio(const QString& sPath);
// What goes into the settings for a folder or file that a window shows: what was there before if it
// is the same, else with the separators of that.
QString sPercorsoScritto(const QString& sMostrato, const QString& sPrecedente);
// The path of the system of a file: the folder by systemPath, the name letter by letter. Two
// archives may differ in the case of their names alone. Empty without a folder.
QString sFileEsatto(const QString& sPath);
// Fails with 71 for a path on a drive that has no medium.
void RichiediDisco(const QString& sPath);

// Settings of the current file and section, as a window shows them.
QString sCartellaArchivi();
QString sEstensioneArchivi();
// The file that new archives are copies of.
QString sModello();
// The names of the archives in a folder. The template is none: it follows the program, and what
// was written into it would be in each new archive.
QStringList sElencoArchivi(const QString& sDir, const QString& sExt);
// `sAltrimenti`, a path of the settings, where there is none.
QString sCartellaCopie(const QString& sAltrimenti);
void ScriviPercorso(const QString& sChiave, const QString& sMostrato);

}  // namespace tavolix
