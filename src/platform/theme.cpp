#include "platform/theme.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QLibraryInfo>
#include <QProxyStyle>
#include <QStandardPaths>
#include <QTranslator>
#include <cstdlib>

#include "platform/icons.h"
#include "platform/settings_file.h"

namespace platform {
namespace {

constexpr int kFontPoints = 10;
// Steps of 255 from a colour to its ground at which a mark still shows.
constexpr int kMarkDistance = 80;
// What the toolkit takes where no desktop names a font.
constexpr auto kToolkitFont = "Sans Serif";
constexpr int kToolkitPoints = 9;

struct InUse {
  bool dark = false;
  bool desktopColors = false;
};

InUse& inUse() {
  static InUse state;
  return state;
}

struct Colors {
  QRgb window, base, alternate, button, text, dim, link, visited, tip, tipText;
  QRgb highlight, highlightDim, accent;
  QRgb light, midlight, mid, dark, shadow;
};

constexpr Colors kLight{
    .window = 0xFFF2F3F5,
    .base = 0xFFFFFFFF,
    .alternate = 0xFFF6F8FB,
    .button = 0xFFE8EAED,
    .text = 0xFF1E2329,
    .dim = 0xFF60666F,
    .link = 0xFF2F6DB3,
    .visited = 0xFF6A4C93,
    .tip = 0xFFFFFBE6,
    .tipText = 0xFF1E2329,
    .highlight = 0xFF2F6DB3,
    .highlightDim = 0xFFCBD2DA,
    .accent = 0xFF2F6DB3,
    .light = 0xFFFFFFFF,
    .midlight = 0xFFF6F7F8,
    .mid = 0xFFC4C8CD,
    .dark = 0xFFA3A8AE,
    .shadow = 0xFF6F757C,
};

constexpr Colors kDark{
    .window = 0xFF2F3339,
    .base = 0xFF1A1D21,
    .alternate = 0xFF22262B,
    .button = 0xFF3A3F46,
    .text = 0xFFE6E8EB,
    .dim = 0xFFA3AAB3,
    .link = 0xFF7DB2EE,
    .visited = 0xFFC2A4E8,
    .tip = 0xFF454B53,
    .tipText = 0xFFE6E8EB,
    .highlight = 0xFF2F6DB3,
    .highlightDim = 0xFF414851,
    .accent = 0xFF7DB2EE,
    .light = 0xFF5A616A,
    .midlight = 0xFF4A5058,
    .mid = 0xFF24272C,
    .dark = 0xFF15171A,
    .shadow = 0xFF0B0C0E,
};

void setTextColors(QPalette& palette, const Colors& colors) {
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, colors.text);
    palette.setColor(QPalette::Disabled, role, colors.dim);
  }
  palette.setColor(QPalette::BrightText, Qt::white);
  palette.setColor(QPalette::PlaceholderText, colors.dim);
  palette.setColor(QPalette::Link, colors.link);
  palette.setColor(QPalette::LinkVisited, colors.visited);
  palette.setColor(QPalette::ToolTipBase, colors.tip);
  palette.setColor(QPalette::ToolTipText, colors.tipText);
  palette.setColor(QPalette::Highlight, colors.highlight);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Disabled, QPalette::Highlight, colors.highlightDim);
  palette.setColor(QPalette::Disabled, QPalette::HighlightedText, colors.text);
}

bool showsItalian(const QFont& font) {
  const QString family = QFontInfo(font).family();
  const bool serif = family.contains("serif", Qt::CaseInsensitive) &&
                     !family.contains("sans", Qt::CaseInsensitive);
  return !QFontInfo(font).fixedPitch() && !serif &&
         QFontDatabase::writingSystems(family).contains(QFontDatabase::Latin);
}

QFont withoutSerifs(QFont font) {
  font.setFamilies({"DejaVu Sans", "Noto Sans", "Liberation Sans"});
  font.setStyleHint(QFont::SansSerif);
  return font;
}

void installTranslation(QApplication& application) {
  static QTranslator translator;
  if (!translator.isEmpty()) return;
  const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
  if (translator.load("qtbase_it", folder)) application.installTranslator(&translator);
}

