#include "core/comandi.h"

#include <algorithm>

#include "model/raccolte.h"

namespace tavolix {
namespace {

std::vector<std::span<const Comando>>& tabelle() {
  static std::vector<std::span<const Comando>> tutte;
  return tutte;
}

}  // namespace

void RegistraComandi(std::span<const Comando> tabella) {
  const bool known = std::any_of(tabelle().begin(), tabelle().end(),
                                 [&](const auto& other) { return other.data() == tabella.data(); });
  if (!known) tabelle().push_back(tabella);
}

std::vector<const Comando*> Comandi() {
  std::vector<const Comando*> rows;
  for (const auto& tabella : tabelle()) {
    for (const Comando& row : tabella) rows.push_back(&row);
  }
  std::stable_sort(rows.begin(), rows.end(), [](const Comando* one, const Comando* other) {
    return one->posto < other->posto;
  });
  return rows;
}

void EseguiComando(const Comando& comando) {
  if (comando.quando == Quando::kRaccolta && iRacCorr < 0) return;
  comando.esegui();
}

}  // namespace tavolix
