#include "platform/theme.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFontInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <cmath>

#include "platform/flash_target.h"
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
  const double a = luminance(left);
  const double b = luminance(right);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

class ThemeTest : public testing::Test {
 protected:
  void SetUp() override {
    oldConfiguration_ = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", folder_.path().toUtf8());
    qunsetenv("GTK_THEME");
  }
  void TearDown() override {
    qunsetenv("GTK_THEME");
    qputenv("XDG_CONFIG_HOME", oldConfiguration_);
    apply("chiaro");
  }
  static void apply(const QString& wish) {
    applyTheme(*qobject_cast<QApplication*>(QApplication::instance()), wish);
  }
  void setGtkSettings(const QByteArray& content) const {
    QDir(folder_.path()).mkpath("gtk-3.0");
    QFile file(folder_.filePath("gtk-3.0/settings.ini"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

 private:
  QTemporaryDir folder_;
  QByteArray oldConfiguration_;
};

TEST_F(ThemeTest, TextsStandOutInBothThemes) {
  using P = QPalette;
  const struct {
    P::ColorGroup group;
    P::ColorRole text, ground;
  } pairs[] = {
      {P::Active, P::WindowText, P::Window},
      {P::Active, P::Text, P::Base},
      {P::Active, P::Text, P::AlternateBase},
      {P::Active, P::ButtonText, P::Button},
      {P::Active, P::Link, P::Window},
      {P::Active, P::Link, P::Base},
      {P::Active, P::LinkVisited, P::Base},
      {P::Active, P::LinkVisited, P::Window},
      {P::Active, P::PlaceholderText, P::Base},
      {P::Active, P::ToolTipText, P::ToolTipBase},
      {P::Active, P::HighlightedText, P::Highlight},
      {P::Inactive, P::WindowText, P::Window},
      {P::Inactive, P::HighlightedText, P::Highlight},
      {P::Disabled, P::WindowText, P::Window},
      {P::Disabled, P::Text, P::Base},
      {P::Disabled, P::ButtonText, P::Button},
      {P::Disabled, P::HighlightedText, P::Highlight},
  };
  for (const bool dark : {false, true}) {
    const QPalette palette = themePalette(dark);
    for (const auto& pair : pairs) {
      EXPECT_GE(
          contrast(palette.color(pair.group, pair.text), palette.color(pair.group, pair.ground)),
          4.5)
          << dark << " group " << pair.group << " roles " << pair.text << " " << pair.ground;
    }
    EXPECT_EQ(luminance(palette.color(P::Window)) < luminance(palette.color(P::WindowText)), dark);
    apply(dark ? "scuro" : "chiaro");
    EXPECT_GE(contrast(accentColor(), palette.color(P::Window)), 3.0);
  }
}

TEST_F(ThemeTest, WishOrSystemDecides) {
  const struct {
    const char* wish;
    const char* gtkTheme;
    QByteArray gtkSettings;
    bool dark;
  } cases[] = {
      {"chiaro", "Adwaita:dark", "", false},
      {"Scuro", "", "", true},
      {"", "", "", false},
      {"sistema", "Adwaita:dark", "", true},
      {"sistema", "Adwaita", "", false},
      {"sistema", "", "[Settings]\ngtk-application-prefer-dark-theme=1\n", true},
      {"sistema", "", "[Settings]\ngtk-application-prefer-dark-theme = true\n", true},
      {"sistema", "", "[Settings]\ngtk-application-prefer-dark-theme=0\n", false},
  };
  for (const auto& c : cases) {
    qputenv("GTK_THEME", c.gtkTheme);
    setGtkSettings(c.gtkSettings);
    apply("scuro");  // what was in use before does not count
    apply(c.wish);
    EXPECT_EQ(isDark(), c.dark) << c.wish << c.gtkTheme << c.gtkSettings.data();
    EXPECT_EQ(QApplication::palette().color(QPalette::Window),
              themePalette(c.dark).color(QPalette::Window));
  }
  setGtkSettings("");
  qunsetenv("GTK_THEME");
  EXPECT_TRUE(systemIsDark(QPalette(QColor(40, 40, 40))));
  EXPECT_FALSE(systemIsDark(QPalette(QColor(240, 240, 240))));
}

TEST_F(ThemeTest, FontIsReadableAndQtSpeaksItalian) {
  apply("chiaro");
  EXPECT_GE(QApplication::font().pointSize(), 10);
  EXPECT_FALSE(QFontInfo(QApplication::font()).fixedPitch());
  EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Annulla");
}

// Colour of the most opaque pixel; transparent for an empty image.
QColor strongest(const QImage& image) {
  QColor found(Qt::transparent);
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor color = image.pixelColor(x, y);
      if (color.alpha() > found.alpha()) found = color;
    }
  }
  return found;
}

TEST_F(ThemeTest, IconsFollowThemeSizeAndState) {
  EXPECT_TRUE(icon("manca").isNull());
  EXPECT_GE(iconNames().size(), 27);
  for (const QString& name : iconNames()) {
    SCOPED_TRACE(name.toStdString());
    const QIcon drawn = icon(name);
    apply("chiaro");
    const QImage light = drawn.pixmap(QSize(24, 24), 2.0).toImage();
    EXPECT_EQ(light.size(), QSize(48, 48));
    EXPECT_GT(strongest(light).alpha(), 200);
    EXPECT_NE(light, drawn.pixmap(QSize(24, 24), 1.0).toImage().scaled(48, 48)) << "blown up";
    const QColor disabled = strongest(drawn.pixmap(QSize(24, 24), 1.0, QIcon::Disabled).toImage());
    EXPECT_LT(disabled.alpha(), 150);
    EXPECT_EQ(disabled.hsvSaturation(), 0);
    apply("scuro");
    const bool same = light == drawn.pixmap(QSize(24, 24), 2.0).toImage();
    EXPECT_EQ(same, name == "tavolix") << "only the program's own icon has fixed colours";
  }
}

TEST_F(ThemeTest, FlashColorsAreSetAndGivenBack) {
  QPushButton button;
  QLabel label;
  QLineEdit edit;
  QComboBox combo;
  combo.setEditable(true);
  const struct {
    QWidget* widget;
    QPalette::ColorRole text, ground;
  } cases[] = {
      {&button, QPalette::ButtonText, QPalette::Button},
      {&label, QPalette::WindowText, QPalette::Window},
      {&edit, QPalette::Text, QPalette::Base},
      {&combo, QPalette::Text, QPalette::Base},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.widget->metaObject()->className());
    const QPalette before = c.widget->palette();
    FlashTarget::SetForeColor(c.widget, qbColor(12));
    FlashTarget::SetBackColor(c.widget, 0x563412);
    EXPECT_EQ(FlashTarget::ForeColor(c.widget), 0x0000FFU);
    EXPECT_EQ(FlashTarget::BackColor(c.widget), 0x563412U);
    EXPECT_EQ(c.widget->palette().color(c.text), QColor(255, 0, 0));
    EXPECT_EQ(c.widget->palette().color(c.ground), QColor(0x12, 0x34, 0x56));
    FlashTarget::ResetColors(c.widget);
    EXPECT_EQ(c.widget->palette().color(c.text), before.color(c.text));
    EXPECT_EQ(FlashTarget::BackColor(c.widget), toBgr(before.color(c.ground)));
    EXPECT_FALSE(c.widget->testAttribute(Qt::WA_SetPalette));
  }
  EXPECT_FALSE(label.autoFillBackground());
  EXPECT_EQ(qbColor(14), 0x00FFFFU);
  EXPECT_EQ(qbColor(16), qbColor(-1));
}

}  // namespace
}  // namespace platform
