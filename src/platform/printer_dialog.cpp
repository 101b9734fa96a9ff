#include "platform/printer_dialog.h"

#include <QApplication>
#include <QPrintDialog>
#include <QPrinter>
#include <optional>
#include <utility>

#include "platform/commands.h"
#include "platform/form.h"
#include "platform/key_handover.h"
#include "store/failure.h"

namespace platform {
namespace {

std::optional<QString>& nextFile() {
  static std::optional<QString> file;
  return file;
}

bool takeAnswer(QPrinter& printer) {
  const QString file = *std::exchange(nextFile(), std::nullopt);
  if (!file.isEmpty()) printer.setOutputFileName(file);
  return !file.isEmpty();
}

}  // namespace

bool choosePrinter(QPrinter& printer, const QString& title, PageRange range) {
  if (nextFile()) return takeAnswer(printer);
  QPrintDialog dialog(&printer, windowInFront());
  dialog.setWindowTitle(title);
  dialog.setOption(QAbstractPrintDialog::PrintSelection, false);
  dialog.setOption(QAbstractPrintDialog::PrintToFile, false);
  dialog.setOption(QAbstractPrintDialog::PrintPageRange, range == PageRange::Chosen);
  const Commands::Question question;
  KeyHandover::to(&dialog);
  const int answer = dialog.exec();
  if (QWidget* front = windowInFront()) KeyHandover::to(front);
  return answer == QDialog::Accepted;
}

void failAtPrinter() {
  throw store::Failure(kNoPrinter, QStringLiteral("La stampante non accetta la stampa"));
}

void PrinterDialogSeam::setNextFile(const QString& path) {
  nextFile() = path;
}

void PrinterDialogSeam::reset() {
  nextFile().reset();
}

}  // namespace platform
