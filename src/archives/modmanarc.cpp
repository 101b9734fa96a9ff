#include "archives/modmanarc.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "archives/codice_accesso.h"
#include "archives/comandi_archivi.h"
#include "archives/file_archivio.h"
#include "archives/frmask.h"
#include "archives/frmaskpassword.h"
#include "archives/frmconfig.h"
#include "archives/frmcopiesicurezza.h"
#include "archives/frmmanarc.h"
#include "archives/frmmanarccfg.h"
#include "archives/frmrecupero.h"
#include "archives/frmsceltadir.h"
#include "archives/percorsi.h"
#include "archives/preparazione.h"
#include "archives/trasporto.h"
#include "archives/unita.h"
#include "core/errore.h"
#include "core/modini.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "core/verbi.h"
#include "platform/file_system.h"
#include "platform/message_box.h"

namespace tavolix {
namespace {

// What became of a file that was tried.
enum class Outcome { Accepted, Refused, Unusable };

QString nameFromSettings() {
  QString path;
  int wanted = 0;
  if (bLeggiInt(QStringLiteral("db_LastOpen"), wanted) && wanted != 0) {
    bLeggiStr(QStringLiteral("db_LastNameOpen"), path);
  }
  if (bLeggiInt(QStringLiteral("db_DefaultOpen"), wanted) && wanted != 0) {
    bLeggiStr(QStringLiteral("db_DefaultNameOpen"), path);
  }
  return path;
}

using Numbers = std::initializer_list<int>;

bool isOneOf(const store::Failure& failure, Numbers numbers) {
  return std::find(numbers.begin(), numbers.end(), failure.number()) != numbers.end();
}

// The file itself, which the offer to repair it tells well enough.
bool isDamage(const store::Failure& failure) {
  using namespace store::failure;
  return isOneOf(failure, {kDamaged, kPageDamaged, kDiskError});
}

// What is around an archive: no repair of it would help.
bool isOfElsewhere(const store::Failure& failure) {
  using namespace store::failure;
  return isOneOf(failure,
                 {kTold, kOverflow, kOutOfMemory, kDiskFull, kReadOnly, kCannotOpen, kLocked});
}

void offerRecovery(const store::Failure& failure, const QString& sPath) {
  RecuperaArchivio(QStringLiteral("Errore nr.%1:%2 durante apertura %3")
                       .arg(failure.number())
                       .arg(failure.description(), sPath),
                   sPath);
}

struct Stamp {
  int version;
  QString application;
};

int sixteenBits(double number) {
  using Limits = std::numeric_limits<qint16>;
  if (number >= Limits::min() && number <= Limits::max()) return static_cast<int>(number);
  throw store::Failure(store::failure::kOverflow,
                       QStringLiteral("Versione dell'archivio fuori dai limiti: %1").arg(number));
}

Stamp stampOf(const store::RecordsetPtr& rs, int iVersione) {
  Stamp stamp{iVersione, {}};
  QString text;
  double number = 0;
  if (bConfRead(rs, QStringLiteral("DB_VERSION"), text, number)) {
    stamp.version = sixteenBits(std::nearbyint(number));
  }
  if (bConfRead(rs, QStringLiteral("DB_APPLICATION"), text, number)) stamp.application = text;
  return stamp;
}

bool isCompatible(const Stamp& archive) {
  Stamp required{0, {}};
  bLeggiInt(QStringLiteral("db_version"), required.version);
  bLeggiStr(QStringLiteral("db_application"), required.application);
  if (archive.version <= required.version && archive.application == required.application) {
    return true;
  }
  platform::MsgBox(required.application + QStringLiteral("Viene richiesto un database V.") +
                   QString::number(required.version) + u'/' + required.application +
                   QStringLiteral(" mentre il database aperto e': V.") +
                   QString::number(archive.version) + u'/' + archive.application);
  return false;
}

bool accepts(const store::DatabasePtr& db, const QString& sPath, int& iVersione,
             bool bControllaCodice) {
  const store::RecordsetPtr rs =
      db->OpenRecordset(QStringLiteral("CFG"), store::RecordsetType::Table);
  rs->SetIndex(QStringLiteral("1u"));
  const Stamp stamp = stampOf(rs, iVersione);
  iVersione = stamp.version;
  const bool accepted = isCompatible(stamp) && (!bControllaCodice || bRichiediPWD(sPath));
  rs->Close();
  return accepted;
}

Outcome tryArchive(const QString& sPath, store::DatabasePtr& db, int& iVersione,
                   bool bControllaCodice) {
  const auto unopened =
      fallimentoDi([&] { db = store::OpenDatabase(platform::systemPath(sPath)); });
  if (unopened) {
    offerRecovery(*unopened, sPath);
    return Outcome::Unusable;
  }
  bool accepted = false;
  const auto failure = fallimentoDi([&] {
    DiGiornale(db->JournalSetAside());
    const bool fits = accepts(db, sPath, iVersione, bControllaCodice);
    if (fits) PreparaArchivio(*db);
    accepted = fits;
  });
  if (accepted) return Outcome::Accepted;
  db->Close();
  if (!failure) return Outcome::Refused;
  ArchivioInservibile(*failure, "modManArc!bManArc", sPath);
  return Outcome::Unusable;
}

// The record store has no passwords: that of the call is left alone.
bool openArchive(int iModo, const QString& sFileIni, const QString& sSezione,
                 store::DatabasePtr& db, QString& sPath, int& iVersione, const QString&,
                 bool bControllaCodice) {
  ImpostaFileIni(sFileIni);
  ImpostaSezioneIni(sSezione);
  AggiornaUnita(sFileIni);
  TogliResti(sCartellaCopie(QStringLiteral(".\\copie")));
  if (iModo != 2) sPath.clear();
  if (iModo == 0) sPath = nameFromSettings();
  for (;;) {
    if (sPath.isEmpty() || !platform::exists(sPath) || platform::folderExists(sPath)) {
      sPath = sScegliArchivio();
      if (sPath.isEmpty()) return false;
    }
    Cedi();
    TogliResti(sFileEsatto(sPath).chopped(sNomeArchivio(sPath).size()));
    const Portato current = ArchivioAttuale(sPath);
    sPath = current.sPath;
    if (sPath.isEmpty()) continue;
    const Outcome outcome =
        tryArchive(sPath, db, iVersione, bControllaCodice && !current.bCodiceNoto);
    if (outcome == Outcome::Unusable) return false;
    if (outcome == Outcome::Accepted) break;
    sPath.clear();
  }
  ImpostaFileIni(sFileIni);
  ImpostaSezioneIni(sSezione);
  ScriviPercorso(QStringLiteral("db_LastNameOpen"), sPath);
  return true;
}

}  // namespace

bool bConfRead(const store::RecordsetPtr& rs, const QString& sChiave, QString& sVal, double& nVal) {
  sVal.clear();
  nVal = 0;
  bool found = false;
  const auto failure = fallimentoDi([&] {
    rs->Seek(QStringLiteral("="), {sChiave});
    if (rs->NoMatch()) return;
    nVal = NullAZero(rs->Value(QStringLiteral("nVal"))).toDouble();
    sVal = NullAStringa(rs->Value(QStringLiteral("sVal")));
    found = true;
  });
  if (!failure) return found;
  Errore(failure->number(), failure->description(), QStringLiteral("modManArc!bConfRead"));
  // An archive that is damaged is not one without the value.
  if (isDamage(*failure)) throw *failure;
  return false;
}

void ConfWrite(const store::RecordsetPtr& rs, const QString& sChiave, const QString& sVal,
               double nVal) {
  protetto("modManArc!ConfWrite", [&] {
    rs->Seek(QStringLiteral("="), {sChiave});
    if (rs->NoMatch()) {
      rs->AddNew();
      rs->SetValue(QStringLiteral("dsc"), sChiave);
    } else {
      rs->Edit();
    }
    rs->SetValue(QStringLiteral("nVal"), nVal);
    rs->SetValue(QStringLiteral("sVal"), sVal);
    rs->Update();
  });
}

void ArchivioInservibile(const store::Failure& failure, const char* sProc, const QString& sPath) {
  if (!isDamage(failure)) {
    Errore(failure.number(), failure.description(), QString::fromUtf8(sProc));
  }
  if (isOfElsewhere(failure)) {
    ChiediArchivioAllAvvio();
  } else {
    offerRecovery(failure, sPath);
  }
}

void RegistraArchivi() {
  verbi().ApriArchivio = openArchive;
}

void RegistraFormArchivi() {
  RegistraFormAsk();
  RegistraFormAskPassword();
  RegistraFormManArc();
  RegistraFormManArcCfg();
  RegistraFormSceltaDir();
  RegistraFormCopieSicurezza();
  RegistraFormRecupero();
  RegistraFormConfig();
  RegistraComandiArchivi();
}

}  // namespace tavolix
