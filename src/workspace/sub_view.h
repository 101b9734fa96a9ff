#pragma once

class QWidget;

namespace tavolix {

// The window of frmSub with all its controls, the three panels and data control dbSubCurr.
QWidget* buildSubWindow();

}  // namespace tavolix
