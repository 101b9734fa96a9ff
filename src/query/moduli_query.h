#pragma once

namespace tavolix {

// Adds filter, find and sort to the program's forms.
void RegistraFormQuery();

}  // namespace tavolix
