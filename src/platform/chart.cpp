#include "platform/chart.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>

#include "platform/handlers.h"
#include "platform/number_format.h"
#include "platform/screen_reader.h"

namespace platform {
namespace {

const QString kValueFormat = QStringLiteral("#,##0");
const QString kShareFormat = QStringLiteral("0.0%");

}  // namespace

Chart::Chart(QWidget* parent) : QWidget(parent), legendBar_(new QScrollBar(Qt::Vertical, this)) {
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  nameControl(*this, QStringLiteral("Grafico"));
  nameControl(*legendBar_, QStringLiteral("Scorrimento della legenda"));
  legendBar_->setFocusPolicy(Qt::NoFocus);
  legendBar_->setCursor(Qt::ArrowCursor);
  legendBar_->hide();
  connect(legendBar_, &QScrollBar::valueChanged, this, [this] { update(); });
}

void Chart::SetRepaint(bool on) {
  repaint_ = on;
  if (on) changed();
}

void Chart::changed() {
  stale_ = true;
  if (!repaint_) return;
  layOut();
  describe();
  update();
}

void Chart::SetRowCount(int rows) {
  data_.rows.resize(static_cast<std::size_t>(std::max(0, rows)));
  labels_.removeIf([rows](const auto& entry) { return entry.key() >= rows; });
  if (selected_ > rows) selected_ = 0;
  row_ = std::min(row_, rows);
  changed();
}

const ChartRow& Chart::RowAt(int row) const {
  if (row < 1 || row > RowCount()) {
    throw store::Failure(store::failure::kSubscript, QStringLiteral("Indice non valido"));
  }
  return data_.rows[static_cast<std::size_t>(row - 1)];
}

void Chart::SetRow(int row) {
  RowAt(row);
  row_ = row;
}

void Chart::SetRowLabel(const QString& label) {
  RowAt(row_);
  data_.rows[static_cast<std::size_t>(row_ - 1)].label = label;
  changed();
}

void Chart::SetData(double value) {
  RowAt(row_);
  data_.rows[static_cast<std::size_t>(row_ - 1)].value = value;
  changed();
}

void Chart::SetChartType(ChartType type) {
  data_.type = type;
  changed();
}

void Chart::SetElevation(double degrees) {
  data_.elevation = degrees;
  changed();
}

void Chart::SetRotation(double degrees) {
  data_.rotation = degrees;
  changed();
}

void Chart::SetTitleText(const QString& text) {
  data_.title = text;
  changed();
}

void Chart::SetFootnoteText(const QString& text) {
  data_.footnote = text;
  changed();
}

void Chart::SetPointLabel(int series, const DataPointLabel& label) {
  RowAt(series);
  labels_[series - 1] = label;
  if (label.component == DataPointLabel::Nothing) labels_.remove(series - 1);
  update();
}

void Chart::SetBackdrop(int style) {
  backdrop_ = style;
  update();
}

const ChartScene* Chart::scene() {
  if (stale_ && repaint_) layOut();
  return scene_ ? &*scene_ : nullptr;
}

void Chart::layOut() {
  scene_.emplace(data_, QSizeF(size()), sheet().font, ChartMedium::Screen);
  stale_ = false;
  placeLegendBar();
}

void Chart::placeLegendBar() {
  const ChartLayout& layout = scene_->layout();
  legendBar_->setRange(0, layout.lines - layout.linesInSight);
  legendBar_->setPageStep(layout.linesInSight);
  legendBar_->setVisible(layout.lines > layout.linesInSight);
  const int wide = legendBar_->sizeHint().width();
  legendBar_->setGeometry(width() - wide, static_cast<int>(layout.legend.top()), wide,
                          static_cast<int>(layout.legend.height()));
}

int Chart::markedRow() const {
  return labels_.contains(selected_ - 1) ? selected_ - 1 : -1;
}

void Chart::paintEvent(QPaintEvent*) {
  if (scene() == nullptr) return;
  ChartInk ink = screenInk(palette());
  ink.filled = backdrop_ == FilledBackdrop;
  QPainter painter(this);
  if (ink.filled) {
    QLinearGradient ground(rect().topLeft(), rect().bottomLeft());
    ground.setColorAt(0, ink.ground);
    ground.setColorAt(1, ink.groundBelow);
    painter.fillRect(rect(), ground);
  }
  paintChart(painter, *scene_, ink, {legendBar_->value(), markedRow()});
  const auto shown = labels_.keys();
  for (const int row : shown) {
    if (row < scene_->rows()) paintLabel(painter, *scene_, row, labels_[row]);
  }
  paintFrame(painter);
}

void Chart::paintFrame(QPainter& painter) {
  painter.setBrush(Qt::NoBrush);
  painter.setRenderHint(QPainter::Antialiasing, false);
  if (part_ == ChartPart::Plot) {
    painter.setPen(QPen(palette().color(QPalette::PlaceholderText), 1, Qt::DashLine));
    painter.drawRect(scene_->layout().plot);
  }
  painter.setPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  if (hasFocus()) painter.drawRect(rect().adjusted(1, 1, -2, -2));
}

void Chart::select(int series) {
  selected_ = series;
  part_ = ChartPart::None;
  showInLegend(series);
  describe();
  update();
  Q_EMIT PointSelected(series);
}

void Chart::selectPart(ChartPart part) {
  bool cancel = false;
  Q_EMIT PartSelected(part, &cancel);
  part_ = cancel ? ChartPart::None : part;
  update();
}

void Chart::showInLegend(int series) {
  const ChartLayout& layout = scene_->layout();
  const int line = (series - 1) / layout.columns;
  const int first = legendBar_->value();
  if (line < first) legendBar_->setValue(line);
  if (line >= first + layout.linesInSight) legendBar_->setValue(line - layout.linesInSight + 1);
}

QString Chart::described(int series) const {
  const auto place = static_cast<std::size_t>(series - 1);
  const ChartRow& row = scene_->data().rows[place];
  return QStringLiteral("%1, %2, %3")
      .arg(row.label, formatNumber(row.value, kValueFormat),
           formatNumber(scene_->shares()[place], kShareFormat));
}

// Setting a description tells screen readers of it.
void Chart::describe() {
  if (!scene_) return;
  nameControl(*this, data_.title.isEmpty() ? QStringLiteral("Grafico") : data_.title);
  setAccessibleDescription(selected_ > 0 && selected_ <= scene_->rows()
                               ? described(selected_)
                               : scene_->footnote().replace(u'\n', QStringLiteral("; ")));
}

QString Chart::tipAt(const QPointF& point) {
  if (scene() == nullptr) return {};
  const int listed = legendRowAt(scene_->layout(), point, legendBar_->value(), scene_->rows());
  const int row = listed >= 0 ? listed : scene_->rowAt(point);
  return row < 0 ? QString() : described(row + 1);
}

bool Chart::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const QString tip = tipAt(help->pos());
  tip.isEmpty() ? QToolTip::hideText() : QToolTip::showText(help->globalPos(), tip, this);
  return true;
}

void Chart::resizeEvent(QResizeEvent*) {
  if (repaint_) changed();
}

void Chart::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange) changed();
}

void Chart::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || scene() == nullptr) return;
  const ChartPart part = scene_->partAt(event->position());
  if (part != ChartPart::Point) return selectPart(part);
  select(scene_->rowAt(event->position()) + 1);
}

}  // namespace platform
