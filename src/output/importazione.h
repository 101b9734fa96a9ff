#pragma once

namespace tavolix {

// The command that copies an address book into "Persone" of the open archive.
void mnuImportaRubKPZ3_Click();

}  // namespace tavolix
