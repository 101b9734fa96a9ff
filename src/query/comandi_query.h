#pragma once

namespace tavolix {

// Adds the commands that narrow, search and order the list, and offers the others their verbs.
void RegistraComandiQuery();

}  // namespace tavolix
