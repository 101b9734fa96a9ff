#include "output/preview_page.h"

#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

#include "platform/handlers.h"

namespace tavolix::report {
namespace {

constexpr int kMargin = 16;
constexpr double kLeastScale = 0.1;
constexpr double kMostScale = 5;

}  // namespace

PreviewPage::PreviewPage(std::shared_ptr<Document> document, QWidget* parent)
    : QAbstractScrollArea(parent), document_(std::move(document)) {
  setObjectName(QStringLiteral("pagina"));
  setAccessibleName(QStringLiteral("Pagina"));
  viewport()->setBackgroundRole(QPalette::Dark);
  viewport()->setAutoFillBackground(true);
  setFrameShape(QFrame::NoFrame);
}

void PreviewPage::showPage(int page) {
  page_ = std::clamp(page, 0, document_->pages() - 1);
  marks_.clear();
  verticalScrollBar()->setValue(0);
  refresh();
}

void PreviewPage::refresh() {
  picture_ = {};
  viewport()->update();
}

void PreviewPage::setMarks(std::vector<QRectF> marks) {
  marks_ = std::move(marks);
  viewport()->update();
}

void PreviewPage::setFit(Fit fit, double scale) {
  fit_ = fit;
  scale_ = std::clamp(scale, kLeastScale, kMostScale);
  adapt();
  refresh();
  Q_EMIT scaleChanged();
}

double PreviewPage::pixelsPerUnit() const {
  return scale_ * logicalDpiX() / kUnitsPerInch;
}

QSize PreviewPage::pageSize() const {
  const Definition& sheet = document_->definition();
  return (QSizeF(sheet.width, sheet.height) * pixelsPerUnit()).toSize();
}

// The scale that the window asks for, and what is to be scrolled.
void PreviewPage::adapt() {
  const QSizeF room = viewport()->size() - QSize(2 * kMargin, 2 * kMargin);
  const Definition& sheet = document_->definition();
  const double inch = logicalDpiX() / kUnitsPerInch;
  const double wide = room.width() / (sheet.width * inch);
  const double high = room.height() / (sheet.height * inch);
  if (fit_ == Fit::Page) scale_ = std::max(kLeastScale, std::min(wide, high));
  if (fit_ == Fit::Width) scale_ = std::clamp(wide, kLeastScale, kMostScale);
  const QSize all = pageSize() + QSize(2 * kMargin, 2 * kMargin);
  const QSize more = all - viewport()->size();
  horizontalScrollBar()->setRange(0, std::max(0, more.width()));
  verticalScrollBar()->setRange(0, std::max(0, more.height()));
  horizontalScrollBar()->setPageStep(viewport()->width());
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(40);
}

QPoint PreviewPage::origin() const {
  const QSize free = viewport()->size() - pageSize();
  const auto place = [](int room, const QScrollBar* bar) {
    return bar->maximum() > 0 ? kMargin - bar->value() : std::max(kMargin, room / 2);
  };
  return {place(free.width(), horizontalScrollBar()), place(free.height(), verticalScrollBar())};
}

void PreviewPage::draw() {
  page_ = std::min(page_, document_->pages() - 1);
  const double ratio = devicePixelRatioF();
  picture_ = QPixmap((QSizeF(pageSize()) * ratio).toSize());
  picture_.fill(Qt::white);
  QPainter painter(&picture_);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
  painter.scale(pixelsPerUnit() * ratio, pixelsPerUnit() * ratio);
  platform::guarded([&] { document_->paint(painter, page_); });
  painter.end();
  picture_.setDevicePixelRatio(ratio);
}

void PreviewPage::paintEvent(QPaintEvent*) {
  if (picture_.isNull()) draw();
  QPainter painter(viewport());
  painter.drawPixmap(origin(), picture_);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(255, 200, 0, 110));
  const double scale = pixelsPerUnit();
  for (const QRectF& mark : marks_) {
    painter.drawRect(QRectF(mark.topLeft() * scale, mark.size() * scale).translated(origin()));
  }
}

void PreviewPage::resizeEvent(QResizeEvent*) {
  adapt();
  refresh();
  Q_EMIT scaleChanged();
}

// The arrows scroll; the keys that turn pages belong to the window.
void PreviewPage::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_PageDown:
    case Qt::Key_PageUp:
    case Qt::Key_Home:
    case Qt::Key_End:
      return event->ignore();
    default:
      QAbstractScrollArea::keyPressEvent(event);
  }
}

// With Ctrl the scale, otherwise down the page and on to the next one.
void PreviewPage::wheelEvent(QWheelEvent* event) {
  const int turned = event->angleDelta().y();
  QScrollBar* bar = verticalScrollBar();
  if (event->modifiers() == Qt::ControlModifier) {
    setFit(Fit::Scale, turned > 0 ? scale_ * 1.15 : scale_ / 1.15);
  } else if (turned < 0 && bar->value() == bar->maximum()) {
    Q_EMIT pageWanted(page_ + 1);
  } else if (turned > 0 && bar->value() == bar->minimum()) {
    Q_EMIT pageWanted(page_ - 1);
  } else {
    bar->setValue(bar->value() - turned / 2);
  }
  event->accept();
}

}  // namespace tavolix::report
