#include "core/errore.h"

#include "core/modutil.h"
#include "platform/form.h"
#include "platform/handlers.h"
#include "platform/message_box.h"

namespace tavolix {
namespace {

constexpr int kStop = platform::kCritical + platform::kSetForeground;

QVector<FallimentoCorrente>& segnalati() {
  static QVector<FallimentoCorrente> all;
  return all;
}

void tellNext() {
  if (segnalati().isEmpty()) return;
  const FallimentoCorrente next = segnalati().takeFirst();
  Errore(next.numero, next.descrizione, {});
}

}  // namespace

FallimentoCorrente fallimento;

void RicordaFallimento(const store::Failure& failure) {
  fallimento = {failure.number(), failure.description()};
}

void Errore(const QString& sProc) {
  Puntatore(kPuntatoreNormale);
  if (fallimento.numero == 0) return;
  QString testo = QStringLiteral("Si e' verificato un errore durante l'elaborazione. \r\r") +
                  QStringLiteral("Codice errore: %1\r").arg(fallimento.numero) +
                  QStringLiteral("Descrizione: %1\r").arg(fallimento.descrizione);
  if (!sProc.isEmpty()) testo += QStringLiteral("Procedura: ") + sProc;
  const QString splash = QStringLiteral("frmAbout");
  if (platform::forms().isLoaded(splash)) platform::forms()[splash].Unload();
  fallimento = {};
  platform::MsgBox(testo, kStop);
}

void Errore(int numero, const QString& descrizione, const QString& sProc) {
  fallimento = {numero, descrizione};
  Errore(sProc);
}

void SegnalaErrore(int numero, const QString& descrizione) {
  const FallimentoCorrente told{numero, descrizione};
  if (segnalati().contains(told)) return;
  segnalati().append(told);
  platform::WhenNoMessageIsOpen(tellNext);
}

void TogliSegnalazioni() {
  segnalati().clear();
}

void CollegaErrori() {
  platform::setFailureReporter([](const store::Failure& failure) {
    RicordaFallimento(failure);
    Errore();
  });
}

}  // namespace tavolix
