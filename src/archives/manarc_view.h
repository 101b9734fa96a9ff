#pragma once

class QWidget;

namespace tavolix {

// The window of the archive manager, with its controls under their names.
QWidget* buildManArcWindow();
// Shows the list, or what to do without any archive.
void showArchives(QWidget& window, bool any);

}  // namespace tavolix
