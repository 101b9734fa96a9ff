#include "query/frmtrova.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>

#include "core/dialogo.h"
#include "core/errore.h"
#include "core/modcuore.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "core/verbi.h"
#include "model/raccolte.h"
#include "platform/data_control.h"
#include "platform/drop_down.h"
#include "platform/handlers.h"
#include "query/trova_view.h"

namespace tavolix {
namespace {

int sottoraccolta() {
  return aRaccolte(iRacCorr).iSottoRaccolta;
}

// Keys of the parents of all child rows that meet a condition: the others need no look.
QSet<qint64> parentsOf(const tRaccolta& sub, const QString& condition) {
  QSet<qint64> parents;
  const store::RecordsetPtr rows =
      dbArc->OpenRecordset(QStringLiteral("SELECT ") + sub.sCampoPadre + QStringLiteral(" FROM ") +
                               sub.sQuery + QStringLiteral(" WHERE ") + condition,
                           store::RecordsetType::Snapshot);
  for (qint64 i = 0; i < rows->RecordCount(); ++i) parents.insert(rows->ValueAt(i, 0).toLongLong());
  rows->Close();
  return parents;
}

}  // namespace

frmTrova::frmTrova()
    : platform::Form(
          QStringLiteral("frmTrova"),
          {.title = "Trova", .icon = "trova", .enter = "cmdSuccessivo", .escape = "cmdEsci"}) {}
frmTrova::~frmTrova() = default;

QWidget* frmTrova::build() {
  auto* window = new QDialog;
  addWhere(*window);
  QGroupBox* what = addWhat(*window);
  controlli_ = std::make_unique<ControlliCondizione>(
      ControlliCondizione::Nomi{"cboCampo", QString()}, QString(), what);
  fillWhat(*what, *controlli_);
  addSearchButtons(*window);
  return window;
}

void frmTrova::loaded() {
  PreparaDialogo(*this);
  connectControls();
  focus_.watch(Window());
}

void frmTrova::unloaded() {
  closeChildren();
}

void frmTrova::connectControls() {
  platform::onClick(this, "CSCmdBtn1", [this] { Cerca(kPrimo); });
  platform::onClick(this, "cmdPrecedente", [this] { Cerca(kPrecedente); });
  platform::onClick(this, "cmdSuccessivo", [this] { Cerca(kSuccessivo); });
  platform::onClick(this, "CSCmdBtn2", [this] { Cerca(kUltimo); });
  platform::onClick(this, "cmdEsci", [this] { Hide(); });
  for (const char* name : {"optRac", "optSubRac"}) {
    platform::onCommand(control<QRadioButton>(QString::fromLatin1(name)), &QRadioButton::clicked,
                        this, &frmTrova::opt_Click);
  }
  platform::onSignal(controlli_->Campo(), &QComboBox::currentIndexChanged, this,
                     [this] { cboCampo_Click(); });
}

void frmTrova::Carica(bool bSottoRaccolta) {
  iRaccolta_ = iRacCorr;
  sArchivio_ = sPathArc;
  auto* optRac = control<QRadioButton>(QStringLiteral("optRac"));
  auto* optSubRac = control<QRadioButton>(QStringLiteral("optSubRac"));
  optRac->setText(QStringLiteral("Nella raccolta principale ") + aRaccolte(iRacCorr).sNome);
  optSubRac->setEnabled(sottoraccolta() != -1);
  if (sottoraccolta() != -1) {
    optSubRac->setText(QStringLiteral("Nella sotto-raccolta ") + aRaccolte(sottoraccolta()).sNome);
  }
  (bSottoRaccolta ? optSubRac : optRac)->setChecked(true);
  iOfferta_ = iRaccolta();
  controlli_->CaricaCampi(iOfferta_);
  cboCampo_Click();
  controlli_->Campo()->setFocus();
}

// A click on the one that is chosen already leaves what was entered.
void frmTrova::opt_Click() {
  if (iRaccolta() != iOfferta_) Carica(iRaccolta() != iRacCorr);
}

int frmTrova::iRaccolta() {
  const bool main = control<QRadioButton>(QStringLiteral("optRac"))->isChecked();
  return main ? iRacCorr : sottoraccolta();
}

void frmTrova::cboCampo_Click() {
  const int iRac = iRaccolta();
  controlli_->Prepara(iRac, sCondizioniTrova(aCampi(iRac, controlli_->iCampo()).sTipo));
  controlli_->Mostra(iRac, true);
}

QString frmTrova::sCreaCondizione() {
  const int iRac = iRaccolta();
  const Esito esito = CondizioneTrova(iRac, controlli_->Letta());
  if (esito.sRifiuto.isEmpty()) return esito.sTesto;
  iMsg(esito.sRifiuto, 0);
  controlli_->Valore(iRac)->setFocus();
  return {};
}

bool frmTrova::CercaAncora(bool bAvanti) {
  const bool same = IsLoaded() && iRaccolta_ == iRacCorr && sArchivio_ == sPathArc;
  if (!same || !CondizioneTrova(iRaccolta(), controlli_->Letta()).sRifiuto.isEmpty()) return false;
  Cerca(bAvanti ? kSuccessivo : kPrecedente);
  return true;
}

void frmTrova::Cerca(int iModoRicerca) {
  protetto("frmTrova!Cerca", [&] {
    const QString condition = sCreaCondizione();
    if (condition.isEmpty() || !dbElenco().Recordset()) return;
    // Another archive may be open since.
    if (rsFigli_ != nullptr && !rsFigli_->IsOpen()) closeChildren();
    // The record that is left is written first.
    if (!dbForm(iRacCorr).writePending()) return;
    if (iRaccolta() == iRacCorr) {
      findInList(iModoRicerca, condition);
    } else {
      findInChildren(iModoRicerca, condition);
    }
  });
}

void frmTrova::findInList(int iModo, const QString& condition) {
  store::Recordset& rs = *dbElenco().Recordset();
  if (iModo == kSuccessivo) rs.FindNext(condition);
  if (iModo == kPrecedente) rs.FindPrevious(condition);
  if (iModo == kPrimo) rs.FindFirst(condition);
  if (iModo == kUltimo) rs.FindLast(condition);
  if (!rs.NoMatch() && !rs.Eof() && !rs.Bof()) return;
  QApplication::beep();
  // The record that has stayed can be worked on.
  if (lRecordElenco() > 0 && !rs.Eof() && !rs.Bof()) rs.SetBookmark(rs.Bookmark());
}

void frmTrova::findInChildren(int iModo, const QString& condition) {
  const store::RecordsetPtr rs = dbElenco().Recordset();
  if (lRecordElenco() == 0) return;
  const store::RecordsetPtr clone = rs->Clone();
  clone->SetBookmark(rs->Bookmark());
  Puntatore(kClessidra);
  const bool found = walk(*clone, iModo, condition);
  Puntatore(kPuntatoreNormale);
  if (!found) return;
  rs->SetBookmark(clone->Bookmark());
  clone->Close();
  showChild();
}

bool frmTrova::stepOn(store::Recordset& clone, int iModo) const {
  if (rsFigli_ == nullptr) {
    if (iModo == kSuccessivo) clone.MoveNext();
    if (iModo == kPrecedente) clone.MovePrevious();
  }
  return !clone.Eof() && !clone.Bof();
}

bool frmTrova::walk(store::Recordset& clone, int iModo, const QString& condition) {
  const tRaccolta& sub = aRaccolte(sottoraccolta());
  const QSet<qint64> parents = parentsOf(sub, condition);
  const int key = clone.FieldIndex(sub.sRifPadre);
  bool jumped = false;
  if (iModo == kPrimo || iModo == kUltimo) {
    closeChildren();
    if (iModo == kPrimo) clone.MoveFirst();
    if (iModo == kUltimo) clone.MoveLast();
    iModo = iModo == kPrimo ? kSuccessivo : kPrecedente;
    jumped = true;
  }
  while (jumped || stepOn(clone, iModo)) {
    jumped = false;
    const qint64 parent = clone.Value(key).toLongLong();
    const QString sSql = QStringLiteral("SELECT * FROM ") + sub.sQuery + QStringLiteral(" WHERE ") +
                         sub.sCampoPadre + u'=' + QString::number(parent);
    if (sSqlFigli_ != sSql) closeChildren();
    const bool worthALook = rsFigli_ != nullptr || parents.contains(parent);
    if (worthALook && findChild(sSql, iModo, condition)) return true;
    closeChildren();
  }
  return false;
}

bool frmTrova::findChild(const QString& sSql, int iModo, const QString& condition) {
  if (rsFigli_ == nullptr) {
    rsFigli_ = dbArc->OpenRecordset(sSql, store::RecordsetType::Snapshot);
    sSqlFigli_ = sSql;
    rsFigli_->FindFirst(condition);
  } else if (iModo == kSuccessivo) {
    rsFigli_->FindNext(condition);
  } else {
    rsFigli_->FindPrevious(condition);
  }
  return !rsFigli_->NoMatch();
}

void frmTrova::closeChildren() {
  if (rsFigli_ != nullptr && rsFigli_->IsOpen()) rsFigli_->Close();
  rsFigli_.reset();
  sSqlFigli_.clear();
}

void frmTrova::showChild() {
  const qint64 found = rsFigli_->Value(QStringLiteral("ID")).toLongLong();
  verbi().MostraSottoraccolta(sottoraccolta(), iRacCorr, found);
}

bool frmTrova::keyDown(int key, Qt::KeyboardModifiers modifiers) {
  if (key != Qt::Key_F3) return false;
  Cerca(modifiers.testFlag(Qt::ShiftModifier) ? kPrecedente : kSuccessivo);
  return true;
}

void RegistraFormTrova() {
  platform::forms().add<frmTrova>(QStringLiteral("frmTrova"));
}

}  // namespace tavolix
