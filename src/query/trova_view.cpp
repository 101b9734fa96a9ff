#include "query/trova_view.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <span>

#include "platform/drop_down.h"
#include "platform/option_button.h"
#include "platform/push_button.h"
#include "platform/screen_reader.h"
#include "query/controlli_condizione.h"

namespace tavolix {
namespace {

using platform::ButtonSpec;

constexpr ButtonSpec kSearch[] = {
    {"CSCmdBtn1", "", "Cerca il primo", "primo"},
    {"cmdPrecedente", "&Prec.  ", "Cerca il precedente", "precedente", "Maiusc+F3"},
    {"cmdSuccessivo", "  &Succ.", "Cerca il successivo", "successivo", "F3"},
    {"CSCmdBtn2", "", "Cerca l'ultimo", "ultimo"},
};
constexpr ButtonSpec kOthers[] = {
    {"cmdAiuto", "Aiuto      ", "", "guida"},
    {"cmdEsci", "&Esci    ", "", "esci"},
};

QHBoxLayout* newRow(std::span<const ButtonSpec> buttons, QWidget* window) {
  auto* row = new QHBoxLayout;
  for (const ButtonSpec& button : buttons) {
    QPushButton* made = platform::newButton(button, window);
    // The captions are too short for a screen reader.
    if (*button.tip != '\0') platform::nameControl(*made, QString::fromUtf8(button.tip));
    row->addWidget(made);
  }
  return row;
}

QVBoxLayout* columnOf(const QWidget& window) {
  return static_cast<QVBoxLayout*>(window.layout());
}

}  // namespace

void addWhere(QWidget& window) {
  auto* column = new QVBoxLayout(&window);
  auto* where = new QGroupBox(QStringLiteral("Dove cercare:"), &window);
  auto* options = new QVBoxLayout(where);
  for (const char* name : {"optRac", "optSubRac"}) {
    options->addWidget(platform::newOption(name, QStringLiteral("Nella sotto-raccolta"), where));
  }
  column->addWidget(where);
}

QGroupBox* addWhat(QWidget& window) {
  auto* what = new QGroupBox(QStringLiteral("Cosa cercare:"), &window);
  columnOf(window)->addWidget(what);
  return what;
}

void fillWhat(QGroupBox& what, const ControlliCondizione& controlli) {
  auto* form = new QFormLayout(&what);
  form->addRow(QStringLiteral("Campo"), controlli.Campo());
  form->addRow(QStringLiteral("Condizione"), controlli.Condizioni());
  form->addRow(QStringLiteral("Valore"), controlli.Valori());
}

void addSearchButtons(QWidget& window) {
  QVBoxLayout* column = columnOf(window);
  column->addLayout(newRow(kSearch, &window));
  // Its arrow points to the right, from there.
  window.findChild<QPushButton*>(QStringLiteral("cmdSuccessivo"))
      ->setLayoutDirection(Qt::RightToLeft);
  column->addStretch(1);
  QHBoxLayout* others = newRow(kOthers, &window);
  others->insertStretch(0, 1);
  column->addLayout(others);
}

}  // namespace tavolix
