#pragma once

#include <QScopeGuard>
#include <QString>
#include <optional>
#include <type_traits>
#include <utility>

#include "store/failure.h"

namespace tavolix {

// The failure that is being handled; number 0 for none.
struct FallimentoCorrente {
  int numero = 0;
  QString descrizione;
  bool operator==(const FallimentoCorrente&) const = default;
};
extern FallimentoCorrente fallimento;

// The one failure dialog. Shows the current failure and clears it; nothing if there is none.
void Errore(const QString& sProc = {});
// Shows a failure that was caught elsewhere (the data control, the grid).
void Errore(int numero, const QString& descrizione, const QString& sProc);
// Shows a failure that was met where nobody can be asked (the data control, the grid): once the
// work at hand is done and no message is open, and alike ones once.
void SegnalaErrore(int numero, const QString& descrizione);
// Forgets what SegnalaErrore has not shown yet, for one that tells it by itself.
void TogliSegnalazioni();

void RicordaFallimento(const store::Failure& failure);

// Runs the body of a procedure under its failure handler: a failure goes to the dialog under the
// procedure's name, and the procedure ends where it stopped with the default of its result.
template <typename Work>
auto protetto(const char* sProc, Work&& work) -> decltype(work()) {
  try {
    return std::forward<Work>(work)();
  } catch (const store::Failure& failure) {
    RicordaFallimento(failure);
    Errore(QString::fromUtf8(sProc));
    return decltype(work())();
  }
}

// Runs a statement whose failures are ignored; true if it succeeded.
template <typename Work>
bool ignorando(Work&& work) {
  try {
    std::forward<Work>(work)();
    return true;
  } catch (const store::Failure&) {
    return false;
  }
}

// Runs work whose failure is dealt with by its kind; that failure, if there was one.
template <typename Work>
std::optional<store::Failure> fallimentoDi(Work&& work) {
  try {
    std::forward<Work>(work)();
    return std::nullopt;
  } catch (const store::Failure& failure) {
    return failure;
  }
}

// Runs work as its scope is left, whatever has happened. Another failure may be on its way: those
// of the work are ignored.
template <typename Work>
[[nodiscard]] auto infine(Work work) {
  return qScopeGuard([work = std::move(work)]() mutable { ignorando(work); });
}

// Lets this dialog tell the failures that end a handler of an event.
void CollegaErrori();

}  // namespace tavolix
