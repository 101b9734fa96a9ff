#pragma once

namespace tavolix {

// Adds guide, tips, about box, system information and the blinking to the program's forms, with
// their commands and what they do for other areas.
void RegistraFormAssist();

}  // namespace tavolix
