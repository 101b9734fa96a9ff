#include "analysis/frminfoacc.h"

#include <QCheckBox>
#include <QDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>

#include "analysis/analisi.h"
#include "analysis/result_grid.h"
#include "core/dialogo.h"
#include "core/errore.h"
#include "core/modcuore.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "core/verbi.h"
#include "platform/break_key.h"
#include "platform/data_combo.h"
#include "platform/drop_down.h"
#include "platform/handlers.h"
#include "platform/message_box.h"
#include "platform/option_button.h"
#include "platform/screen_room.h"

namespace tavolix {
namespace {

constexpr const char* kRaccolteOfferte[] = {"Libri",    "Riviste",    "Audio",  "Video",
                                            "Software", "Medicinali", "Oggetti"};
constexpr int kTutteLeRaccolte = -1;  // the owner of the lists that all collections share

struct Attributo {
  const char* titolo;
  const char* colonna;
  const char* lista;
};
constexpr Attributo kAttributi[] = {
    {"Proprietario", "Proprietario", "PROPRIETA"},
    {"Stato / Condizioni", "Condizioni", "STATO"},
    {"Luogo di acquisto", "LuogoAcquisto", "DOVEACQ"},
    {"Posizione", "Posizione", "POS"},
};

constexpr const char* kAncoraAttiva = "Finestra di anteprima ancora attiva!";

QString sChkRac(int iRac) {
  return QStringLiteral("chkRac(%1)").arg(iRac);
}

QWidget* newChoice(QWidget* window) {
  auto* group = new QWidget(window);
  auto* row = new QHBoxLayout(group);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(platform::newOption("optTutti", QStringLiteral("Tutti"), group));
  row->addWidget(platform::newOption("optUno", QStringLiteral("Uno in particolare:"), group));
  auto* combo = new platform::DataCombo(group);
  combo->setObjectName(QStringLiteral("cboFiltro"));
  combo->setAccessibleDescription(QStringLiteral("Uno in particolare"));
  combo->setMinimumWidth(platform::widthOfCharacters(combo, 24));
  row->addWidget(combo, 1);
  group->findChild<QRadioButton*>(QStringLiteral("optTutti"))->setChecked(true);
  return group;
}

QGroupBox* newCollections(QWidget* window) {
  constexpr int kInRow = 4;
  auto* group = new QGroupBox(QStringLiteral("Includere le seguenti raccolte:"), window);
  auto* grid = new QGridLayout(group);
  int iRac = 0;
  for (const char* caption : kRaccolteOfferte) {
    auto* check = new QCheckBox(QString::fromLatin1(caption), group);
    check->setObjectName(sChkRac(iRac));
    check->setChecked(true);
    grid->addWidget(check, iRac / kInRow, iRac % kInRow);
    ++iRac;
  }
  return group;
}

}  // namespace

frmInfoAcc::frmInfoAcc()
    : platform::Form(
          QStringLiteral("frmInfoAcc"),
          {.title = "Elenchi multiraccolta", .icon = "multiraccolta", .escape = "cmdEsci"}) {}

QWidget* frmInfoAcc::build() {
  auto* window = new QDialog;
  auto* fields = new QFormLayout;
  auto* campo = new platform::DropDown(window);
  campo->setObjectName(QStringLiteral("cboCampo"));
  campo->setAccessibleDescription(QStringLiteral("Elencare per"));
  fields->addRow(QStringLiteral("Elencare per:"), campo);
  fields->addRow(newChoice(window));
  auto* left = new QVBoxLayout;
  left->addLayout(fields);
  left->addWidget(newCollections(window));
  auto* grid = new ResultGrid(&elenco_, window);
  grid->setMinimumHeight(grid->verticalHeader()->defaultSectionSize() * 5);
  left->addWidget(grid, 1);
  auto* progress = new QProgressBar(window);
  progress->setObjectName(QStringLiteral("progBar"));
  progress->setAccessibleName(QStringLiteral("Elenco in preparazione"));
  progress->hide();
  left->addWidget(progress);
  auto* row = new QHBoxLayout(window);
  row->addLayout(left, 1);
  row->addLayout(newAnalysisButtons(window));
  GrandezzaIniziale(*window);
  return window;
}

QComboBox& frmInfoAcc::cboCampo() {
  return *control<QComboBox>(QStringLiteral("cboCampo"));
}
platform::DataCombo& frmInfoAcc::cboFiltro() {
  return *control<platform::DataCombo>(QStringLiteral("cboFiltro"));
}
ResultGrid& frmInfoAcc::grd() {
  return *control<ResultGrid>(QStringLiteral("grd"));
}
QProgressBar& frmInfoAcc::progBar() {
  return *control<QProgressBar>(QStringLiteral("progBar"));
}

void frmInfoAcc::loaded() {
  PreparaDialogo(*this);
  sAttributo_.clear();
  elenco_.clear();
  for (const char* name : {"cmdStampa", "cmdAnteprima"}) {
    Control(QString::fromLatin1(name))->setEnabled(false);
  }
  for (const Attributo& attributo : kAttributi) {
    cboCampo().addItem(QString::fromLatin1(attributo.titolo),
                       QString::fromLatin1(attributo.colonna));
  }
  cboFiltro().setEnabled(false);
  cboCampo_Click();
  connectInputs();
  platform::onClick(this, "cmdElabora", &frmInfoAcc::cmdElabora_Click);
  platform::onClick(this, "cmdStampa", [this] { Stampa(false); });
  platform::onClick(this, "cmdAnteprima", [this] { Stampa(true); });
  platform::onClick(this, "cmdIdea", [] { verbi().MostraSuggerimenti(QStringLiteral("ELEMULT")); });
  platform::onClick(this, "cmdEsci", &frmInfoAcc::cmdEsci_Click);
  focus_.watch(Window());
  cboCampo().setFocus();
  Puntatore(kPuntatoreNormale);
}

// Whatever is changed, the list on the screen no longer matches.
void frmInfoAcc::connectInputs() {
  using platform::onSignal;
  onSignal(&cboCampo(), &QComboBox::currentIndexChanged, this, &frmInfoAcc::cboCampo_Click);
  onSignal(&cboFiltro(), &QComboBox::currentIndexChanged, this, &frmInfoAcc::StartFlash);
  for (int iRac = 0; iRac < static_cast<int>(std::size(kRaccolteOfferte)); ++iRac) {
    onSignal(control<QCheckBox>(sChkRac(iRac)), &QCheckBox::toggled, this, &frmInfoAcc::StartFlash);
  }
  onSignal(control<QRadioButton>(QStringLiteral("optUno")), &QRadioButton::toggled, this,
           [this](bool uno) {
             cboFiltro().setEnabled(uno);
             StartFlash();
           });
}

bool frmInfoAcc::keyDown(int key, Qt::KeyboardModifiers modifiers) {
  return modifiers == Qt::NoModifier && bPremiElabora(*this, key);
}

void frmInfoAcc::StartFlash() {
  LampeggiaElabora(*this);
}

void frmInfoAcc::cboCampo_Click() {
  const Attributo& attributo = kAttributi[std::max(0, cboCampo().currentIndex())];
  CaricaCombo(kTutteLeRaccolte, QString::fromLatin1(attributo.lista), cboFiltro());
  cboFiltro().ShowValue(0);
  StartFlash();
}

void frmInfoAcc::cmdElabora_Click() {
  verbi().FermaLampeggio();
  Puntatore(kClessidra);
  Ricalcola();
  sAttributo_ = cboCampo().currentData().toString();
  const bool bRighe = elenco_.rowCount() > 0;
  Control(QStringLiteral("cmdStampa"))->setEnabled(bRighe);
  Control(QStringLiteral("cmdAnteprima"))->setEnabled(bRighe);
  Puntatore(kPuntatoreNormale);
}

RichiestaElenco frmInfoAcc::richiesta() {
  RichiestaElenco richiesta{cboCampo().currentData().toString(), {}, {}};
  if (control<QRadioButton>(QStringLiteral("optUno"))->isChecked()) {
    richiesta.sValore = cboFiltro().Text();
  }
  for (int iRac = 0; iRac < static_cast<int>(std::size(kRaccolteOfferte)); ++iRac) {
    if (!control<QCheckBox>(sChkRac(iRac))->isChecked()) richiesta.escluse.push_back(iRac);
  }
  return richiesta;
}

void frmInfoAcc::Ricalcola() {
  Cedi();
  const auto nascondi = infine([this] { progBar().hide(); });
  protetto("frmInfoAcc!ricalcola", [this] {
    grd().tellMissing({});
    elenco_.clear();
    elenco_.setHeading(cboCampo().currentText());
    const QString sStep2 = QStringLiteral("Q_ELENCHI_MULTIPLI_STEP2");
    const RichiestaElenco chiesto = richiesta();
    if (!RicreaQueryDef(sStep2, sQueryMultiraccolta(chiesto), dbArc)) {
      grd().tellMissing(sQueryNonScritta());
      return;
    }
    dbArc->Execute(QStringLiteral("Q_AggiornaTitoliRiviste"));
    mostra(dbArc->OpenRecordset(sStep2, store::RecordsetType::Snapshot), chiesto.sAttributo);
  });
}

void frmInfoAcc::mostra(const store::RecordsetPtr& rs, const QString& sAttributo) {
  if (rs->RecordCount() == 0) return;
  progBar().setRange(0, static_cast<int>(rs->RecordCount()));
  progBar().setValue(0);
  progBar().show();
  platform::BreakKey escape;
  const bool bLetto = elenco_.bLeggi(rs, sAttributo, [&](int fatti) {
    if (!escape.isTime()) return true;
    progBar().setValue(fatti);
    return escape.goesOn();
  });
  if (bLetto) grd().fitColumns();
}

bool frmInfoAcc::queryUnload() {
  cmdEsci_Click();
  return false;
}

void frmInfoAcc::cmdEsci_Click() {
  if (bAnteprimaAperta_) {
    platform::MsgBox(QString::fromLatin1(kAncoraAttiva));
    return;
  }
  verbi().FermaLampeggio();
  elenco_.clear();
  Unload();
}

// The report is that of the last computation, whatever is chosen now.
void frmInfoAcc::Stampa(bool bAnteprima) {
  bAnteprimaAperta_ = true;
  const auto chiusa = infine([this] { bAnteprimaAperta_ = false; });
  StampaAnalisi(QStringLiteral("ELEMLT") + sAttributo_.left(2) + QStringLiteral(".RPT"),
                bAnteprima);
}

void RegistraFormInfoAcc() {
  platform::forms().add<frmInfoAcc>(QStringLiteral("frmInfoAcc"));
}

}  // namespace tavolix
