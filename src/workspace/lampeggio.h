#pragma once

class QWidget;

namespace tavolix {

// Makes a button blink in red, to say that it is the one to be pressed; one at a time.
void FaiLampeggiare(QWidget* controllo);
void FermaLampeggio();

}  // namespace tavolix
