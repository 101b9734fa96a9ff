// The life of a record: saved, made, copied, deleted.

#include <QApplication>
#include <QPushButton>
#include <QScopeGuard>
#include <QTabWidget>

#include "core/errore.h"
#include "core/modcuore.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "model/raccolte.h"
#include "platform/bound_control.h"
#include "platform/data_control.h"
#include "platform/data_grid.h"
#include "workspace/frmmain.h"
#include "workspace/frmsub.h"
#include "workspace/riga_sospesa.h"

namespace tavolix {
namespace {

const QString kMainId = QStringLiteral("MAIN.ID");
constexpr int kGroup = 5000;  // deletions that reach the disk together

// Writes that reach the file together. What was done before a failure stays done.
class WriteGroup final {
 public:
  explicit WriteGroup(store::DatabasePtr database) : database_(std::move(database)) {
    database_->BeginTrans();
  }
  ~WriteGroup() {
    if (open_) ignorando([this] { database_->CommitTrans(); });
  }
  WriteGroup(const WriteGroup&) = delete;
  WriteGroup& operator=(const WriteGroup&) = delete;
  void Commit() {
    open_ = false;
    database_->CommitTrans();
  }

 private:
  store::DatabasePtr database_;
  bool open_ = true;
};

QByteArray placeOf(const store::Recordset& rs) {
  return rs.RecordCount() != 0 && !rs.Bof() && !rs.Eof() ? rs.Bookmark() : QByteArray();
}

// A list whose new row did not reach the file.
void readAnew(store::Recordset& rs, const QByteArray& place) {
  ignorando([&] {
    rs.Requery();
    if (!place.isEmpty()) rs.SetBookmark(place);
  });
}

platform::DataGrid& grd() {
  return *platform::forms()[QStringLiteral("frmGrid")].control<platform::DataGrid>(
      QStringLiteral("grd"));
}

RigaSospesa currentRow() {
  return {dbForm(iRacElenco()), grd()};
}

bool pressable(QWidget* button) {
  return button->isEnabled() && button->isVisible();
}

store::RecordsetPtr tableByKey(const QString& name) {
  store::RecordsetPtr rs = dbArc->OpenRecordset(name, store::RecordsetType::Table);
  rs->SetIndex(QStringLiteral("1u"));
  return rs;
}

// Deletes records of a collection: main row, detail row, then the rows of the sub-collection.
class RecordEraser final {
 public:
  explicit RecordEraser(const tRaccolta& raccolta)
      : raccolta_(raccolta),
        main_(tableByKey(raccolta.sTabPrincipale)),
        detail_(tableByKey(raccolta.sTabDettaglio)) {}
  ~RecordEraser() {
    ignorando([this] { main_->Close(); });
    ignorando([this] { detail_->Close(); });
  }
  RecordEraser(const RecordEraser&) = delete;
  RecordEraser& operator=(const RecordEraser&) = delete;

  // What is to be told once the deletion is in the file; empty if all went well.
  QString erase(qint64 lID) {
    main_->Seek(QStringLiteral("="), {lID});
    if (main_->NoMatch()) return QStringLiteral("Errore in cancellazione tab primaria");
    const qint64 racID = NullAZero(main_->Value(QStringLiteral("RacID"))).toLongLong();
    main_->Delete();
    detail_->Seek(QStringLiteral("="), {racID});
    if (detail_->NoMatch()) return QStringLiteral("Errore in cancellazione tab secondaria");
    detail_->Delete();
    if (raccolta_.iSottoRaccolta != -1) eraseChildren(racID);
    return {};
  }

 private:
  void eraseChildren(qint64 racID) const {
    const tRaccolta& sub = aRaccolte(raccolta_.iSottoRaccolta);
    const store::RecordsetPtr rows = dbArc->OpenRecordset(
        QStringLiteral("SELECT * FROM ") + sub.sQuery + QStringLiteral(" WHERE ") +
            sub.sCampoPadre + u'=' + QString::number(racID),
        store::RecordsetType::Dynaset);
    while (!rows->NoMatch() && !rows->Eof()) {
      rows->Delete();
      rows->MoveNext();
    }
    rows->Close();
  }

