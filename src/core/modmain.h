#pragma once

#include "store/database.h"

namespace tavolix {

inline constexpr const char* kNomeProgramma = "Velmar Tavolix";
inline constexpr const char* kVersione = "98";
inline constexpr const char* kRevisione = "02";
inline constexpr const char* kDataRilascio = "7 Mar 98";

// The open archive.
extern store::DatabasePtr dbArc;
extern QString sPathArc;
extern int iVersioneArc;
extern store::RecordsetPtr rsCfg;
extern store::RecordsetPtr rsTab;
extern store::RecordsetPtr rsCont;

// Opens an archive and what the program keeps open on it; false if there is none, the user has
// been told. `bPrimoPiano`: the splash stays on top. `bOpzione`: the access code is asked.
bool bApriDB(int iModo, const QString& sPath, bool bPrimoPiano, bool bOpzione);
// Closes the recordsets of a database, then the database.
bool ChiudiDB(const store::DatabasePtr& db);
// Closes the archive with everything open on it at once.
void ChiudiWorkspace();

// The start of the program, with the arguments of the command line: none, or a path or file:// in
// pieces.
// False if the program is to end.
bool bAvvia(const QString& rigaComando);
// Ends the program at once; `codice` is the process's result.
void TerminaProgramma(int codice);

}  // namespace tavolix
