#include "archives/nome_archivio.h"

#include <algorithm>

#include "archives/frmask.h"
#include "archives/percorsi.h"
#include "core/modutil.h"
#include "platform/file_system.h"

namespace tavolix {
namespace {

constexpr int kLongestName = 30;

bool isGood(QChar letter) {
  const bool plain = letter.unicode() < 0x80 && letter.isLetterOrNumber();
  return plain || letter == u' ' || letter == u'-' || letter == u'_';
}

}  // namespace

bool bNomeArchivioValido(const QString& sNome) {
  return std::all_of(sNome.begin(), sNome.end(), isGood);
}

QString sSenzaEstensione(const QString& sDigitato, const QString& sExt) {
  QString name = sDigitato.trimmed();
  if (name.endsWith(sExt, Qt::CaseInsensitive)) name.chop(sExt.size());
  return name;
}

QString sChiediNomeArchivio(const QString& sDir, const QString& sPrompt, const QString& sExt,
                            const QString& sVecchio) {
  const QString former = sVecchio.isEmpty() ? QString() : sFileEsatto(sDir + sVecchio);
  for (;;) {
    const QString typed = sChiedi(sPrompt, {}, kLongestName).trimmed();
    if (typed.isEmpty()) return {};
    const QString name = sSenzaEstensione(typed, sExt);
    const bool valid = bNomeArchivioValido(name);
    if (!valid) {
      iMsg(QStringLiteral("Nome dell'archivio non valido: puo' contenere solo lettere e numeri. "
                          "L'estensione '%1' viene aggiunta automaticamente.")
               .arg(sExt),
           0);
    }
    const bool taken = platform::isTaken(sFileEsatto(sDir + name + sExt), former);
    if (taken) iMsg(QStringLiteral("Nome archivio gia' esistente!"), 0);
    if (valid && !taken) return name + sExt;
  }
}

}  // namespace tavolix
