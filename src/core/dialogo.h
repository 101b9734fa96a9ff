#pragma once

#include "platform/form.h"

class QHBoxLayout;

namespace tavolix {

// What all dialogs have, once their window is loaded: until it is unloaded it stands in the
// register of open forms, and its help button, if there is one, asks for the guide.
void PreparaDialogo(platform::Form& form);

platform::Form& FormMain();

// Shows a dialog over the main window until it is left; then the main window is the active one.
void MostraDaMain(platform::Form& form);

// The row of buttons under what a dialog asks for: cmdConferma and cmdAnnulla, at its right end.
QHBoxLayout* rigaConferma(QWidget* window);

}  // namespace tavolix
