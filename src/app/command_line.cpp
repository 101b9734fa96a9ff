#include "app/command_line.h"

#include "core/modmain.h"

namespace tavolix {

std::optional<QString> answerTo(const QString& commandLine) {
  const QString version = QStringLiteral("%1 %2 Rev. %3 (%4)\n")
                              .arg(QLatin1String(kNomeProgramma), QLatin1String(kVersione),
                                   QLatin1String(kRevisione), QLatin1String(kDataRilascio));
  if (commandLine == QLatin1String("--version")) return version;
  if (commandLine != QLatin1String("--help")) return std::nullopt;
  return version + QStringLiteral(
                       "\nUso: tavolix [ARCHIVIO]\n\n"
                       "ARCHIVIO e' il percorso, anche relativo, o l'indirizzo file:// di un "
                       "archivio; senza, si apre quello delle impostazioni.\n\n"
                       "  --version  mostra la versione\n"
                       "  --help     mostra questo testo\n");
}

}  // namespace tavolix
