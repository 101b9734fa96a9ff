#include "output/modcrystal32.h"

#include <QPrinter>

#include "core/errore.h"
#include "core/modutil.h"
#include "output/print_engine.h"
#include "platform/message_box.h"
#include "platform/printer_dialog.h"

namespace tavolix {
namespace {

bool bMotoreAperto = false;

report::PrintEngine& motore() {
  static report::PrintEngine only;
  return only;
}

bool bApriMotore() {
  if (!bMotoreAperto) bMotoreAperto = motore().OpenEngine();
  if (!bMotoreAperto) Errore(QStringLiteral("Errore inizializzazione PEOpenEngine!"));
  return bMotoreAperto;
}

void ErroreReport(int job) {
  Puntatore(kPuntatoreNormale);
  platform::MsgBox(QStringLiteral("Errore report: %1 - %2")
                       .arg(motore().GetErrorCode(job))
                       .arg(motore().GetErrorText(job)));
}

void ImpostaSottoreport(int job, int sezione, int numero, const QString& sArchivio) {
  const int maniglia = motore().GetNthSubreportInSection(job, sezione, numero);
  if (maniglia == 0) return ErroreReport(job);
  const QString sNome = motore().GetSubreportInfo(job, maniglia);
  if (sNome.isEmpty()) return ErroreReport(job);
  const int sottoJob = motore().OpenSubreport(job, sNome);
  if (sottoJob == 0) return ErroreReport(job);
  if (!motore().SetNthTableLocation(sottoJob, 0, sArchivio)) ErroreReport(sottoJob);
}

// Points the report and its subreports at the archive. What fails is told and does not stop the
// run.
void ImpostaArchivio(int job, const QString& sArchivio) {
  if (!motore().SetNthTableLocation(job, 0, sArchivio)) ErroreReport(job);
  const int sezioni = motore().GetNSections(job);
  for (int i = 0; i < sezioni; ++i) {
    const int codice = motore().GetSectionCode(job, i);
    const int sottoreport = motore().GetNSubreportsInSection(job, codice);
    for (int j = 0; j < sottoreport; ++j) ImpostaSottoreport(job, codice, j, sArchivio);
  }
}

// False if the job is not to run.
bool bAnteprima(int job) {
  if (motore().OutputToWindow(job, QStringLiteral("Anteprima di stampa"))) return true;
  ErroreReport(job);
  return false;
}

bool bStampante(int job) {
  const auto stampante = std::make_shared<QPrinter>(QPrinter::HighResolution);
  const bool bScelta = platform::choosePrinter(*stampante, QStringLiteral("Selezione stampante"));
  Cedi();
  if (!bScelta) return false;
  if (!motore().OutputToPrinter(job, stampante)) ErroreReport(job);
  return true;
}

bool bDestinazione(int job, int iModo) {
  if (iModo == kReportAnteprima) return bAnteprima(job);
  if (iModo == kReportStampante) return bStampante(job);
  if (iModo == kReportEsporta) return motore().ExportTo(job);
  return true;
}

}  // namespace

bool bEseguiReport(int iModo, const QString& sReport, const QString& sArchivio) {
  if (!bApriMotore()) return false;
  const int job = motore().OpenPrintJob(sReport);
  if (job == 0) {
    Puntatore(kPuntatoreNormale);
    platform::MsgBox(QStringLiteral("Impossibile aprire motore di stampa"));
    return false;
  }
  const auto chiuso = infine([job] { motore().ClosePrintJob(job); });
  ImpostaArchivio(job, sArchivio);
  if (!bDestinazione(job, iModo)) return false;
  if (!motore().StartPrintJob(job)) {
    ErroreReport(job);
    return false;
  }
  motore().GetNPages(job);
  return true;
}

QWidget* FinestraAnteprima() {
  return bMotoreAperto ? motore().Window() : nullptr;
}

void ChiudiMotoreReport() {
  if (!bMotoreAperto) return;
  motore().CloseEngine();
  bMotoreAperto = false;
}

}  // namespace tavolix
