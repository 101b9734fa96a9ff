#pragma once

namespace tavolix {

// Adds the analyses to the program's forms, with their commands.
void RegistraFormAnalysis();

}  // namespace tavolix
