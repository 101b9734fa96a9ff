#pragma once

#include <QString>

namespace tavolix::report {

// Asks for the name of a PDF to be written; empty if it was given up.
QString choosePdf(const QString& title);

}  // namespace tavolix::report
