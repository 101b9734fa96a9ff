#include "core/modmain.h"

#include <QApplication>
#include <QDir>
#include <QUrl>

#include "core/errore.h"
#include "core/modcuore.h"
#include "core/modini.h"
#include "core/modutil.h"
#include "core/verbi.h"
#include "model/raccolte.h"
#include "platform/data_control.h"
#include "platform/file_system.h"
#include "platform/form.h"
#include "platform/system_path.h"

namespace tavolix {
namespace {

using platform::forms;

const QString kMain = QStringLiteral("frmMain");
const QString kSplash = QStringLiteral("frmAbout");

// The data controls that work on the archive. A window that is not there yet asks when it is made.
void tellDataControls() {
  forms()[QStringLiteral("frmGrid")].Load();
  static const char* const controls[][2] = {
      {"frmGrid", "dbCurr"}, {"frmSub", "dbSubCurr"}, {"frmTab", "dbTab"}};
  for (const auto& [form, control] : controls) {
    const QString name = QString::fromLatin1(form);
    if (!forms().isLoaded(name)) continue;
    forms()[name]
        .part<platform::DataControl>(QString::fromLatin1(control))
        ->SetDatabaseName(platform::systemPath(sPathArc));
  }
}

void showSplash() {
  if (!forms().has(kSplash)) return;
  forms()[kSplash].Show();
  Cedi();
}

void raiseSplash() {
  if (forms().isLoaded(kSplash)) forms()[kSplash].Window()->raise();
}

int readNumber(const char* chiave, bool* found = nullptr) {
  ImpostaFileIni(sPathCompleto(QStringLiteral("tvx.ini")));
  ImpostaSezioneIni(QStringLiteral("Application"));
  int valore = 0;
  const bool present = bLeggiInt(QString::fromLatin1(chiave), valore);
  if (found != nullptr) *found = present;
  return valore;
}

// The collection of the settings, the first where these name none.
int startCollection() {
  const int iRac = readNumber("RacAvvio");
  return iRac >= 0 && iRac < kRaccoltePrincipali ? iRac : 0;
}

// A relative path leads from where the user stands, else from the program's folder.
QString archiveOf(const QString& rigaComando) {
  QString path = rigaComando;
  path = path.replace(u'"', u' ').trimmed();
  if (path.startsWith(QLatin1String("file:"), Qt::CaseInsensitive)) {
    QUrl address(path);
    if (address.host() == QLatin1String("localhost")) address.setHost({});
    return address.isLocalFile() ? address.toLocalFile() : path;
  }
  if (path.isEmpty() || sPathCompleto(path) == path) return path;
  const QString here = QDir::currentPath() + u'/' + path;
  return platform::exists(here) ? platform::systemPath(here) : path;
}

void openRecordsets() {
  rsCfg = dbArc->OpenRecordset(QStringLiteral("CFG"), store::RecordsetType::Table);
  rsCfg->SetIndex(QStringLiteral("1u"));
  rsTab = dbArc->OpenRecordset(QStringLiteral("TAB"), store::RecordsetType::Table);
  rsTab->SetIndex(QStringLiteral("1u"));
  rsCont = dbArc->OpenRecordset(QStringLiteral("CONT"), store::RecordsetType::Dynaset);
}

bool openAtStart(const QString& path) {
  return path.isEmpty() ? bApriDB(0, {}, true, true) : bApriDB(2, path, true, true);
}

}  // namespace

store::DatabasePtr dbArc;
QString sPathArc;
int iVersioneArc = 0;
store::RecordsetPtr rsCfg;
store::RecordsetPtr rsTab;
store::RecordsetPtr rsCont;

bool bApriDB(int iModo, const QString& sPath, bool bPrimoPiano, bool bOpzione) {
  sPathArc = sPath;
  const QString ini = sCartellaProgramma() + QStringLiteral("\\tvx.ini");
  if (!verbi().ApriArchivio(iModo, ini, QStringLiteral("ManArc"), dbArc, sPathArc, iVersioneArc, {},
                            bOpzione)) {
    return false;
  }
  const auto failure = fallimentoDi([&] {
    Cedi();
    if (bPrimoPiano) raiseSplash();
    Cedi();
    openRecordsets();
    DimenticaListe();
    tellDataControls();
    forms()[kMain].Window()->setWindowTitle(
        QStringLiteral("%1 %2 Rev. %3 - Archivio in uso: %4")
            .arg(QLatin1String(kNomeProgramma), QLatin1String(kVersione), QLatin1String(kRevisione),
                 sNomeFile(sPathArc)));
  });
  if (!failure) return true;
  ChiudiWorkspace();
  verbi().ArchivioInservibile(*failure, "modMain!bApriDB", sPathArc);
  return false;
}

bool ChiudiDB(const store::DatabasePtr& db) {
  return protetto("modUtil!ChiudiDB", [&] {
    for (const store::RecordsetPtr& recordset : db->Recordsets()) recordset->Close();
    db->Close();
    return true;
  });
}

void ChiudiWorkspace() {
  store::CloseWorkspace();
}

bool bAvvia(const QString& rigaComando) {
  CollegaErrori();
  return protetto("modMain!main", [&] {
    const QString archive = archiveOf(rigaComando);
    platform::setCurrentDirectory(sCartellaProgramma());
    showSplash();
    RilevaSepDec();
    CaricaRegistroRaccolte();
    if (!openAtStart(archive)) return false;
    forms()[kMain].Load();
    iRacCorr = -1;
    iSelRaccolta(startCollection());
    forms()[kMain].Show();
    Cedi();
    if (forms().isLoaded(kSplash)) forms()[kSplash].Unload();
    Cedi();
    if (readNumber("SuggAvvio") == 1) verbi().MostraSuggerimenti(QStringLiteral("MAIN"));
    return true;
  });
}

void TerminaProgramma(int codice) {
  QCoreApplication::exit(codice);
}

}  // namespace tavolix
