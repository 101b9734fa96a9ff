#include "output/report_canvas.h"

#include <QGuiApplication>
#include <cmath>

namespace tavolix::report {
namespace {

QFont fontOf(const Style& style) {
  QFont font(style.family.isEmpty() ? QStringLiteral("DejaVu Sans") : style.family);
  font.setStyleHint(QFont::SansSerif);
  font.setPixelSize(static_cast<int>(std::lround(style.size)));
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setBold(style.bold);
  font.setItalic(style.italic);
  return font;
}

}  // namespace

Fonts::Font::Font(const Style& style)
    : font(fontOf(style)),
      metrics(font),
      height(metrics.height()),
      ascent(metrics.ascent()),
      advances(kQuickLetters) {
  for (int letter = ' '; letter < kQuickLetters; ++letter) {
    advances[static_cast<std::size_t>(letter)] =
        static_cast<float>(metrics.horizontalAdvance(QChar(letter)));
  }
}

Fonts::Fonts(const std::vector<Style>& styles) {
  fonts_.reserve(styles.size());
  for (const Style& style : styles) fonts_.emplace_back(style);
}

QString Fonts::elided(int style, const QString& text, double width) const {
  return of(style).metrics.elidedText(text, Qt::ElideRight, width);
}

bool Fonts::surelyFits(int style, const QString& text, double width) const {
  const Font& font = of(style);
  // Pairs of letters rarely stand further apart than each of them asks for.
  constexpr double kCaution = 0.98;
  double taken = 0;
  for (const QChar letter : text) {
    if (letter.unicode() < ' ' || letter.unicode() >= kQuickLetters) return false;
    taken += static_cast<double>(font.advances[letter.unicode()]);
  }
  return taken < kCaution * width;
}

}  // namespace tavolix::report
