#include "archives/copie_sicurezza.h"

#include <QFileInfo>

#include "archives/file_archivio.h"
#include "archives/percorsi.h"
#include "archives/trasporto.h"
#include "archives/unita.h"
#include "core/errore.h"
#include "core/modini.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "model/vecchio_archivio.h"
#include "platform/file_system.h"
#include "platform/system_path.h"

namespace tavolix {
namespace {

constexpr const char* kDiscoPieno =
    "Impossibile eseguire la copia: disco pieno!\rProvare con un disco vuoto, oppure, se "
    "l'archivio corrente supera la dimensione di 1,44Mb bisogna fare una copia sul disco fisso.";
constexpr const char* kDiscoProtetto =
    "Disco protetto da scrittura: per salvare, abbassare la linguetta di protezione del "
    "dischetto!";

bool isFloppy(const QString& drive) {
  return drive == QLatin1String("A:") || drive == QLatin1String("B:");
}

bool isReady(const QString& drive) {
  const QString text = QStringLiteral(
      "Inserire un dischetto formattato nell'unita' %1 e premere SI per procedere con la copia.");
  if (iMsg(text.arg(drive), 2) != 1) return false;
  AggiornaUnita(sPathCompleto(QStringLiteral("tvx.ini")));
  return true;
}

// Where a copy goes to: one that differs in the case of its name alone is the older copy of the
// archive, unless beside that lies one of this very name.
QString placeOfCopy(const QString& source, const QString& destination) {
  const QString exact = sFileEsatto(destination);
  QString found = platform::systemPath(exact);
  const QString name = sNomeArchivio(found);
  if (name == sNomeArchivio(exact) || bStessoFile(found, source)) return found;
  const QString folder = source.chopped(sNomeArchivio(source).size());
  return QFileInfo::exists(folder + name) ? exact : found;
}

// What became of an attempt.
enum class Tentativo { kFatto, kProtetto, kLasciato };

Tentativo tryCopy(const QString& from, const QString& to) {
  EsitoFile esito = EsitoFile::kInterrotto;
  const auto failure =
      fallimentoDi([&] { esito = CopiaArchivio(from, to, QStringLiteral("Copia di sicurezza")); });
  if (!failure) return esito == EsitoFile::kFatto ? Tentativo::kFatto : Tentativo::kLasciato;
  if (failure->number() == platform::file_failure::kDiskFull) {
    iMsg(QString::fromUtf8(kDiscoPieno), 0);
  } else if (failure->number() == platform::file_failure::kDenied) {
    iMsg(QString::fromUtf8(kDiscoProtetto), 0);
    return Tentativo::kProtetto;
  } else {
    Errore(failure->number(), failure->description(), QStringLiteral("modManArc!EseguiCopiaSicur"));
  }
  return Tentativo::kLasciato;
}

// A disk that is protected gets one more attempt: the user may have moved the tab.
bool copied(const QString& from, const QString& to) {
  Puntatore(kClessidra);
  Cedi();
  Tentativo outcome = tryCopy(from, to);
  if (outcome == Tentativo::kProtetto) {
    Puntatore(kClessidra);
    outcome = tryCopy(from, to);
  }
  Puntatore(kPuntatoreNormale);
  return outcome == Tentativo::kFatto;
}

bool mayReplace(const QString& name) {
  const QString text = QStringLiteral(
      "Il recupero di questa copia di sicurezza sostituisce i dati dell'archivio %1 con quelli di "
      "un archivio precedentemente memorizzato con la funzione 'COPIE DI SICUREZZA ARC. CORRENTE' "
      "del menu 'File'. Verra' ripristinato anche l'eventuale codice d'accesso presente "
      "nell'archivio precedente. Vuoi continuare subito con il recupero?");
  return iMsg(text.arg(name), 2) == 1;
}

// A copy of another place than the one it is to come to; empty if the user gave up.
QString chooseCopy(const QString& sDir, const platform::FileRequest& request) {
  for (;;) {
    QString chosen = platform::openFile(request).trimmed();
    if (chosen.isEmpty() || !bStessoFile(chosen, sFileEsatto(sDir + sNomeArchivio(chosen)))) {
      return chosen;
    }
    iMsg(QStringLiteral("Non ha senso recuperare un archivio dalla directory nella quale deve poi "
                        "essere posizionato!!"),
         0);
  }
}

}  // namespace

QVector<platform::FileKind> TipiDiFile(const QString& sExt) {
  return {{QStringLiteral("Tutti i file (*.*)"), QStringLiteral("*.*")},
          {QStringLiteral("Archivi ") + QLatin1String(kNomeProgramma), u'*' + sExt}};
}

bool bStessoFile(const QString& sA, const QString& sB) {
  return platform::isSameFile(sA, sB);
}

void EseguiCopiaSicur(QString sOrigine, QString sDestinazione, bool bAvvisi) {
  sOrigine = sOrigine.trimmed();
  sDestinazione = sDestinazione.trimmed();
  if (sOrigine.isEmpty() || sDestinazione.isEmpty()) return;
  const QString source = sFileEsatto(sOrigine);
  if (bStessoFile(placeOfCopy(source, sDestinazione), source)) {
    iMsg(QStringLiteral("Impossibile eseguire copie di sicurezza nella stessa directory del file "
                        "originale!"),
         0);
    return;
  }
  const QString drive = sDestinazione.left(2).trimmed().toUpper();
  if (isFloppy(drive) && bAvvisi && !isReady(drive)) return;
  // On a disk that may just have been put in.
  const QString place = placeOfCopy(source, sDestinazione);
  if (copied(sOrigine, place.isEmpty() ? sDestinazione : place) && bAvvisi) {
    iMsg(QStringLiteral("Copia di sicurezza eseguita!"), 0);
  }
}

bool bRecuperaCopia(const QString& sDir, const QString& sExt) {
  return protetto("frmManArc!cmdRecupero", [&] {
    const auto pointer = infine([] { Puntatore(kPuntatoreNormale); });
    const QString copies = sCartellaCopie(QStringLiteral(".\\copie"));
    platform::FileRequest request;
    request.title = QStringLiteral("Recupera copia di sicurezza");
    request.kinds = TipiDiFile(sExt);
    request.kind = 2;
    if (platform::folderExists(copies)) request.folder = copies;
    const QString chosen = chooseCopy(sDir, request);
    if (chosen.isEmpty()) return false;
    if (bVecchioArchivio(platform::systemPath(chosen))) {
      return bPortaInCartella(chosen, sDir, sExt);
    }
    // An archive of that name in another case is the one to be replaced.
    const QString target = platform::systemPath(sFileEsatto(sDir + sNomeArchivio(chosen)));
    if (platform::exists(target) && !mayReplace(sNomeArchivio(target))) return false;
    Puntatore(kClessidra);
    Cedi();
    if (CopiaArchivio(chosen, target, request.title) != EsitoFile::kFatto) return false;
    Puntatore(kPuntatoreNormale);
    iMsg(QStringLiteral("Recupero copia di sicurezza eseguito!"), 0);
    return true;
  });
}

}  // namespace tavolix
