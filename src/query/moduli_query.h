#pragma once

namespace tavolix {

// Adds filter, find and sort to the program's forms, with their commands.
void RegistraFormQuery();

}  // namespace tavolix
