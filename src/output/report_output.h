#pragma once

#include <QString>

#include "output/report_document.h"
#include "store/progress.h"

class QPrinter;

namespace tavolix::report {

// All pages as a PDF, which takes the place of an older file once it is whole. Progress counts
// thousandths. False if it was broken off. Fails with 61 (disk full), 70, 76.
bool writePdf(Document& document, const QString& path, const store::Progress& progress = {});

// The pages that the printer's dialog has chosen. False if it was broken off. Fails with
// platform::kNoPrinter if the printer takes none.
bool print(Document& document, QPrinter& printer, const store::Progress& progress = {});

}  // namespace tavolix::report
