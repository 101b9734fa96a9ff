#include "query/moduli_query.h"

#include "query/comandi_query.h"
#include "query/frmfiltro.h"
#include "query/frmordina.h"
#include "query/frmtrova.h"

namespace tavolix {

void RegistraFormQuery() {
  RegistraFormFiltro();
  RegistraFormTrova();
  RegistraFormOrdina();
  RegistraComandiQuery();
}

}  // namespace tavolix
