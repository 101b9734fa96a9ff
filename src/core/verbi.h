#pragma once

#include <QDate>
#include <QString>
#include <QVariant>
#include <functional>
#include <optional>
#include <utility>

#include "store/database.h"
#include "store/failure.h"

class QWidget;

namespace tavolix {

// Fails with the name of a verb that no area has filled.
[[noreturn]] void VerboMancante(const char* nome);

// What an area does for the others, who do not know it. The area fills it in its registration;
// everybody calls it like a function.
template <typename Firma>
class Verbo;

template <typename Risultato, typename... Argomenti>
class Verbo<Risultato(Argomenti...)> final {
 public:
  explicit Verbo(const char* nome) : nome_(nome) {}
  Verbo(const Verbo&) = delete;
  Verbo& operator=(const Verbo&) = delete;
  Verbo& operator=(std::function<Risultato(Argomenti...)> opera) {
    opera_ = std::move(opera);
    return *this;
  }
  Risultato operator()(Argomenti... argomenti) const {
    if (!opera_) VerboMancante(nome_);
    return opera_(std::forward<Argomenti>(argomenti)...);
  }

 private:
  const char* nome_;
  std::function<Risultato(Argomenti...)> opera_;
};

struct Verbi {
  Verbi() {
    ChiudiStampe = [] {};
    MostraSuggerimenti = [](const QString&) {};
  }

  // Archives: how a file becomes the open archive. Mode 0 takes the archive from the settings, else
  // asks; 2 opens `sPath`; any other asks. True with an open, accepted database.
  Verbo<bool(int iModo, const QString& sFileIni, const QString& sSezione, store::DatabasePtr& db,
             QString& sPath, int& iVersione, const QString& sCodiceDB, bool bControllaCodice)>
      ApriArchivio{"ApriArchivio"};
  // Tells a failure met with an archive after it was opened, and sees to it that the next start
  // does not end the same way. The archive is closed; `sProc` is the procedure that failed.
  Verbo<void(const store::Failure& failure, const char* sProc, const QString& sPath)>
      ArchivioInservibile{"ArchivioInservibile"};

  // Workspace: writes what was typed in the current record. True if nothing of it had to stay in
  // its box.
  Verbo<bool()> bSalvato{"bSalvato"};
  // Loads the selected tab's collection anew, list and form.
  Verbo<void()> RicaricaRaccolta{"RicaricaRaccolta"};
  // Opens the record's panel if the list has rows, else closes it.
  Verbo<void()> AbilitazionePannello{"AbilitazionePannello"};
  // Opens the list behind a field, on a value and with a text to be added. The value that was
  // current at the end; nothing if it is not for the record.
  Verbo<std::optional<qint64>(int iRac, int iCampo, qint64 lVoce, const QString& sDaAggiungere)>
      ModificaTabella{"ModificaTabella"};
  // Lets a date be picked under a control; nothing if it was given up.
  Verbo<std::optional<QDate>(const QDate& data, const QWidget& sotto)> ScegliData{"ScegliData"};
  // Shows the child rows of the current record of `iPadre`, standing on one of them.
  Verbo<void(int iSub, int iPadre, qint64 lID)> MostraSottoraccolta{"MostraSottoraccolta"};

  // Query: opens the search.
  Verbo<void()> Cerca{"Cerca"};
  // Only the records with a value in a field.
  Verbo<void(int iCampo, const QVariant& valore)> FiltraValore{"FiltraValore"};
  // An open search goes on in the collection that has become the current one.
  Verbo<void()> SegueRicerca{"SegueRicerca"};

  // Output: shows a report file's pages until they are closed, or prints them.
  Verbo<void(const QString& sReport, const QString& sArchivio, bool bAnteprima)> EseguiReport{
      "EseguiReport"};
  // Closes the report engine, as the program ends; nothing where there is none.
  Verbo<void()> ChiudiStampe{"ChiudiStampe"};

  // Assistance: makes a control blink in a colour of the 16-colour palette; another one stops.
  Verbo<void(QWidget* controllo, int colore, int millisecondi)> Lampeggia{"Lampeggia"};
  Verbo<void()> FermaLampeggio{"FermaLampeggio"};
  // Shows the tips of a group until they are closed; nothing where there are none.
  Verbo<void(const QString& sGruppo)> MostraSuggerimenti{"MostraSuggerimenti"};
};

Verbi& verbi();

}  // namespace tavolix
