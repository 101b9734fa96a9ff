#pragma once

#include <QString>

#include "output/report_document.h"
#include "store/progress.h"

class QPrinter;

namespace tavolix::report {

// All pages as a PDF, which takes the place of an older file once it is whole. Progress counts
// thousandths. Fails with 61 (disk full), 70, 76, and 3059 where it is broken off.
void writePdf(Document& document, const QString& path, const store::Progress& progress = {});

// The pages that the printer's dialog has chosen. Fails with kNoPrinter if the printer takes none.
inline constexpr int kNoPrinter = 530;
void print(Document& document, QPrinter& printer, const store::Progress& progress = {});

}  // namespace tavolix::report
