#include "workspace/frmsub.h"

#include <QPushButton>
#include <QScopeGuard>
#include <QShortcut>
#include <QStackedLayout>

#include "core/dialogo.h"
#include "core/errore.h"
#include "core/modcuore.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "core/verbi.h"
#include "model/raccolte.h"
#include "platform/bound_control.h"
#include "platform/data_control.h"
#include "platform/data_grid.h"
#include "platform/handlers.h"
#include "platform/screen_reader.h"
#include "platform/system_path.h"
#include "store/unwritten.h"
#include "workspace/lampeggio.h"
#include "workspace/riga_sospesa.h"
#include "workspace/sub_view.h"

namespace tavolix {
namespace {

const QString kSub = QStringLiteral("frmSub");

QString shownText(int iRac, int iCampo) {
  return aCampi(iRac, iCampo).oControllo->Text();
}

}  // namespace

frmSub& FrmSub() {
  return platform::forms().as<frmSub>(kSub);
}

frmSub::frmSub() : platform::Form(kSub, {.icon = "tavolix", .escape = "cmdEsci"}) {}

QWidget* frmSub::build() {
  return buildSubWindow();
}

platform::DataControl& frmSub::dbSubCurr() {
  return *part<platform::DataControl>(QStringLiteral("dbSubCurr"));
}

platform::DataGrid& frmSub::grdSub() {
  return *control<platform::DataGrid>(QStringLiteral("grdSub"));
}

store::RecordsetPtr frmSub::rows() {
  return dbSubCurr().Recordset();
}

void frmSub::loaded() {
  PreparaDialogo(*this);
  iSubCorrente_ = -1;
  dbSubCurr().SetDatabaseName(platform::systemPath(sPathArc));
  focus_.watch(Window());
  auto* undo = new QShortcut(QKeySequence::Undo, Window());
  platform::onCommand(undo, &QShortcut::activated, this, [this] { dbSubCurr().UndoWrite(); });
  connectControls();
}

void frmSub::connectControls() {
  platform::onClick(this, "cmdAddNew", &frmSub::cmdAddNew_Click);
  platform::onClick(this, "cmdDuplica", &frmSub::cmdDuplica_Click);
  platform::onClick(this, "cmdCancella", &frmSub::cmdCancella_Click);
  platform::onClick(this, "cmdEsci", &frmSub::cmdEsci_Click);
  platform::onSignal(&grdSub(), &platform::DataGrid::beforeUpdate, this,
                     [this] { grdSub_BeforeUpdate(); });
  connect(&grdSub(), &platform::DataGrid::writeFailed, this, SegnalaErrore);
  const RigaSospesa row{dbSubCurr(), grdSub()};
  const auto unread = [row](int numero, const QString& descrizione) {
    row.SegnalaLettura(numero, descrizione);
  };
  connect(&grdSub(), &platform::DataGrid::readFailed, this, unread);
  connect(&grdSub(), &platform::DataGrid::readRestored, &dbSubCurr(),
          &platform::DataControl::readAgain);
  platform::onCommand(&grdSub(), &platform::DataGrid::leaveAsked, this, &frmSub::cmdEsci_Click);
  connect(&dbSubCurr(), &platform::DataControl::writeFailed, this, SegnalaErrore);
  connect(&dbSubCurr(), &platform::DataControl::readFailed, this, unread);
}

QVariant frmSub::parentKey(int iSub) const {
  return dbElenco().Recordset()->Value(aRaccolte(iSub).sRifPadre);
}

QString frmSub::rowsOf(int iSub) const {
  return QStringLiteral("SELECT * FROM ") + aRaccolte(iSub).sQuery + QStringLiteral(" WHERE ") +
         aRaccolte(iSub).sCampoPadre + u'=' + NullAStringa(parentKey(iSub));
}

void frmSub::Carica(int iSub, int iPadre) {
  protetto("frmSub!Carica", [&] {
    CaricaCampi(iSub);
    Window()->setWindowTitle(QStringLiteral("Sottoraccolta ") + aRaccolte(iSub).sNome +
                             QStringLiteral(" - ") + shownText(iPadre, 0) + u' ' +
                             shownText(iPadre, 1));
    // Rows that cannot be read must not leave another record's in their place.
    dbSubCurr().SetRecordset(nullptr);
    if (iSub != iSubCorrente_) hidePanel();
    dbSubCurr().SetRecordSource(rowsOf(iSub));
    dbSubCurr().Refresh();
    if (iSub != iSubCorrente_) showPanel(iSub);
    dbSubCurr().UpdateControls();
  });
  // Rows without a panel cannot be worked on.
  if (iSub != iSubCorrente_) dbSubCurr().SetRecordset(nullptr);
  grdSub().setFocus();
  AbilitazionePannello();
}

void frmSub::Mostra(int iSub, int iPadre, qint64 lID) {
  iRacCorr = iSub;
  const auto back = qScopeGuard([iPadre] { iRacCorr = iPadre; });
  Carica(iSub, iPadre);
  if (lID != 0 && rows()) rows()->FindFirst(QStringLiteral("ID = ") + QString::number(lID));
  ShowModal(&FormMain());
}

QStackedLayout& frmSub::panels() {
  return static_cast<QStackedLayout&>(*Control(QStringLiteral("panRecord(0)"))->layout());
}

void frmSub::hidePanel() {
  if (iSubCorrente_ != -1) CollegaCampi(false, iSubCorrente_);
  iSubCorrente_ = -1;
  panels().setCurrentIndex(0);
}

// A panel is seen once nothing can fail any more: a field that is not bound would take text.
void frmSub::showPanel(int iSub) {
  CaricaComboCampi(iSub);
  CaricaGrigliaConfig(aRaccolte(iSub).sQuery, grdSub());
  CollegaCampi(true, iSub);
  platform::nameControl(grdSub(), QStringLiteral("Elenco ") + aRaccolte(iSub).sNome);
  panels().setCurrentIndex(1 + iSub - kRaccoltePrincipali);
  iSubCorrente_ = iSub;
}

void frmSub::Salva() {
  ignorando([this] { RigaSospesa{dbSubCurr(), grdSub()}.Salva(); });
}

void frmSub::AbilitazionePannello() {
  AbilitazionePannello(rows() && rows()->IsOpen() && rows()->RecordCount() != 0);
}

void frmSub::AbilitazionePannello(bool bAbilita) {
  if (bAbilita) {
    FermaLampeggio();
  } else {
    FaiLampeggiare(Control(QStringLiteral("cmdAddNew")));
  }
  Control(QStringLiteral("panRecord(%1)").arg(iRacCorr))->setEnabled(bAbilita);
  for (const char* name : {"cmdCancella", "cmdDuplica"}) {
    Control(QString::fromLatin1(name))->setEnabled(bAbilita);
  }
}

void frmSub::cmdAddNew_Click() {
  Salva();
  AbilitazionePannello(true);
  CreaNuovo(false);
}

void frmSub::cmdDuplica_Click() {
  if (!bRecordValido(rows())) return;
  Salva();
  CreaNuovo(true);
}

void frmSub::CreaNuovo(bool bDuplica) {
  protetto("frmSub!CreaNuovo", [&] {
    Puntatore(kClessidra);
    Cedi();
    const store::RecordsetPtr rs = rows();
    const auto enable = qScopeGuard([this] { AbilitazionePannello(); });
    if (!rs) throw store::Failure(store::failure::kClosed, QStringLiteral("Nessun elenco aperto"));
    const auto unwritten = store::givingUpUnwritten(rs);
    // A parent that another program has deleted gets no more rows.
    dbElenco().Recordset()->RefreshRow();
    if (bDuplica) ScambiaValoriCampi(iRacCorr, 0);
    rs->AddNew();
    if (bDuplica) {
      ScambiaValoriCampi(iRacCorr, 1);
    } else {
      ImpostaDefaultCampi(iRacCorr);
    }
    aCampi(iRacCorr, 0).oControllo->widget()->setFocus(Qt::OtherFocusReason);
    rs->SetValue(aRaccolte(iRacCorr).sCampoPadre, parentKey(iRacCorr));
    rs->Update();
    rs->SetBookmark(rs->LastModified());
    Puntatore(kPuntatoreNormale);
  });
}

void frmSub::cmdCancella_Click() {
  if (!bRecordValido(rows())) return;
  if (iMsg(QStringLiteral("Vuoi veramente cancellare il record corrente?"), 2) != 1) return;
  rows()->Delete();
  dbSubCurr().Refresh();
  AbilitazionePannello();
}

// Unlike in the main list, what is no number becomes 1.
void frmSub::grdSub_BeforeUpdate() {
  for (int j = 0; j < iNumeroCampi(iRacCorr); ++j) {
    const tCampo& campo = aCampi(iRacCorr, j);
    if (campo.sCampoDB.compare(grdSub().PendingField(), Qt::CaseInsensitive) != 0) continue;
    bool numeric = false;
    grdSub().PendingValue().toDouble(&numeric);
    if (numeric) return;
    if (campo.sTipo == QLatin1String(TXTNUM)) grdSub().SetPendingValue(1);
    if (campo.sTipo == QLatin1String(TXTDTA)) {
      grdSub().SetPendingValue({});
      campo.oControllo->ShowValue({});
    }
  }
}

bool frmSub::keyDown(int key, Qt::KeyboardModifiers) {
  return focus_.keyDown(key);
}

void frmSub::cmdEsci_Click() {
  if (!RigaSospesa{dbSubCurr(), grdSub()}.bLascia()) return;
  FermaLampeggio();
  Hide();
}

void RegistraFormSub() {
  platform::forms().add<frmSub>(kSub);
  verbi().MostraSottoraccolta = [](int iSub, int iPadre, qint64 lID) {
    FrmSub().Mostra(iSub, iPadre, lID);
  };
}

}  // namespace tavolix