  const tRaccolta& raccolta_;
  store::RecordsetPtr main_;
  store::RecordsetPtr detail_;
};

void eraseRecord(int iRac, qint64 lID) {
  protetto("frmMain!CancellaRecord", [&] {
    WriteGroup group(dbArc);
    const QString told = RecordEraser(aRaccolte(iRac)).erase(lID);
    group.Commit();
    if (!told.isEmpty()) iMsg(told, 0);
  });
}

// Walks a clone of the list, so that list and form do not follow row by row.
void eraseAll(int iRac, store::Recordset& rs) {
  const int id = rs.FieldIndex(kMainId);
  RecordEraser eraser(aRaccolte(iRac));
  rs.MoveFirst();
  while (!rs.Eof()) {
    WriteGroup group(dbArc);
    QStringList told;
    for (int i = 0; i < kGroup && !rs.Eof(); ++i) {
      protetto("frmMain!CancellaRecord", [&] { told << eraser.erase(rs.Value(id).toLongLong()); });
      rs.MoveNext();
    }
    group.Commit();
    told.removeAll(QString());
    for (const QString& text : std::as_const(told)) iMsg(text, 0);
  }
}

}  // namespace

void frmMain::Salva() {
  if (iRacCorr >= 0) ignorando([] { currentRow().Salva(); });
}

bool frmMain::bSalvato() {
  Salva();
  return iRacCorr < 0 || !currentRow().bResta();
}

bool frmMain::bLasciaRiga() {
  return iRacCorr < 0 || currentRow().bLascia();
}

void frmMain::SegnalaLettura(int numero, const QString& descrizione) {
  if (iRacCorr < 0) return SegnalaErrore(numero, descrizione);
  currentRow().SegnalaLettura(numero, descrizione);
}

void frmMain::TastoAddNew() {
  if (iRacCorr < 0 || !pressable(Control(QStringLiteral("cmdAddNew")))) return;
  Salva();
  AbilitazionePannello(true);
  CreaNuovo(false);
}

void frmMain::TastoDuplica() {
  if (!pressable(Control(QStringLiteral("cmdDuplica")))) return;
  if (!bRecordValido(dbElenco().Recordset())) return;
  Salva();
  CreaNuovo(true);
}

void frmMain::CreaNuovo(bool bDuplica) {
  protetto("frmMain!CreaNuovo", [&] {
    // What could not be written holds its record.
    if (currentRow().bResta()) return;
    Puntatore(kClessidra);
    Cedi();
    const tRaccolta& raccolta = aRaccolte(iRacCorr);
    const store::RecordsetPtr rs = dbForm(iRacCorr).Recordset();
    if (!rs) throw store::Failure(store::failure::kClosed, QStringLiteral("Nessun elenco aperto"));
    if (bDuplica) ScambiaValoriCampi(iRacCorr, 0);
    // Counter and both rows reach the file together. Where the rows fail the counter goes on: one
    // that was behind the keys in use comes past them.
    WriteGroup group(dbArc);
    auto takeBack = qScopeGuard([&rs, place = placeOf(*rs)] { readAnew(*rs, place); });
    rs->AddNew();
    if (bDuplica) {
      ScambiaValoriCampi(iRacCorr, 1);
    } else {
      ImpostaDefaultCampi(iRacCorr);
    }
    if (!control<QPushButton>(QStringLiteral("cmdEspandi"))->isChecked()) setExtended(false);
    static_cast<QTabWidget*>(panRecord(iRacCorr))->setCurrentIndex(0);
    aCampi(iRacCorr, 1).oControllo->widget()->setFocus(Qt::OtherFocusReason);
    const int lNuovo = lNewCont();
    if (lNuovo == 0) return;  // the user has been told
    rs->SetValue(raccolta.sCampoLegame, lNuovo);
    rs->SetValue(raccolta.sTabDettaglio + u'.' + raccolta.sCampoID, lNuovo);
    rs->SetValue(QStringLiteral("TipoRac"), iRacCorr);
    rs->Update();
    group.Commit();
    takeBack.dismiss();
    rs->SetBookmark(rs->LastModified());
    AggiornaBarraStato();
    Puntatore(kPuntatoreNormale);
  });
}

QString frmMain::deletionQuestion() {
  return QStringLiteral("Vuoi veramente cancellare il record corrente (") +
         aCampi(iRacCorr, 0).oControllo->Text() + u' ' + aCampi(iRacCorr, 1).oControllo->Text() +
         QStringLiteral(")?");
}

void frmMain::TastoCancella() {
  const store::RecordsetPtr rs = dbElenco().Recordset();
  if (!bRecordValido(rs)) return;
  protetto("frmMain!TastoCancella", [&] {
    // What is asked about is what is deleted.
    const int iRac = iRacCorr;
    const qint64 lID = rs->Value(kMainId).toLongLong();
    const QByteArray place = rs->Bookmark();
    if (iMsg(deletionQuestion(), 2) != 1) return;
    eraseRecord(iRac, lID);
    refreshAfterDeletion();
    // A record that could not be deleted stays the current one: the next try is for it too.
    ignorando([&] { dbElenco().Recordset()->SetBookmark(place); });
  });
}

void frmMain::refreshAfterDeletion() {
  dbElenco().Refresh();
  AggiornaRecordsetForm();
  AggiornaBarraStato();
  AbilitazionePannello();
}

void frmMain::CancellaRecord(qint64 lID) {
  eraseRecord(iRacCorr, lID);
}

void frmMain::mnuCancellaMultiplo_Click() {
  protetto("frmMain!CancellaMultiplo", [&] {
    if (lRecordElenco() == 0) return;
    const int iRac = iRacCorr;
    const store::RecordsetPtr shown = dbElenco().Recordset()->Clone();
    const QString question = QStringLiteral(
        "Vuoi veramente cancellare tutti i record correntemente visualizzati nell'elenco?");
    if (iMsg(question, 2) != 1) return;
    Puntatore(kClessidra);
    // Groups that were written before a failure are gone from the list too.
    protetto("frmMain!CancellaMultiplo", [&] { eraseAll(iRac, *shown); });
    refreshAfterDeletion();
    Puntatore(kPuntatoreNormale);
  });
}

// Combos of one list share it: those of the parent's form follow by themselves what is done here.
void frmMain::cmdSubRac_Click() {
  Salva();
  if (!bRecordValido(dbElenco().Recordset())) return;
  FrmSub().Mostra(aRaccolte(iRacCorr).iSottoRaccolta, iRacCorr, 0);
  Show();
}

void frmMain::mnuSottoraccolta_Click() {
  if (pressable(Control(QStringLiteral("cmdSubRac")))) cmdSubRac_Click();
}

void frmMain::mnuVarieSalva_Click() {
  protetto("frmMain!VarieSalva", [&] {
    const store::RecordsetPtr config = tableByKey(QStringLiteral("GRDCONFIG"));
    for (int i = 0; i < grd().ColumnCount(); ++i) {
      config->Seek(QStringLiteral("="), {aRaccolte(iRacCorr).sQuery, i});
      if (config->NoMatch()) continue;
      config->Edit();
      config->SetValue(QStringLiteral("Larghezza"), grd().Column(i).width);
      config->Update();
    }
    config->Close();
  });
}

}  // namespace tavolix
