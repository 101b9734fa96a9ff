#include "platform/chart_output.h"

#include <QBuffer>
#include <QPrinter>
#include <QSaveFile>
#include <QSvgGenerator>
#include <algorithm>
#include <cerrno>

#include "platform/printer_dialog.h"
#include "platform/system_path.h"
#include "store/file_failure.h"

namespace platform {
namespace {

constexpr double kDotsPerInch = 96;
constexpr double kSavedPixels = 2;   // of a saved picture, for one of the screen
constexpr double kTallest = 1.45;    // of the width: what a sheet leaves free stays white
constexpr double kMillimetres = 10;  // in a centimetre

void paintSheet(QPainter& painter, const ChartSheet& sheet, const QSizeF& size,
                ChartMedium medium) {
  const ChartScene scene(sheet.data, size, sheet.font, medium);
  const auto shown = sheet.labels.keys();
  paintChart(painter, scene, paperInk(), {0, shown.size() == 1 ? shown.first() : -1});
  for (const int row : shown) paintLabel(painter, scene, row, sheet.labels[row]);
}

QByteArray chartPng(const ChartSheet& sheet, const QSize& size) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  chartImage(sheet, size, kSavedPixels).save(&buffer, "PNG");
  return bytes;
}

[[noreturn]] void failAt(const QSaveFile& file, const QString& path) {
  const bool full = file.error() == QFileDevice::ResourceError || errno == ENOSPC;
  store::failAtFile(full ? store::file_failure::kDiskFull : store::fileFailureOf(errno, path),
                    path);
}

// The size of the chart within the room that the margins leave.
QSizeF sizeOn(const QSizeF& room, const QSizeF& onScreen, const ChartPrintSettings& settings) {
  if (settings.LayoutForPrinter) {
    return {room.width(), std::min(room.height(), room.width() * kTallest)};
  }
  return onScreen.scaled(room, Qt::KeepAspectRatio);
}

}  // namespace

QImage chartImage(const ChartSheet& sheet, const QSize& size, double pixels) {
  QImage image((QSizeF(size) * pixels).toSize(), QImage::Format_RGB32);
  image.setDevicePixelRatio(pixels);
  image.fill(Qt::white);
  QPainter painter(&image);
  paintSheet(painter, sheet, size, ChartMedium::Picture);
  return image;
}

QByteArray chartSvg(const ChartSheet& sheet, const QSize& size) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setResolution(static_cast<int>(kDotsPerInch));
  generator.setSize(size);
  generator.setViewBox(QRect(QPoint(), size));
  generator.setTitle(sheet.data.title);
  QPainter painter(&generator);
  painter.fillRect(QRect(QPoint(), size), Qt::white);
  paintSheet(painter, sheet, size, ChartMedium::Picture);
  painter.end();
  return bytes;
}

void saveChart(const ChartSheet& sheet, const QSize& size, const QString& path) {
  const bool vectors = path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive);
  const QByteArray bytes = vectors ? chartSvg(sheet, size) : chartPng(sheet, size);
  QSaveFile file(fullPath(path));
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
    failAt(file, path);
  }
}

void printChart(const ChartSheet& sheet, const QSizeF& onScreen, const ChartPrintSettings& settings,
                QPrinter& printer) {
  printer.setPageOrientation(settings.Orientation == ChartPrintSettings::Landscape
                                 ? QPageLayout::Landscape
                                 : QPageLayout::Portrait);
  printer.setPageMargins(QMarginsF(settings.LeftMargin, settings.TopMargin, settings.RightMargin,
                                   settings.BottomMargin) *
                             kMillimetres,
                         QPageLayout::Millimeter);
  printer.setDocName(sheet.data.title);
  QPainter painter;
  if (!printer.isValid() || !painter.begin(&printer)) failAtPrinter();
  const double dots = printer.logicalDpiX() / kDotsPerInch;
  const QSizeF room = QSizeF(printer.pageRect(QPrinter::DevicePixel).size()) / dots;
  const QSizeF size = sizeOn(room, onScreen, settings);
  painter.scale(dots, dots);
  painter.translate(settings.CenterHorizontally ? (room.width() - size.width()) / 2 : 0,
                    settings.CenterVertically ? (room.height() - size.height()) / 2 : 0);
  if (!settings.LayoutForPrinter) {
    painter.scale(size.width() / onScreen.width(), size.width() / onScreen.width());
  }
  paintSheet(painter, sheet, settings.LayoutForPrinter ? size : onScreen, ChartMedium::Paper);
  if (!painter.end() || printer.printerState() == QPrinter::Error) failAtPrinter();
}

}  // namespace platform