// Fusion with our drawings in message boxes, and without pictures in their buttons.
class Style final : public QProxyStyle {
 public:
  Style() : QProxyStyle("Fusion") {}

  QIcon standardIcon(StandardPixmap picture, const QStyleOption* option,
                     const QWidget* widget) const override {
    switch (picture) {
      case SP_MessageBoxCritical:
        return icon("errore");
      case SP_MessageBoxQuestion:
        return icon("domanda");
      case SP_MessageBoxWarning:
        return icon("avviso");
      case SP_MessageBoxInformation:
        return icon("informazione");
      default:
        return QProxyStyle::standardIcon(picture, option, widget);
    }
  }

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* result) const override {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, result);
  }
};

bool gtkIsDark() {
  if (qEnvironmentVariable("GTK_THEME").endsWith(":dark", Qt::CaseInsensitive)) return true;
  const QString file = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                       "/gtk-3.0/settings.ini";
  const QString prefers = readString(file, "Settings", "gtk-application-prefer-dark-theme", "");
  return prefers == "1" || prefers.compare("true", Qt::CaseInsensitive) == 0;
}

}  // namespace

QPalette themePalette(bool dark) {
  const Colors& colors = dark ? kDark : kLight;
  QPalette palette;
  setTextColors(palette, colors);
  palette.setColor(QPalette::Window, colors.window);
  palette.setColor(QPalette::Base, colors.base);
  palette.setColor(QPalette::Disabled, QPalette::Base, colors.window);
  palette.setColor(QPalette::AlternateBase, colors.alternate);
  palette.setColor(QPalette::Button, colors.button);
  palette.setColor(QPalette::Light, colors.light);
  palette.setColor(QPalette::Midlight, colors.midlight);
  palette.setColor(QPalette::Mid, colors.mid);
  palette.setColor(QPalette::Dark, colors.dark);
  palette.setColor(QPalette::Shadow, colors.shadow);
  return palette;
}

// A font that the machine lacks, or that no desktop has named, is replaced as well.
QFont themeFont(QFont desktop, Looks looks) {
  const bool unnamed = desktop.family() == kToolkitFont && desktop.pointSize() == kToolkitPoints;
  const bool small = desktop.pointSize() > 0 && desktop.pointSize() < kFontPoints;
  if (unnamed || (small && looks == Looks::Own)) desktop.setPointSize(kFontPoints);
  const bool wanted = looks == Looks::Desktop && QFontDatabase::hasFamily(desktop.family());
  return wanted || showsItalian(desktop) ? desktop : withoutSerifs(desktop);
}

QColor accentColor() {
  if (!inUse().desktopColors) return QColor(isDark() ? kDark.accent : kLight.accent);
  const QPalette palette = QApplication::palette();
  const QColor mark = palette.color(QPalette::Highlight);
  const QColor text = palette.color(QPalette::WindowText);
  const auto ground = qGray(palette.color(QPalette::Window).rgb());
  return std::abs(qGray(mark.rgb()) - ground) < kMarkDistance ? text : mark;
}

bool systemIsDark(const QPalette& systemPalette) {
  return systemPalette.color(QPalette::Window).lightness() < 128 || gtkIsDark();
}

void applyTheme(QApplication& application, const QString& wish) {
  QApplication::setStyle(new Style);
  // Without our colours of an earlier call the palette is the desktop's.
  QApplication::setPalette(QPalette());
  const QPalette desktop = QApplication::palette();
  const bool wishesDark = wish.compare("scuro", Qt::CaseInsensitive) == 0;
  const bool wishesLight = wish.compare("chiaro", Qt::CaseInsensitive) == 0;
  const Looks looks = wishesDark || wishesLight ? Looks::Own : Looks::Desktop;
  inUse().dark = wishesDark || (!wishesLight && systemIsDark(desktop));
  // A desktop without colours leaves the style's own.
  inUse().desktopColors =
      looks == Looks::Desktop && desktop != QApplication::style()->standardPalette();
  if (!inUse().desktopColors) QApplication::setPalette(themePalette(isDark()));
  QApplication::setFont(themeFont(QFontDatabase::systemFont(QFontDatabase::GeneralFont), looks));
  installTranslation(application);
}

bool isDark() {
  return inUse().dark;
}

}  // namespace platform
