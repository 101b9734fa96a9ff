#pragma once

#include <QString>

class QWidget;

namespace platform {
class Form;
}

namespace tavolix {

// Rule of an axis: 0 leaves it alone, 1 keeps the distance of the near side to the form's far
// edge, 2 keeps near side and margin to the far edge. All sizes in twips.

// Registers a control of a form with its rules; at most 11 forms with 31 controls each.
void PosRegistra(platform::Form& form, QWidget* controllo, int iModoX, int iModoY);
// Takes the margins from the present layout. The first time with `bMinimo` also the form's
// size, below which the rules never go.
void PosCattura(platform::Form& form, bool bMinimo);
// Applies the rules to the form's present size.
void PosChange(platform::Form& form);
void PosRimuoviControllo(platform::Form& form, const QString& nomeControllo);
void PosRimuoviForm(platform::Form& form);

}  // namespace tavolix
