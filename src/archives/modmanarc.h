#pragma once

#include "store/database.h"
#include "store/failure.h"

namespace tavolix {

// A named value of an archive (table CFG), by index "1u" of an open table recordset. False if
// there is none; the values are then empty and 0. Damage is told and fails.
bool bConfRead(const store::RecordsetPtr& rs, const QString& sChiave, QString& sVal, double& nVal);
void ConfWrite(const store::RecordsetPtr& rs, const QString& sChiave, const QString& sVal,
               double nVal);

// Tells that an archive cannot be used, for a failure met after it was opened: offers to recover it
// where that may help, and has the next start ask which one to open. The archive is closed.
void ArchivioInservibile(const store::Failure& failure, const char* sProc, const QString& sPath);

// Makes this module the one that opens archives.
void RegistraArchivi();
// Adds the windows for archives to the program's forms.
void RegistraFormArchivi();

}  // namespace tavolix
