#include "workspace/frmtab.h"

#include <QHeaderView>
#include <QPushButton>

#include "core/dialogo.h"
#include "core/errore.h"
#include "core/modcuore.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "core/verbi.h"
#include "model/raccolte.h"
#include "platform/data_control.h"
#include "platform/data_grid.h"
#include "platform/handlers.h"
#include "platform/system_path.h"
#include "platform/text_box.h"
#include "store/unwritten.h"
#include "workspace/tab_view.h"

namespace tavolix {
namespace {

const QString kTab = QStringLiteral("frmTab");
const QString kId = QStringLiteral("ID");
const QString kDesc = QStringLiteral("Desc");
const QString kDefault = QStringLiteral("Default");

enum Column { kVoce, kPred };

platform::GridColumn column(const char* caption, const QString& field, const store::FieldInfo& info,
                            int width) {
  platform::GridColumn column;
  column.caption = QString::fromUtf8(caption);
  column.dataField = field;
  column.width = width;
  column.setup.kind = info.kind;
  column.setup.maxLength = info.size;
  return column;
}

std::optional<qint64> editTable(int iRac, int iCampo, qint64 lVoce, const QString& sDaAggiungere) {
  auto& form = platform::forms().as<frmTab>(kTab);
  form.Load();
  form.CaricaTAB(iRac, iCampo);
  form.ImpostaValoreCorrente(lVoce);
  form.ProponiVoce(sDaAggiungere);
  form.ShowModal(&FormMain());
  if (form.sValoreCorrente().isEmpty()) return std::nullopt;
  return form.lVoceCorrente();
}

}  // namespace

frmTab::frmTab()
    : platform::Form(kTab, {.title = "Tabella", .icon = "tavolix", .box = "cmdEsci"}) {}

QWidget* frmTab::build() {
  return buildTabWindow();
}

platform::DataControl& frmTab::dbTab() {
  return *part<platform::DataControl>(QStringLiteral("dbTab"));
}

platform::DataGrid& frmTab::grd() {
  return *control<platform::DataGrid>(QStringLiteral("grd"));
}

platform::TextBox& frmTab::txtAdd() {
  return *control<platform::TextBox>(QStringLiteral("txtAdd"));
}

store::RecordsetPtr frmTab::rows() {
  return dbTab().Recordset();
}

void frmTab::loaded() {
  PreparaDialogo(*this);
  dbTab().SetDatabaseName(platform::systemPath(sPathArc));
  focus_.watch(Window());
  connectControls();
}

void frmTab::connectControls() {
  const auto press = [this](const char* name, void (frmTab::*command)()) {
    platform::onClick(this, name, [this, command] { afterEdit(command); });
  };
  press("cmdAdd", &frmTab::cmdAdd_Click);
  press("cmdElimina", &frmTab::cmdElimina_Click);
  press("cmdPredefinito", &frmTab::ImpostaPredefinito);
  press("cmdNoPredefinito", &frmTab::CancellaPredefinito);
  press("cmdEsci", &frmTab::cmdEsci_Click);
  platform::onSignal(&dbTab(), &platform::DataControl::recordsetChanged, this, &frmTab::followList);
  platform::onSignal(&txtAdd(), &QLineEdit::textChanged, this, [this] { txtAdd_Change(); });
  platform::onCommand(&txtAdd(), &QLineEdit::returnPressed, this,
                      [this] { afterEdit(&frmTab::cmdAdd_Click); });
  platform::onSignal(&grd(), &platform::DataGrid::beforeUpdate, this, &frmTab::grd_BeforeUpdate);
  platform::onSignal(&grd(), &platform::DataGrid::updateRefused, this,
                     [this] { iMsg(sRifiuto_, 0); });
  platform::onCommand(&grd(), &platform::DataGrid::clicked, this,
                      [this](const QModelIndex& cell) { grd_Click(cell); });
  connect(&grd(), &platform::DataGrid::writeFailed, this, SegnalaErrore);
  connect(&grd(), &platform::DataGrid::readFailed, this, SegnalaErrore);
  platform::onCommand(&grd(), &platform::DataGrid::leaveAsked, this, &frmTab::abandon);
}

void frmTab::CaricaTAB(int iRac, int iCampo) {
  const tCampo& campo = aCampi(iRac, iCampo);
  bScelta_ = true;
  iCampo_ = iCampo;
  iRacTab_ = campo.iRacTab;
  sCodTab_ = campo.sCodTab;
  dbTab().SetRecordSource(sTestoLista(iRacTab_, sCodTab_));
  dbTab().Refresh();
  const QVector<store::FieldInfo>& fields = rows()->Fields();
  const store::FieldInfo& desc = fields.at(rows()->FieldIndex(kDesc));
  txtAdd().setMaxLength(desc.size);
  platform::GridColumn voce = column("Elenco voci", kDesc, desc, kWidthVoce);
  voce.setup.editable = true;
  grd().SetColumns(
      {voce, column("Pred.", kDefault, fields.at(rows()->FieldIndex(kDefault)), kWidthPred)});
  grd().horizontalHeader()->setSectionResizeMode(kVoce, QHeaderView::Stretch);
  Window()->setWindowTitle(QStringLiteral("Raccolta ") + aRaccolte(iRac).sNome +
                           QStringLiteral(": ") + campo.sTitolo);
}

QString frmTab::sValoreCorrente() {
  return bScelta_ && bRecordValido(rows()) ? NullAStringa(rows()->Value(kDesc)) : QString();
}

qint64 frmTab::lVoceCorrente() {
  return bRecordValido(rows()) ? NullAZero(rows()->Value(kId)).toLongLong() : 0;
}

void frmTab::ProponiVoce(const QString& sTesto) {
  txtAdd().setText(sTesto);
}

bool frmTab::bEsisteGia(const QString& sTesto, bool bOgni) {
  const store::RecordsetPtr rs =
      dbArc->OpenRecordset(QStringLiteral("SELECT * FROM TAB WHERE TipoTab=") + sApici(sCodTab_) +
                               QStringLiteral(" AND TipoRac = ") + QString::number(iRacTab_) +
                               QStringLiteral(" AND Desc = ") + sApici(sTesto) + u';',
                           store::RecordsetType::Dynaset);
  const bool found =
      rs->RecordCount() > 0 && (bOgni || rs->Value(kId).toLongLong() != lVoceCorrente());
  rs->Close();
  return found;
}

void frmTab::followList() {
  const store::RecordsetPtr rs = rows();
  if (!rs) return;
  const auto read = [this] { listChanged(); };
  platform::onSignal(rs.get(), &store::Recordset::rowChanged, this, read);
  platform::onSignal(rs.get(), &store::Recordset::rowInserted, this, read);
  platform::onSignal(rs.get(), &store::Recordset::rowRemoved, this, read);
}

// Whoever offers the list reads it again.
void frmTab::listChanged() const {
  ListaValori(iRacTab_, sCodTab_)->invalidate();
}

// What is being typed into the list is written first; nothing else is done if it cannot be.
bool frmTab::confirmEdit() {
  return grd().CommitCell();
}

void frmTab::afterEdit(void (frmTab::*command)()) {
  if (confirmEdit()) (this->*command)();
}

void frmTab::cmdAdd_Click() {
  const QString testo = txtAdd().text();
  if (testo.trimmed().isEmpty()) return;
  if (bEsisteGia(testo, true)) {
    iMsg(QStringLiteral("Voce gia' presente in elenco!"), 0);
    return;
  }
  const store::RecordsetPtr rs = rows();
  const auto unwritten = store::givingUpUnwritten(rs);
  rs->AddNew();
  rs->SetValue(QStringLiteral("TipoTab"), sCodTab_);
  rs->SetValue(QStringLiteral("TipoRac"), iRacTab_);
  rs->SetValue(kDesc, testo);
  rs->SetValue(kDefault, false);
  rs->Update();
  dbTab().Refresh();
  rows()->FindFirst(QStringLiteral("Desc = ") + sApici(testo));
  txtAdd().clear();
  txtAdd().setFocus();
}

// Looks at the column of the field that the list was opened for.
bool frmTab::isUsed(qint64 lID) const {
  const tCampo& campo = aCampi(iRacCorr, iCampo_);
  const tRaccolta& raccolta = aRaccolte(iRacCorr);
  const QString table = campo.bPrincipale ? raccolta.sTabPrincipale : raccolta.sTabDettaglio;
  const store::RecordsetPtr rs = dbArc->OpenRecordset(
      QStringLiteral("SELECT ") + campo.sCampoDB + QStringLiteral(" FROM ") + table +
          QStringLiteral(" WHERE ") + campo.sCampoDB + QStringLiteral(" = ") + QString::number(lID),
      store::RecordsetType::Dynaset);
  const bool used = rs->RecordCount() > 0;
  rs->Close();
  return used;
}

void frmTab::cmdElimina_Click() {
  if (!bRecordValido(rows())) return;
  if (isUsed(lVoceCorrente())) {
    iMsg(QStringLiteral("Impossibile cancellare una voce utilizzata nelle raccolte!"), 0);
    return;
  }
  rows()->Delete();
  dbTab().Refresh();
}

void frmTab::grd_BeforeUpdate(bool* cancel) {
  const QString testo = grd().PendingValue().toString();
  sRifiuto_.clear();
  if (testo.trimmed().isEmpty()) {
    sRifiuto_ = QStringLiteral("Non e' possibile inserire una descrizione vuota!");
  } else if (bEsisteGia(testo, false)) {
    sRifiuto_ = QStringLiteral("Voce gia' presente in elenco!");
  }
  *cancel = !sRifiuto_.isEmpty();
}

void frmTab::grd_Click(const QModelIndex& cell) {
  if (cell.column() == kPred) afterEdit(&frmTab::ImpostaPredefinito);
}

// Goes from mark to mark on a cursor of its own: the list neither reads all its values nor follows.
void frmTab::clearDefaults() {
  const store::RecordsetPtr marked = rows()->Clone();
  const QString condition = QStringLiteral("[Default] = True");
  for (marked->FindFirst(condition); !marked->NoMatch(); marked->FindNext(condition)) {
    marked->Edit();
    marked->SetValue(kDefault, false);
    marked->Update();
  }
  marked->Close();
}

void frmTab::ImpostaPredefinito() {
  const store::RecordsetPtr rs = rows();
  if (!bRecordValido(rs)) return;
  store::Transaction transaction(*dbArc);
  const auto unwritten = store::givingUpUnwritten(rs);
  clearDefaults();
  rs->Edit();
  rs->SetValue(kDefault, true);
  rs->Update();
  transaction.Commit();
}

void frmTab::CancellaPredefinito() {
  if (!rows() || rows()->RecordCount() == 0) return;
  clearDefaults();
  // The list has no current value then, and leaves the record's as it is.
  rows()->MoveLast();
  rows()->MoveNext();
}

void frmTab::activated() {
  protetto("frmTab!Activate", [&] {
    if (lRigaDaMostrare_ != 0 && rows() && rows()->RecordCount() > 0) {
      rows()->MoveFirst();
      rows()->FindFirst(QStringLiteral("ID = ") + QString::number(lRigaDaMostrare_));
    }
    txtAdd().setFocus();
    txtAdd_Change();
    lRigaDaMostrare_ = 0;
  });
}

void frmTab::txtAdd_Change() {
  const bool typed = !txtAdd().text().trimmed().isEmpty();
  QWidget* cmdAdd = Control(QStringLiteral("cmdAdd"));
  if (cmdAdd->isEnabled() != typed) cmdAdd->setEnabled(typed);
}

void frmTab::cmdEsci_Click() {
  txtAdd().clear();
  Hide();
}

bool frmTab::keyDown(int key, Qt::KeyboardModifiers) {
  // Escape within a cell only gives up what was typed there.
  if (key != Qt::Key_Escape || grd().IsEditing()) return false;
  afterEdit(&frmTab::abandon);
  return true;
}

// By Escape the record keeps its value, whatever is current in the list.
void frmTab::abandon() {
  bScelta_ = false;
  cmdEsci_Click();
}

void RegistraFormTab() {
  platform::forms().add<frmTab>(kTab);
  verbi().ModificaTabella = editTable;
}

}  // namespace tavolix
