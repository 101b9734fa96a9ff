#include "archives/codice_accesso.h"

#include <optional>

#include "archives/frmaskpassword.h"
#include "archives/modmanarc.h"
#include "archives/percorsi.h"
#include "core/errore.h"
#include "core/modutil.h"
#include "model/cifratura.h"
#include "platform/system_path.h"
#include "store/database.h"

namespace tavolix {
namespace {

constexpr int kAttempts = 2;

void wrongCode() {
  iMsg(QStringLiteral("Codice d'accesso errato!"), 0);
}

bool asksForChange() {
  return iMsg(QStringLiteral(
                  "Ora sara' richiesto di inserire per due volte il nuovo codice d'accesso "
                  "(rappresentato da una sequenza di asterischi per motivi di sicurezza). Se alla "
                  "prima richiesta si inserisce un codice vuoto, si disabilita il controllo di "
                  "ingresso.\r\rATTENZIONE: SE SI DIMENTICA IL CODICE D'ACCESSO IL CORRENTE "
                  "ARCHIVIO DIVENTA INUTILIZZABILE! VUOI VERAMENTE MODIFICARLO?"),
              2) == 1;
}

QString askFor(const QString& what, const QString& name) {
  return FrmAskPassword().sChiediCodice(what,
                                        QStringLiteral("Modifica codice d'accesso arc.: ") + name);
}

bool knowsOldCode(const QString& old, const QString& name) {
  if (old.isEmpty() || old == QLatin1String(kSenzaCodice)) return true;
  if (askFor(QStringLiteral(" Digitare il vecchio codice d'accesso "), name) == old) return true;
  wrongCode();
  return false;
}

// The new code, empty for none; nothing if the user does not want one or types two.
std::optional<QString> askNewCode(const QString& name) {
  if (!asksForChange()) return std::nullopt;
  QString code = askFor(QStringLiteral(" Digitare il nuovo codice d'accesso arc.: ") + name, name);
  if (code.isEmpty()) return code;
  if (askFor(QStringLiteral(" Ridigitare il nuovo codice "), name) == code) return code;
  iMsg(QStringLiteral("I due codici non coincidono: codice d'accesso non modificato!"), 0);
  return std::nullopt;
}

}  // namespace

QString sLeggiCodiceAccesso(const QString& sPath) {
  QString code;
  const bool read = ignorando([&] {
    const store::DatabasePtr db = store::OpenDatabase(platform::systemPath(sPath));
    const auto closing = infine([db] { db->Close(); });
    const auto rs = db->OpenRecordset(QStringLiteral("CFG"), store::RecordsetType::Table);
    rs->SetIndex(QStringLiteral("1u"));
    QString stored;
    double number = 0;
    bConfRead(rs, QStringLiteral("PWD"), stored, number);
    code = sCodiceDecifrato(stored);
  });
  if (!read) iMsg(QStringLiteral("Impossibile controllare codice d'accesso!"), 0);
  return code;
}

bool bRichiediCodice(const QString& sCodice, const QString& sPath) {
  if (sCodice == QLatin1String(kSenzaCodice)) return true;
  if (sCodice.isEmpty()) {
    iMsg(QStringLiteral("Codice d'accesso manomesso dall'esterno!"), 0);
    return false;
  }
  const QString request =
      QStringLiteral(" Digitare codice di accesso archivio: ") + sPath + QStringLiteral(" ");
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    if (FrmAskPassword().sChiediCodice(request) == sCodice) return true;
    wrongCode();
  }
  return false;
}

bool bRichiediPWD(const QString& sPath) {
  return protetto("modManArc!bRichiediPWD",
                  [&] { return bRichiediCodice(sLeggiCodiceAccesso(sPath), sPath); });
}

bool bModificaCodiceAccesso(const store::RecordsetPtr& rsCfg, const QString& sPath) {
  return protetto("modManArc!bModificaCodiceAccesso", [&] {
    const QString name = sNomeArchivio(sPath);
    if (!knowsOldCode(sLeggiCodiceAccesso(sPath), name)) return false;
    const std::optional<QString> code = askNewCode(name);
    if (!code) return false;
    ConfWrite(rsCfg, QStringLiteral("PWD"), sCodiceCifrato(*code), 0);
    return true;
  });
}

}  // namespace tavolix
