#pragma once

#include "output/export_line.h"
#include "store/database.h"
#include "store/progress.h"

namespace tavolix::text_export {

// Writes all records of a collection to a text file, in the order of its stored query, whatever
// filter and order the list has: UTF-8, lines ended by CR LF. `lists` is the table of the lists'
// values on its key. The file is complete under its name, or an older one stays as it was. Returns
// how many records could not be read and are left out. Fails as store::UnfinishedFile does, with
// what the query fails with, and with 3059 if `progress` (records done and in all) breaks it off.
qint64 writeCollection(int iRac, store::Database& archive, store::Recordset& lists,
                       const QString& path, const Format& format, const store::Progress& progress);

}  // namespace tavolix::text_export
