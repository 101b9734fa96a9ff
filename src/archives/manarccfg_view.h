#pragma once

class QWidget;

namespace tavolix {

// The window for the upkeep of archives, with its controls under their names.
QWidget* buildManArcCfgWindow();

}  // namespace tavolix
