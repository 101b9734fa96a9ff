#pragma once

#include <QFont>
#include <QPalette>
#include <QString>

class QApplication;

namespace platform {

// Gives the program its looks: style, font, colours, and Qt's own texts in Italian. `wish` is
// "chiaro" or "scuro" for our own, or anything else for the desktop's: its font, its palette; where
// it has none, ours, light or dark as it is. May be called again.
void applyTheme(QApplication& application, const QString& wish);
// True if the dark colours are in use.
bool isDark();

enum class Looks { Desktop, Own };
// The font for the program: the desktop's as it is; for our own looks at least 10 points and
// without serifs.
QFont themeFont(QFont desktop, Looks looks);
// The colours of the program, light or dark.
QPalette themePalette(bool dark);
// The colour that stands out beside the text colour: marks in icons, bars.
QColor accentColor();
// True if the user's desktop is dark: by its own palette, or by the settings of GTK (variable
// GTK_THEME with ":dark" at the end, or gtk-3.0/settings.ini in the user's configuration folder).
bool systemIsDark(const QPalette& systemPalette);

}  // namespace platform
