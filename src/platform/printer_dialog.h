#pragma once

#include <QString>

class QPrinter;

namespace platform {

// Lets the user choose a printer and copies, and its pages where there are some to choose from;
// false if it was given up.
enum class PageRange { All, Chosen };
bool choosePrinter(QPrinter& printer, const QString& title, PageRange range = PageRange::Chosen);

// The printer takes nothing.
inline constexpr int kNoPrinter = 530;
[[noreturn]] void failAtPrinter();

// Answers the dialog in a test, without a window.
class PrinterDialogSeam final {
 public:
  // The next dialog chooses a printer that prints into a file; empty for one that is given up.
  static void setNextFile(const QString& path);
  static void reset();
};

}  // namespace platform
