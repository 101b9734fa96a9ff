#include "query/moduli_query.h"

#include "query/frmfiltro.h"
#include "query/frmordina.h"
#include "query/frmtrova.h"

namespace tavolix {

void RegistraFormQuery() {
  RegistraFormFiltro();
  RegistraFormTrova();
  RegistraFormOrdina();
}

}  // namespace tavolix
