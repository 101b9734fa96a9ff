#pragma once

#include <QString>

#include "store/database.h"

namespace tavolix::builder {

// Adds the records of the text tables in a folder, one file a collection ("libri.tsv"), to an
// archive. Their columns are named as in the field table; a sub-collection's column Riferimento is
// the code of the record it belongs to. Fails with 3421 at the first wrong cell.
void addSampleRecords(store::Database& database, const QString& folder);

}  // namespace tavolix::builder
