#pragma once

namespace tavolix {

// Adds the reports to the program's forms, with their command and what they do for other areas.
void RegistraFormOutput();

}  // namespace tavolix
