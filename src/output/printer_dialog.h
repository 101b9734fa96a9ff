#pragma once

#include <QString>

class QPrinter;

namespace tavolix::report {

// Lets the user choose a printer, its pages and copies; false if it was given up.
bool choosePrinter(QPrinter& printer, const QString& title);
// Asks for the name of a PDF to be written; empty if it was given up.
QString choosePdf(const QString& title);

// Answers the dialog in a test, without a window.
class PrinterDialogSeam final {
 public:
  // The next dialog chooses a printer that prints into a file; empty for one that is given up.
  static void setNextFile(const QString& path);
  static void reset();
};

}  // namespace tavolix::report
