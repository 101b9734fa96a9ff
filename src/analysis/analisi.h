#pragma once

#include "platform/form.h"

class QVBoxLayout;

namespace platform {
struct ButtonSpec;
}

namespace tavolix {

// What the windows of the analyses have in common: what is on the screen is computed when
// cmdElabora is pressed, which blinks as long as it is not what has been asked for.

// The buttons of an analysis, one below the other; `proprio` stands behind cmdElabora.
QVBoxLayout* newAnalysisButtons(QWidget* window, const platform::ButtonSpec* proprio = nullptr);
// A size that shows the result, as far as the screen has it.
void GrandezzaIniziale(QWidget& window);
void LampeggiaElabora(platform::Form& form);
// Enter computes, but in the result and on a button, which it presses. True if it is used up.
bool bPremiElabora(platform::Form& form, int key);
// What stands in the place of rows whose query could not be stored.
QString sQueryNonScritta();

// Runs a report file of the program on the open archive, on the screen or printed.
void StampaAnalisi(const QString& sFile, bool bAnteprima);

}  // namespace tavolix
