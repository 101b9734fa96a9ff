#include "output/report_output.h"

#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>
#include <algorithm>
#include <cerrno>

#include "platform/printer_dialog.h"
#include "platform/system_path.h"
#include "store/file_failure.h"

namespace tavolix::report {
namespace {

constexpr qint64 kThousandths = 1000;

[[noreturn]] void failAt(const QSaveFile& file, const QString& path) {
  const bool full = file.error() == QFileDevice::ResourceError || errno == ENOSPC;
  const int number = full ? store::file_failure::kDiskFull : store::fileFailureOf(errno, path);
  store::failAtFile(number, path);
}

QPageLayout sheetOf(const Definition& definition) {
  const QSizeF size(definition.width / kUnitsPerMillimetre,
                    definition.height / kUnitsPerMillimetre);
  const bool lies = size.width() > size.height();
  return QPageLayout(
      QPageSize(lies ? size.transposed() : size, QPageSize::Millimeter, {}, QPageSize::FuzzyMatch),
      lies ? QPageLayout::Landscape : QPageLayout::Portrait, {}, QPageLayout::Millimeter);
}

bool goesOn(const store::Progress& progress, double done) {
  return !progress || progress(static_cast<qint64>(done * kThousandths), kThousandths);
}

// The layout is the first half of the work, the drawing the second.
bool layOut(Document& document, const store::Progress& progress) {
  if (document.isOld()) document.layOutPage();
  while (!document.isComplete()) {
    document.layOutPage();
    if (!goesOn(progress, document.progress() / 2)) return false;
  }
  return true;
}

template <typename Sheets>
bool drawPages(Document& document, Sheets& sheets, QPainter& painter, int first, int last,
               const store::Progress& progress) {
  for (int page = first; page <= last; ++page) {
    if (page > first) sheets.newPage();
    document.paint(painter, page);
    const double share = static_cast<double>(page + 1 - first) / (last + 1 - first);
    if (!goesOn(progress, 0.5 + share / 2)) return false;
  }
  return true;
}

}  // namespace

bool writePdf(Document& document, const QString& path, const store::Progress& progress) {
  const auto held = document.hold();
  if (!layOut(document, progress)) return false;
  QSaveFile file(platform::fullPath(path));
  if (!file.open(QIODevice::WriteOnly)) failAt(file, path);
  {
    QPdfWriter writer(&file);
    writer.setResolution(static_cast<int>(kUnitsPerInch));
    writer.setPageLayout(sheetOf(document.definition()));
    writer.setTitle(document.title());
    QPainter painter(&writer);
    if (!drawPages(document, writer, painter, 0, document.pages() - 1, progress)) return false;
  }
  if (!file.commit()) failAt(file, path);
  return true;
}

bool print(Document& document, QPrinter& printer, const store::Progress& progress) {
  const auto held = document.hold();
  if (!layOut(document, progress)) return false;
  printer.setFullPage(true);
  printer.setPageLayout(sheetOf(document.definition()));
  printer.setDocName(document.title());
  QPainter painter;
  if (!printer.isValid() || !painter.begin(&printer)) platform::failAtPrinter();
  painter.scale(printer.logicalDpiX() / kUnitsPerInch, printer.logicalDpiY() / kUnitsPerInch);
  const int last =
      printer.toPage() > 0 ? std::min(printer.toPage(), document.pages()) : document.pages();
  const int first = std::clamp(printer.fromPage(), 1, last);
  if (!drawPages(document, printer, painter, first - 1, last - 1, progress)) {
    printer.abort();
    return false;
  }
  if (!painter.end() || printer.printerState() == QPrinter::Error) platform::failAtPrinter();
  return true;
}

}  // namespace tavolix::report
