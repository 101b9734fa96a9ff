#include "analysis/moduli_analysis.h"

namespace tavolix {

void RegistraFormAnalysis() {}

}  // namespace tavolix
