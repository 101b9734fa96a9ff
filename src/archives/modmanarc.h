#pragma once

#include "store/database.h"

namespace tavolix {

// A named value of an archive (table CFG), by index "1u" of an open table recordset. False if
// there is none; the values are then empty and 0.
bool bConfRead(const store::RecordsetPtr& rs, const QString& sChiave, QString& sVal, double& nVal);
void ConfWrite(const store::RecordsetPtr& rs, const QString& sChiave, const QString& sVal,
               double nVal);

// Makes this module the one that opens archives.
void RegistraArchivi();

}  // namespace tavolix
