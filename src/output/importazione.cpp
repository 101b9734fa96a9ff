#include "output/importazione.h"

#include <QLocale>

#include "core/errore.h"
#include "core/modcuore.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "core/verbi.h"
#include "output/rubrica.h"
#include "platform/common_dialogs.h"
#include "platform/file_system.h"
#include "platform/progress_window.h"

namespace tavolix {
namespace {

constexpr int kPersone = 7;
constexpr double kVersione = 4;

QString chooseFile() {
  platform::FileRequest request;
  request.title = QStringLiteral("Apri con nome");
  request.kinds = {{QStringLiteral("Tutti i file (*.*)"), QStringLiteral("*.*")},
                   {QStringLiteral("Velmar Casaro 3.x (*.arc)"), QStringLiteral("*.arc")}};
  request.kind = 2;
  request.name = QStringLiteral("*.arc");
  const QString folder = QStringLiteral("C:\\KPZ");
  if (platform::folderExists(folder)) request.folder = folder;
  QString chosen;
  ignorando([&] { chosen = platform::openFile(request).trimmed(); });
  return chosen;
}

// The book with its entries ready; none if it cannot be imported, the user has been told.
std::unique_ptr<Rubrica> openBook(const QString& path) {
  std::unique_ptr<Rubrica> book;
  const auto failure = fallimentoDi([&] {
    book = ApriRubrica(path);
    if (book->versione() != kVersione) {
      iMsg(QStringLiteral("Archivio non compatibile KPZ 3.x!"), 0);
      book.reset();
      return;
    }
    book->apriVoci();
  });
  if (!failure) return book;
  iMsg(QStringLiteral("Errore %1:%2. Impossibile aprire l'archivio per l'importazione")
           .arg(failure->number())
           .arg(failure->description()),
       0);
  return nullptr;
}

void showPeople() {
  if (iRacCorr == kPersone) {
    verbi().RicaricaRaccolta();
  } else {
    iSelRaccolta(kPersone);
  }
}

void tell(const EsitoImportazione& result, qint64 told) {
  const QLocale locale;
  if (result.bInterrotta) {
    iMsg(QStringLiteral("Importazione interrotta: voci importate %1")
             .arg(locale.toString(result.lVoci)),
         0);
    return;
  }
  iMsg(QStringLiteral("Importazione rubrica eseguita con successo!"), 0);
  if (result.lVoci < told) {
    iMsg(QStringLiteral("La rubrica e' danneggiata: voci importate %1 di %2")
             .arg(locale.toString(result.lVoci), locale.toString(told)),
         0);
  }
  if (result.lAccorciate == 0) return;
  iMsg(QStringLiteral(
           "Voci con un testo piu' lungo del suo campo: %1. Il testo intero e' nelle note.")
           .arg(locale.toString(result.lAccorciate)),
       0);
}

}  // namespace

void mnuImportaRubKPZ3_Click() {
  // What could not be written stays in its box.
  if (!verbi().bSalvato()) return;
  const QString path = chooseFile();
  if (path.isEmpty()) return;
  const std::unique_ptr<Rubrica> book = openBook(path);
  if (!book) return;
  protetto("frmMain!mnuImportaRubKPZ3", [&] {
    const auto pointer = infine([] { Puntatore(kPuntatoreNormale); });
    bool isDone = false;
    // The list on the screen has what was written before a failure, too.
    const auto showing = infine([&] {
      if (isDone || iRacCorr == kPersone) showPeople();
    });
    Puntatore(kClessidra);
    EsitoImportazione result;
    {
      platform::ProgressWindow window(QStringLiteral("Importazione rubrica"));
      result = ImportaVoci(*book, *dbArc,
                           [&](qint64 done, qint64 total) { return window.report(done, total); });
    }
    Puntatore(kPuntatoreNormale);
    tell(result, book->voci());
    isDone = true;
  });
}

}  // namespace tavolix
