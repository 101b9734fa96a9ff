#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QPainter>
#include <vector>

#include "output/report_definition.h"

namespace tavolix::report {

// A text as it stands on a page.
struct Drawn {
  QRectF place;
  QString text;
};

// Where a page goes: to a painter whose unit is the report's, or to a list of its texts.
struct Canvas {
  QPainter* painter = nullptr;
  std::vector<Drawn>* texts = nullptr;
};

// The fonts of a report's styles, and what they say of texts.
class Fonts final {
 public:
  explicit Fonts(const std::vector<Style>& styles);

  const QFont& font(int style) const { return of(style).font; }
  double lineHeight(int style) const { return of(style).height; }
  double ascent(int style) const { return of(style).ascent; }
  double width(int style, const QString& text) const {
    return of(style).metrics.horizontalAdvance(text);
  }
  QString elided(int style, const QString& text, double width) const;
  // True if a text surely fits; false if it has to be measured. Quick: most texts of a list fit.
  bool surelyFits(int style, const QString& text, double width) const;

 private:
  static constexpr int kQuickLetters = 0x180;  // Latin
  struct Font {
    explicit Font(const Style& style);
    QFont font;
    QFontMetricsF metrics;
    double height, ascent;
    std::vector<float> advances;
  };
  const Font& of(int style) const { return fonts_[static_cast<std::size_t>(style)]; }

  std::vector<Font> fonts_;
};

}  // namespace tavolix::report
