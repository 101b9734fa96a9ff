#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFontInfo>
#include <QMenu>
#include <QMimeData>
#include <QPrinter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

#include "platform/chart.h"
#include "platform/common_dialogs.h"
#include "platform/handlers.h"

// Keys, wheel and menu of the chart, and what they bring out of it.

namespace platform {
namespace {

constexpr int kFar = 10;             // rows that the page keys go by
constexpr int kWheelStep = 40;       // eighths of a degree for a line
constexpr double kPaperPixels = 13;  // height of letters on paper, in 1/96 inch
constexpr double kCopiedPixels = 2;

}  // namespace

// From row to row, round the pie; false for any other key.
bool Chart::moveBy(int key) {
  const int rows = RowCount();
  if (rows == 0 || scene() == nullptr) return false;
  const bool none = selected_ == 0;
  switch (key) {
    case Qt::Key_Right:
    case Qt::Key_Down:
      return select(selected_ % rows + 1), true;
    case Qt::Key_Left:
    case Qt::Key_Up:
      return select(none ? rows : (selected_ + rows - 2) % rows + 1), true;
    case Qt::Key_Home:
      return select(1), true;
    case Qt::Key_End:
      return select(rows), true;
    case Qt::Key_PageDown:
      return select(std::min(rows, selected_ + kFar)), true;
    case Qt::Key_PageUp:
      return select(std::max(1, selected_ - kFar)), true;
    case Qt::Key_Space:
      return select(std::max(1, selected_)), true;
    default:
      return false;
  }
}

void Chart::keyPressEvent(QKeyEvent* event) {
  const auto command = [this](auto work) {
    Commands::run(this, [this, work] { guarded([&] { (this->*work)(); }); });
  };
  if (event->matches(QKeySequence::Copy)) return command(&Chart::copy);
  if (event->matches(QKeySequence::Save)) return command(&Chart::save);
  if (!moveBy(event->key())) QWidget::keyPressEvent(event);
}

void Chart::wheelEvent(QWheelEvent* event) {
  legendBar_->setValue(legendBar_->value() - event->angleDelta().y() / kWheelStep);
  event->accept();
}

void Chart::contextMenuEvent(QContextMenuEvent* event) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  onCommand(menu->addAction(QStringLiteral("&Copia\tCtrl+C")), &QAction::triggered, this,
            [this] { copy(); });
  onCommand(menu->addAction(QStringLiteral("&Salva immagine\tCtrl+S")), &QAction::triggered, this,
            [this] { save(); });
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  menu->popup(byKey ? mapToGlobal(rect().center()) : event->globalPos());
}

void Chart::focusInEvent(QFocusEvent*) {
  update();
}

void Chart::focusOutEvent(QFocusEvent*) {
  update();
}

ChartSheet Chart::sheet() const {
  QFont letters = font();
  letters.setPixelSize(std::max(1, QFontInfo(font()).pixelSize()));
  return {data_, letters, labels_};
}

void Chart::copy() {
  auto* content = new QMimeData;
  content->setImageData(chartImage(sheet(), size(), kCopiedPixels));
  content->setData(QStringLiteral("image/svg+xml"), chartSvg(sheet(), size()));
  QApplication::clipboard()->setMimeData(content);
}

void Chart::save() {
  FileRequest request;
  request.title = QStringLiteral("Salva immagine");
  request.kinds = {{QStringLiteral("Immagine PNG"), QStringLiteral("*.png")},
                   {QStringLiteral("Disegno SVG"), QStringLiteral("*.svg")}};
  request.name = QStringLiteral("grafico");
  const QString path = saveFile(request);
  if (!path.isEmpty()) saveChart(sheet(), size(), path);
}

void Chart::PrintTo(QPrinter& printer) {
  ChartSheet printed = sheet();
  if (printing_.LayoutForPrinter) printed.font.setPixelSize(static_cast<int>(kPaperPixels));
  printChart(printed, size(), printing_, printer);
}

}  // namespace platform
