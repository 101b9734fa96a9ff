#pragma once

class QWidget;

namespace tavolix {

class ControlliCondizione;

// Fills the window of frmTrova: where and what is searched for, and the buttons.
void buildTrovaWindow(QWidget& window, const ControlliCondizione& controlli);

}  // namespace tavolix
