#pragma once

#include <QIcon>
#include <QStringList>

namespace platform {

// A drawing of the program by its name ("trova", "stampa", ...), sharp at any size and in the
// colours of the theme in use at the time it is painted. An empty icon for an unknown name.
QIcon icon(const QString& name);
// The same for the title bar of a window, which is light or dark whatever our theme is.
QIcon windowIcon(const QString& name);
// All names, in alphabetical order.
QStringList iconNames();

}  // namespace platform
