#pragma once

namespace tavolix {

// Adds reports and export to the program's forms, with their commands and what they do for other
// areas.
void RegistraFormOutput();

}  // namespace tavolix
