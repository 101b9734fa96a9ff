#pragma once

#include <QPalette>
#include <QString>

class QApplication;

namespace platform {

// Gives the program its looks: style, font, colours, and Qt's own texts in Italian. `wish` is
// "chiaro", "scuro", or anything else for light or dark as the system has it. May be called again.
void applyTheme(QApplication& application, const QString& wish);
// True if the dark colours are in use.
bool isDark();

// The colours of the program, light or dark.
QPalette themePalette(bool dark);
// The colour that stands out beside the text colour: marks in icons, bars.
QColor accentColor();
// True if the user's desktop is dark: by its own palette, or by the settings of GTK (variable
// GTK_THEME with ":dark" at the end, or gtk-3.0/settings.ini in the user's configuration folder).
bool systemIsDark(const QPalette& systemPalette);

}  // namespace platform
