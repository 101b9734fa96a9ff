#include "archives/trasporto.h"

#include <QFileInfo>

#include "archives/codice_accesso.h"
#include "archives/percorsi.h"
#include "core/errore.h"
#include "core/modutil.h"
#include "model/vecchio_archivio.h"
#include "platform/file_system.h"
#include "platform/progress_window.h"

namespace tavolix {
namespace {

constexpr const char* kProcedura = "modManArc!PortaArchivio";

bool wantsIt(const QString& old, const QString& fresh) {
  return iMsg(QStringLiteral(
                  "Il file %1 e' un archivio del vecchio formato. Vuoi portarne i dati in "
                  "un nuovo archivio, %2? Il vecchio file resta com'e'.")
                  .arg(sNomeArchivio(old), sNomeArchivio(fresh)),
              2) == 1;
}

// True once the new archive is there; false where the user has broken off.
bool bring(const QString& old, const QString& fresh) {
  const auto pointer = infine([] { Puntatore(kPuntatoreNormale); });
  Puntatore(kClessidra);
  Trasporto result;
  {
    platform::ProgressWindow window(QStringLiteral("Trasporto dell'archivio"));
    const auto failure = fallimentoDi([&] {
      result = PortaVecchioArchivio(
          old, platform::systemPath(sModello()), fresh,
          [&](qint64 done, qint64 total) { return window.report(done, total); });
    });
    if (failure && failure->number() == store::failure::kInterrupted) return false;
    if (failure) throw *failure;
  }
  Puntatore(kPuntatoreNormale);
  iMsg(sEsitoTrasporto(old, fresh, result), 0);
  return true;
}

bool bringWithCode(const QString& old, const QString& fresh) {
  return protetto(kProcedura, [&] {
    return bRichiediCodice(sCodiceVecchioArchivio(old), old) && bring(old, fresh);
  });
}

QString besides(const QString& old) {
  const QFileInfo file(old);
  const QString stem = file.path() + u'/' + file.completeBaseName();
  const QString fresh = stem + sEstensioneArchivi();
  // Where the settings still have the old files' extension, the name would be the old file's own.
  return platform::isSameFile(fresh, old) ? stem + QStringLiteral(".tvx") : fresh;
}

}  // namespace

Portato ArchivioAttuale(const QString& sPath) {
  const QString old = sFileEsatto(sPath);
  if (!bVecchioArchivio(old)) return {sPath, false};
  const QString fresh = besides(old);
  if (platform::isTaken(fresh)) {
    const QString question = QStringLiteral(
        "Il file %1 e' un archivio del vecchio formato. Accanto c'e' gia' l'archivio %2: vuoi "
        "aprire quello?");
    const bool opens = iMsg(question.arg(sNomeArchivio(old), sNomeArchivio(fresh)), 2) == 1;
    return {opens ? fresh : QString(), false};
  }
  if (!wantsIt(old, fresh) || !bringWithCode(old, fresh)) return {};
  return {fresh, true};
}

bool bPortaInCartella(const QString& sVecchio, const QString& sDir, const QString& sExt) {
  const QString old = sFileEsatto(sVecchio);
  const QString fresh = sFileEsatto(sDir + QFileInfo(old).completeBaseName() + sExt);
  if (platform::isTaken(fresh)) {
    iMsg(QStringLiteral("Nome archivio gia' esistente!"), 0);
    return false;
  }
  return wantsIt(old, fresh) && bringWithCode(old, fresh);
}

}  // namespace tavolix
