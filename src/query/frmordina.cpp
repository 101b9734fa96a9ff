#include "query/frmordina.h"

#include <QComboBox>
#include <QDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>

#include "core/dialogo.h"
#include "core/modcuore.h"
#include "core/modutil.h"
#include "core/verbi.h"
#include "model/raccolte.h"
#include "platform/data_grid.h"
#include "platform/drop_down.h"
#include "platform/handlers.h"
#include "platform/option_button.h"
#include "platform/push_button.h"

namespace tavolix {
namespace {

constexpr int kCampiOrdine = 3;
constexpr int kCharacters = 28;
constexpr const char* kLabels[kCampiOrdine] = {"Ordinare l'elenco per:", "poi per:", "poi per:"};
// What tells the boxes apart without the eye.
constexpr const char* kDescriptions[kCampiOrdine] = {"Prima colonna", "Seconda colonna",
                                                     "Terza colonna"};

constexpr platform::ButtonSpec kButtons[] = {
    {"cmdElabora", "&Ordina   ", "", "ordina"},
    {"cmdEsci", "&Esci    ", "", "esci"},
    {"cmdIdea", "", "Suggerimenti...", "suggerimenti"},
    {"cmdAiuto", "", "Guida in linea", "guida"},
};

QVBoxLayout* newButtons(QWidget* window) {
  auto* column = new QVBoxLayout;
  for (const platform::ButtonSpec& button : kButtons) {
    column->addWidget(platform::newButton(button, window));
  }
  column->addStretch(1);
  return column;
}

QGroupBox* newDirections(QWidget* window) {
  auto* group = new QGroupBox(QStringLiteral("In modo"), window);
  auto* row = new QHBoxLayout(group);
  for (const auto& [name, caption] :
       {std::pair{"optCresc", "Crescente"}, std::pair{"optDecr", "Decrescente"}}) {
    row->addWidget(platform::newOption(name, QString::fromLatin1(caption), group));
  }
  group->findChild<QRadioButton*>(QStringLiteral("optCresc"))->setChecked(true);
  return group;
}

platform::DataGrid& elenco() {
  return *platform::forms()[QStringLiteral("frmGrid")].control<platform::DataGrid>(
      QStringLiteral("grd"));
}

}  // namespace

QString sClausolaOrdine(const QStringList& campi, bool bDecrescente) {
  QString clausola;
  for (const QString& campo : campi) {
    if (campo.isEmpty()) continue;
    clausola += clausola.isEmpty() ? QStringLiteral(" ORDER BY ") : QStringLiteral(", ");
    clausola += campo;
    if (bDecrescente) clausola += QStringLiteral(" DESC ");
  }
  return clausola;
}

frmOrdina::frmOrdina()
    : platform::Form(QStringLiteral("frmOrdina"), {.title = "Ordine elenco",
                                                   .icon = "ordina",
                                                   .enter = "cmdElabora",
                                                   .escape = "cmdEsci"}) {}

QWidget* frmOrdina::build() {
  auto* window = new QDialog;
  auto* form = new QFormLayout;
  for (int i = 0; i < kCampiOrdine; ++i) {
    auto* combo = new platform::DropDown(window);
    combo->setObjectName(QStringLiteral("cboCampo(%1)").arg(i));
    combo->setAccessibleDescription(QString::fromLatin1(kDescriptions[i]));
    combo->setMinimumWidth(combo->fontMetrics().horizontalAdvance(u'0') * kCharacters);
    form->addRow(QString::fromLatin1(kLabels[i]), combo);
  }
  auto* left = new QVBoxLayout;
  left->addLayout(form);
  left->addWidget(newDirections(window));
  left->addStretch(1);
  auto* row = new QHBoxLayout(window);
  row->addLayout(left, 1);
  row->addLayout(newButtons(window));
  return window;
}

QComboBox& frmOrdina::cboCampo(int indice) {
  return *control<QComboBox>(QStringLiteral("cboCampo(%1)").arg(indice));
}

void frmOrdina::loaded() {
  PreparaDialogo(*this);
  for (int i = 0; i < kCampiOrdine; ++i) {
    cboCampo(i).addItem({}, QString());
    for (int column = 0; column < elenco().ColumnCount(); ++column) {
      const platform::GridColumn shown = elenco().Column(column);
      cboCampo(i).addItem(shown.caption, shown.dataField);
    }
  }
  platform::onClick(this, "cmdElabora", &frmOrdina::cmdElabora_Click);
  platform::onClick(this, "cmdEsci", [this] { Unload(); });
  platform::onClick(this, "cmdIdea", [] { verbi().MostraSuggerimenti(QStringLiteral("ORDINE")); });
  focus_.watch(Window());
  cboCampo(0).setFocus();
}

void frmOrdina::cmdElabora_Click() {
  QStringList campi;
  for (int i = 0; i < kCampiOrdine; ++i) campi << cboCampo(i).currentData().toString();
  const bool decrescente = control<QRadioButton>(QStringLiteral("optDecr"))->isChecked();
  aRaccolte(iRacCorr).sOrdine = sClausolaOrdine(campi, decrescente);
  DBRefresh();
  Unload();
}

void RegistraFormOrdina() {
  platform::forms().add<frmOrdina>(QStringLiteral("frmOrdina"));
}

}  // namespace tavolix
