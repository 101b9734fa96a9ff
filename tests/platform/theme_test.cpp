#include "platform/theme.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <cmath>

#include "platform/icons.h"

namespace platform {
namespace {

// Relative luminance and contrast as in the Web Content Accessibility Guidelines 2.1.
double luminance(const QColor& color) {
  const auto part = [](double value) {
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
}

double contrast(const QColor& left, const QColor& right) {
  const auto [low, high] = std::minmax({luminance(left), luminance(right)});
  return (high + 0.05) / (low + 0.05);
}

void apply(const QString& wish) {
  applyTheme(*qobject_cast<QApplication*>(QApplication::instance()), wish);
}

TEST(Theme, FollowsTheWishOrTheSystem) {
  const struct {
    const char *wish, *system;
    bool dark;
  } cases[] = {
      {"chiaro", "Adwaita:dark", false},
      {"Scuro", "", true},
      {"sistema", "Adwaita:dark", true},
      {"sistema", "Adwaita", false},
  };
  for (const auto& c : cases) {
    qputenv("GTK_THEME", c.system);
    apply("scuro");  // what was in use before does not count
    apply(c.wish);
    EXPECT_EQ(isDark(), c.dark) << c.wish << c.system;
    EXPECT_EQ(luminance(QApplication::palette().color(QPalette::Window)) < 0.5, c.dark);
  }
  qunsetenv("GTK_THEME");
}

TEST(Theme, LetsTextsStandOut) {
  using P = QPalette;
  const std::pair<P::ColorRole, P::ColorRole> pairs[] = {{P::WindowText, P::Window},
                                                         {P::Text, P::Base},
                                                         {P::ButtonText, P::Button},
                                                         {P::Text, P::AlternateBase},
                                                         {P::Link, P::Base},
                                                         {P::HighlightedText, P::Highlight},
                                                         {P::PlaceholderText, P::Base},
                                                         {P::LinkVisited, P::Window},
                                                         {P::ToolTipText, P::ToolTipBase}};
  for (const char* wish : {"scuro", "chiaro"}) {
    apply(wish);
    const QPalette palette = QApplication::palette();
    for (const auto group : {P::Active, P::Inactive, P::Disabled}) {
      for (const auto& [text, ground] : pairs) {
        EXPECT_GE(contrast(palette.color(group, text), palette.color(group, ground)), 4.5)
            << wish << " group " << group << " roles " << text << ' ' << ground;
      }
    }
  }
}

TEST(Theme, DrawsIconsForSizeAndState) {
  EXPECT_GE(iconNames().size(), 27);
  for (const QString& name : iconNames()) {
    SCOPED_TRACE(qPrintable(name));
    const auto draw = [&](double scale, QIcon::Mode mode = QIcon::Normal) {
      return icon(name).pixmap(QSize(24, 24), scale, mode).toImage();
    };
    apply("scuro");
    const QImage dark = draw(2);
    EXPECT_NE(dark, draw(1).scaled(48, 48)) << "blown up";
    EXPECT_NE(dark, draw(2, QIcon::Disabled));
    apply("chiaro");
    EXPECT_EQ(dark == draw(2), name == "tavolix");  // whose colours are its own
  }
}

}  // namespace
}  // namespace platform
