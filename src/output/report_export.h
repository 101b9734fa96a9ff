#pragma once

#include <QString>

#include "output/report_document.h"
#include "store/progress.h"

namespace tavolix::report {

enum class RowFormat { Delimited, Html };

// Writes the rows of a report's source, with the fields that the report shows, under the fields'
// names. The file takes the place of an older one once it is whole. Progress counts rows. False if
// it was broken off. Fails with 61 (disk full), 70, 75, 76.
bool writeRows(Document& document, const QString& path, RowFormat format,
               const store::Progress& progress = {});

}  // namespace tavolix::report
