#pragma once

namespace tavolix {

// The commands of the main window on archives, and what other areas may ask of this one.
void RegistraComandiArchivi();

}  // namespace tavolix
