#pragma once

#include <QTextLayout>
#include <memory>

#include "output/report_canvas.h"
#include "output/report_values.h"

namespace tavolix::report {

// A band with its values, laid out: it knows its height and draws itself, whole or in parts.
class LaidBand final {
 public:
  LaidBand(const Band& band, const std::vector<Style>& styles, const Fonts& fonts,
           const Facts& facts);

  double height() const { return height_; }
  // Its band is not to be drawn where it has no values.
  bool isSkipped() const { return skipped_; }
  // Where a part that begins at `from` has to end so as to be at most `room` high: between lines.
  // Always behind `from`.
  double cutAfter(double from, double room) const;
  // Draws the part between two heights, its beginning at a place of the page.
  void draw(const Canvas& canvas, const QPointF& at, double from, double to) const;

  // True if the height is the band's own, whatever the values are.
  static bool isFixed(const Band& band);

 private:
  struct Text {
    const Element* element;
    QStringList lines;
    double width(const Fonts& fonts, int line) const {
      return fonts.width(element->style, lines[line]);
    }
  };

  void lay(const Element& element, const Facts& facts);
  QStringList linesOf(const Element& element, const QString& text) const;
  QStringList wrapped(const Element& element, const QString& text, int most) const;
  QString shortened(const Element& element, QString text) const;
  void grow(const Text& text);
  void drawText(const Canvas& canvas, const Text& text, const QPointF& at, double from,
                double to) const;
  void drawLine(const Canvas& canvas, const Text& text, int line, const QPointF& at) const;
  void drawShape(QPainter& painter, const Element& element, const QPointF& at, double from,
                 double to) const;
  QRectF grown(const Element& element) const;

  const Band& band_;
  const std::vector<Style>& styles_;
  const Fonts& fonts_;
  std::vector<Text> texts_;
  std::vector<const Element*> shapes_;
  double height_;
  bool skipped_ = false;
};

}  // namespace tavolix::report
