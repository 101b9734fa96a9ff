#include "core/verbi.h"

namespace tavolix {

void VerboMancante(const char* nome) {
  throw store::Failure(store::failure::kItemNotFound,
                       QStringLiteral("Funzione '%1' non disponibile").arg(QLatin1String(nome)));
}

Verbi& verbi() {
  static Verbi tutti;
  return tutti;
}

}  // namespace tavolix
