#pragma once

class QWidget;

namespace tavolix {

inline constexpr int kWidthVoce = 5400;  // twips
inline constexpr int kWidthPred = 900;

// The window of frmTab with all its controls and data control dbTab.
QWidget* buildTabWindow();

}  // namespace tavolix
