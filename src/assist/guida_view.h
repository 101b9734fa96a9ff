#pragma once

class QWidget;

namespace tavolix {

// The window of frmGuida: contents, index and search at the left, the page at the right.
QWidget* buildGuidaWindow();

}  // namespace tavolix
