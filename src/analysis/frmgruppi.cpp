#include "analysis/frmgruppi.h"

#include <QDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "analysis/analisi.h"
#include "analysis/frmgrafico.h"
#include "analysis/result_grid.h"
#include "core/dialogo.h"
#include "core/errore.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "core/verbi.h"
#include "model/campi.h"
#include "model/raccolte.h"
#include "platform/drop_down.h"
#include "platform/handlers.h"
#include "platform/message_box.h"
#include "platform/option_button.h"
#include "platform/push_button.h"

namespace tavolix {
namespace {

constexpr platform::ButtonSpec kGrafico = {"cmdGrafico", "&Grafico", "", "raggruppamenti"};
constexpr const char* kDaRighe[] = {"cmdStampa", "cmdAnteprima", "cmdGrafico"};
constexpr const char* kAncoraAttiva = "Finestra di anteprima ancora attiva!";

// Options of a group, the first of which is on.
QGroupBox* newOptions(const char* title, QBoxLayout* layout,
                      std::initializer_list<std::pair<const char*, const char*>> options,
                      QWidget* window) {
  auto* group = new QGroupBox(QString::fromLatin1(title), window);
  group->setLayout(layout);
  bool first = true;
  for (const auto& [name, caption] : options) {
    QRadioButton* option = platform::newOption(name, QString::fromLatin1(caption), group);
    option->setChecked(first);
    first = false;
    layout->addWidget(option);
  }
  return group;
}

QWidget* newInputs(QWidget* window) {
  auto* inputs = new QWidget(window);
  auto* fields = new QFormLayout(inputs);
  fields->setContentsMargins(0, 0, 0, 0);
  fields->addRow(
      new QLabel(QStringLiteral("Analisi dei raggruppamenti per la raccolta corrente:"), inputs));
  auto* raccolta = new QLabel(inputs);
  raccolta->setObjectName(QStringLiteral("lblRacc"));
  QFont font = raccolta->font();
  font.setBold(true);
  raccolta->setFont(font);
  fields->addRow(raccolta);
  auto* campo = new platform::DropDown(inputs);
  campo->setObjectName(QStringLiteral("cboCampo"));
  campo->setAccessibleDescription(QStringLiteral("Raggruppare per"));
  fields->addRow(QStringLiteral("Raggruppare per:"), campo);
  return inputs;
}

}  // namespace

frmGruppi::frmGruppi()
    : platform::Form(
          QStringLiteral("frmGruppi"),
          {.title = "Analisi raggruppamenti", .icon = "raggruppamenti", .escape = "cmdEsci"}) {}

QWidget* frmGruppi::build() {
  auto* window = new QDialog;
  auto* left = new QVBoxLayout;
  left->addWidget(newInputs(window));
  left->addWidget(newOptions(
      "Esaminare:", new QVBoxLayout,
      {{"optTuttiRecord", "Tutti i record della raccolta"},
       {"optSeleRecord", "Solo i record della raccolta selezionati con il filtro corrente"}},
      window));
  left->addWidget(newOptions("", new QHBoxLayout,
                             {{"optQta", "Per quantita'"}, {"optVal", "Per valore"}}, window));
  auto* grid = new ResultGrid(&gruppi_, window);
  grid->setMinimumHeight(grid->verticalHeader()->defaultSectionSize() * 6);
  left->addWidget(grid, 1);
  auto* row = new QHBoxLayout(window);
  row->addLayout(left, 1);
  row->addLayout(newAnalysisButtons(window, &kGrafico));
  GrandezzaIniziale(*window);
  return window;
}

QComboBox& frmGruppi::cboCampo() {
  return *control<QComboBox>(QStringLiteral("cboCampo"));
}
ResultGrid& frmGruppi::grd() {
  return *control<ResultGrid>(QStringLiteral("grd"));
}
bool frmGruppi::bOpzione(const char* nome) {
  return control<QRadioButton>(QString::fromLatin1(nome))->isChecked();
}

void frmGruppi::loaded() {
  PreparaDialogo(*this);
  Puntatore(kClessidra);
  control<QLabel>(QStringLiteral("lblRacc"))->setText(aRaccolte(iRacCorr).sNome);
  gruppi_.clear();
  caricaCampi();
  connectControls();
  focus_.watch(Window());
  cboCampo().setFocus();
  cmdElabora_Click();
  Puntatore(kPuntatoreNormale);
}

void frmGruppi::caricaCampi() {
  for (int iCampo = 0; iCampo < iNumeroCampi(iRacCorr); ++iCampo) {
    const tCampo& campo = aCampi(iRacCorr, iCampo);
    if (campo.sTipo == QLatin1String(CBO)) cboCampo().addItem(campo.sTitolo, iCampo);
  }
}

// What a chart shows is asked when it is drawn: quantity and value change nothing here.
void frmGruppi::connectControls() {
  using platform::onSignal;
  onSignal(&cboCampo(), &QComboBox::currentIndexChanged, this, &frmGruppi::StartFlash);
  onSignal(control<QRadioButton>(QStringLiteral("optSeleRecord")), &QRadioButton::toggled, this,
           &frmGruppi::StartFlash);
  platform::onClick(this, "cmdElabora", &frmGruppi::cmdElabora_Click);
  platform::onClick(this, "cmdGrafico", &frmGruppi::cmdGrafico_Click);
  platform::onClick(this, "cmdStampa", [this] { Stampa(false); });
  platform::onClick(this, "cmdAnteprima", [this] { Stampa(true); });
  platform::onClick(this, "cmdIdea",
                    [] { verbi().MostraSuggerimenti(QStringLiteral("RAGGRUPP")); });
  platform::onClick(this, "cmdEsci", &frmGruppi::cmdEsci_Click);
}

void frmGruppi::unloaded() {
  verbi().FermaLampeggio();
}

bool frmGruppi::keyDown(int key, Qt::KeyboardModifiers modifiers) {
  return modifiers == Qt::NoModifier && bPremiElabora(*this, key);
}

void frmGruppi::StartFlash() {
  LampeggiaElabora(*this);
}

void frmGruppi::cmdElabora_Click() {
  Puntatore(kClessidra);
  Ricalcola();
  const bool bRighe = gruppi_.rowCount() > 0;
  for (const char* nome : kDaRighe) Control(QString::fromLatin1(nome))->setEnabled(bRighe);
  Puntatore(kPuntatoreNormale);
  verbi().FermaLampeggio();
}

void frmGruppi::Ricalcola() {
  protetto("frmGruppi!ricalcola", [this] {
    grd().tellMissing({});
    gruppi_.clear();
    gruppi_.setHeading(cboCampo().currentText());
    const tRaccolta& raccolta = aRaccolte(iRacCorr);
    QString sRecord = QStringLiteral("SELECT * FROM ") + raccolta.sQuery;
    if (bOpzione("optSeleRecord")) sRecord += raccolta.sFiltro;
    const QString sColonna = sCampoQualificato(iRacCorr, cboCampo().currentData().toInt());
    if (!RicreaQueryDef(QStringLiteral("Q_GRUPPI_STEP1"), sRecord, dbArc) ||
        !RicreaQueryDef(QStringLiteral("Q_GRUPPI_STEP2"), sQueryGruppi(sColonna), dbArc)) {
      grd().tellMissing(sQueryNonScritta());
      return;
    }
    gruppi_.Leggi(
        dbArc->OpenRecordset(QStringLiteral("Q_GRUPPI_STEP3"), store::RecordsetType::Snapshot));
    grd().fitColumns();
  });
}

// Draws the last computation, whatever is chosen now but what is to be compared.
void frmGruppi::cmdGrafico_Click() {
  const bool bQuantita = bOpzione("optQta");
  const QString sTitolo = aRaccolte(iRacCorr).sNome + QStringLiteral(": ") +
                          (bQuantita ? QStringLiteral("quantita' ") : QStringLiteral("valore ")) +
                          QStringLiteral("per ") + cboCampo().currentText();
  const store::RecordsetPtr rs =
      dbArc->OpenRecordset(QStringLiteral("Q_GRUPPI_STEP3"), store::RecordsetType::Snapshot);
  auto& grafico = platform::forms().as<frmGrafico>(QStringLiteral("frmGrafico"));
  const QString sValore = bQuantita ? QStringLiteral("TotQuantita") : QStringLiteral("TotValore");
  if (grafico.bDisegnaGrafico(sTitolo, *rs, QStringLiteral("Desc"), sValore, false)) {
    grafico.ShowModal(this);
  }
}

bool frmGruppi::queryUnload() {
  cmdEsci_Click();
  return false;
}

void frmGruppi::cmdEsci_Click() {
  if (bAnteprimaAperta_) {
    platform::MsgBox(QString::fromLatin1(kAncoraAttiva));
    return;
  }
  gruppi_.clear();
  Unload();
}

void frmGruppi::Stampa(bool bAnteprima) {
  bAnteprimaAperta_ = true;
  const auto chiusa = infine([this] { bAnteprimaAperta_ = false; });
  StampaAnalisi(QStringLiteral("gruppi.rpt"), bAnteprima);
}

void RegistraFormGruppi() {
  platform::forms().add<frmGruppi>(QStringLiteral("frmGruppi"));
}

}  // namespace tavolix
