#include "output/printer_dialog.h"

#include <QApplication>
#include <QPrintDialog>
#include <QPrinter>
#include <optional>
#include <utility>

#include "platform/commands.h"
#include "platform/common_dialogs.h"
#include "platform/form.h"
#include "platform/key_handover.h"

namespace tavolix::report {
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

bool choosePrinter(QPrinter& printer, const QString& title) {
  if (nextFile()) return takeAnswer(printer);
  QPrintDialog dialog(&printer, platform::windowInFront());
  dialog.setWindowTitle(title);
  dialog.setOption(QAbstractPrintDialog::PrintSelection, false);
  dialog.setOption(QAbstractPrintDialog::PrintToFile, false);
  dialog.setOption(QAbstractPrintDialog::PrintPageRange, true);
  const platform::Commands::Question question;
  platform::KeyHandover::to(&dialog);
  const int answer = dialog.exec();
  if (QWidget* front = platform::windowInFront()) platform::KeyHandover::to(front);
  return answer == QDialog::Accepted;
}

QString choosePdf(const QString& title) {
  platform::FileRequest request;
  request.title = title;
  request.kinds = {{QStringLiteral("Documenti PDF"), QStringLiteral("*.pdf")}};
  return platform::saveFile(request);
}

void PrinterDialogSeam::setNextFile(const QString& path) {
  nextFile() = path;
}

void PrinterDialogSeam::reset() {
  nextFile().reset();
}

}  // namespace tavolix::report
