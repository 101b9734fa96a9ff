#include "output/report_band.h"

#include <algorithm>
#include <cmath>

namespace tavolix::report {
namespace {

constexpr double kNearly = 0.5;  // a part of a hair: lengths come from millimetres

}  // namespace

bool LaidBand::isFixed(const Band& band) {
  return !band.skipsEmpty && std::none_of(band.elements.begin(), band.elements.end(),
                                          [](const Element& element) { return element.grows; });
}

LaidBand::LaidBand(const Band& band, const std::vector<Style>& styles, const Fonts& fonts,
                   const Facts& facts)
    : band_(band), styles_(styles), fonts_(fonts), height_(band.height), skipped_(band.skipsEmpty) {
  for (const Element& element : band.elements) lay(element, facts);
  if (skipped_) height_ = 0;
}

void LaidBand::lay(const Element& element, const Facts& facts) {
  if (element.condition && !holds(*element.condition, facts)) return;
  if (element.shape != Shape::Text) {
    shapes_.push_back(&element);
    return;
  }
  bool isEmpty = true;
  const QString text = textOf(element.runs, facts, &isEmpty);
  if (!isEmpty) skipped_ = false;
  if (text.isEmpty()) return;
  texts_.push_back({&element, linesOf(element, text)});
  if (element.grows) grow(texts_.back());
}

// What stood below a text in its band stays as far below it.
void LaidBand::grow(const Text& text) {
  const QRectF& place = text.element->place;
  const double below = std::max(0.0, band_.height - place.bottom());
  const double taken =
      static_cast<double>(text.lines.size()) * fonts_.lineHeight(text.element->style);
  height_ = std::max(height_, place.top() + std::max(taken, place.height()) + below);
}

QStringList LaidBand::linesOf(const Element& element, const QString& text) const {
  if (fonts_.surelyFits(element.style, text, element.place.width())) return {text};
  if (element.grows) return wrapped(element, text, -1);
  const int most =
      static_cast<int>((element.place.height() + kNearly) / fonts_.lineHeight(element.style));
  return most > 1 ? wrapped(element, text, most) : QStringList{shortened(element, text)};
}

// On one line, with a mark where it is cut.
QString LaidBand::shortened(const Element& element, QString text) const {
  for (QChar& letter : text) {
    if (letter.isSpace()) letter = u' ';
  }
  return fonts_.elided(element.style, text, element.place.width());
}

QStringList LaidBand::wrapped(const Element& element, const QString& text, int most) const {
  QString broken = text;
  broken.replace(QLatin1String("\r\n"), QString(QChar::LineSeparator));
  broken.replace(u'\n', QChar::LineSeparator).replace(u'\r', QChar::LineSeparator);
  QTextLayout layout(broken, fonts_.font(element.style));
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  QStringList lines;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(element.place.width());
    if (lines.size() + 1 == most && line.textStart() + line.textLength() < broken.size()) {
      lines << shortened(element, broken.mid(line.textStart()));
      break;
    }
    lines << broken.mid(line.textStart(), line.textLength()).remove(QChar::LineSeparator);
  }
  layout.endLayout();
  return lines;
}

double LaidBand::cutAfter(double from, double room) const {
  const double end = from + room;
  double cut = end;
  for (const Text& text : texts_) {
    const double line = fonts_.lineHeight(text.element->style);
    const double top = text.element->place.top();
    const auto fitting = static_cast<qsizetype>(std::floor((end - top + kNearly) / line));
    if (fitting >= text.lines.size()) continue;
    const double next = top + static_cast<double>(std::max<qsizetype>(fitting, 0)) * line;
    if (next > from + kNearly) cut = std::min(cut, next);
  }
  return std::min(std::max(cut, from + 1), height_);
}

void LaidBand::draw(const Canvas& canvas, const QPointF& at, double from, double to) const {
  if (canvas.painter != nullptr) {
    for (const Element* shape : shapes_) drawShape(*canvas.painter, *shape, at, from, to);
  }
  for (const Text& text : texts_) drawText(canvas, text, at, from, to);
}

// Lines and boxes that reach the band's end go along when it grows.
QRectF LaidBand::grown(const Element& element) const {
  QRectF place = element.place;
  const double more = height_ - band_.height;
  if (more <= 0 || place.bottom() < band_.height - kNearly) return place;
  if (element.shape == Shape::Line && place.height() < kNearly) return place.translated(0, more);
  return place.adjusted(0, 0, 0, more);
}

void LaidBand::drawShape(QPainter& painter, const Element& element, const QPointF& at, double from,
                         double to) const {
  QRectF place = grown(element);
  if (place.bottom() < from - kNearly || place.top() > to + kNearly) return;
  place.setTop(std::max(place.top(), from));
  place.setBottom(std::min(place.bottom(), to));
  place.translate(at.x(), at.y() - from);
  QPen pen(element.color, element.penWidth);
  pen.setCapStyle(Qt::FlatCap);
  pen.setJoinStyle(Qt::MiterJoin);
  painter.setPen(element.penWidth > 0 ? pen : QPen(Qt::NoPen));
  if (element.shape == Shape::Line) {
    painter.drawLine(place.topLeft(), place.bottomRight());
    return;
  }
  painter.setBrush(element.fill.isValid() ? QBrush(element.fill) : QBrush(Qt::NoBrush));
  painter.drawRect(place);
}

void LaidBand::drawText(const Canvas& canvas, const Text& text, const QPointF& at, double from,
                        double to) const {
  const double height = fonts_.lineHeight(text.element->style);
  for (int line = 0; line < text.lines.size(); ++line) {
    const double top = text.element->place.top() + line * height;
    if (top < from - kNearly || top >= to - kNearly) continue;
    drawLine(canvas, text, line, {at.x(), at.y() + top - from});
  }
}

void LaidBand::drawLine(const Canvas& canvas, const Text& text, int line, const QPointF& at) const {
  const Element& element = *text.element;
  const Style& style = styles_[static_cast<std::size_t>(element.style)];
  const QString& letters = text.lines[line];
  double x = at.x() + element.place.left();
  Qt::Alignment side = style.alignment;
  if (side == Qt::AlignLeft && letters.isRightToLeft()) side = Qt::AlignRight;
  if (side != Qt::AlignLeft) {
    const double rest = element.place.width() - text.width(fonts_, line);
    x += side == Qt::AlignRight ? rest : rest / 2;
  }
  if (canvas.texts != nullptr) {
    canvas.texts->push_back(
        {{x, at.y(), text.width(fonts_, line), fonts_.lineHeight(element.style)}, letters});
  }
  if (canvas.painter == nullptr) return;
  canvas.painter->setFont(fonts_.font(element.style));
  canvas.painter->setPen(style.color);
  canvas.painter->drawText(QPointF(x, at.y() + fonts_.ascent(element.style)), letters);
}

}  // namespace tavolix::report
