#pragma once

#include <QString>

namespace tavolix::report {

// Asks for the name of a PDF to be written; empty if it was given up.
QString choosePdf(const QString& title);
// The same for a PDF, delimited text or HTML, as the name's ending tells.
QString chooseExport(const QString& title);

}  // namespace tavolix::report
