#include "query/trova_view.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <span>

#include "platform/drop_down.h"
#include "platform/icons.h"
#include "query/controlli_condizione.h"

namespace tavolix {
namespace {

struct Button {
  const char* name;
  const char* caption;
  const char* tip;
};

constexpr Button kSearch[] = {
    {"CSCmdBtn1", "|<", "Cerca il primo"},
    {"cmdPrecedente", "&Prec.  ", "Cerca il precedente"},
    {"cmdSuccessivo", "  &Succ.", "Cerca il successivo"},
    {"CSCmdBtn2", ">|", "Cerca l'ultimo"},
};
constexpr Button kOthers[] = {
    {"cmdAiuto", "Aiuto      ", ""},
    {"cmdEsci", "&Esci    ", ""},
};

QPushButton* newButton(const Button& button, QWidget* window) {
  auto* push = new QPushButton(QString::fromUtf8(button.caption), window);
  push->setObjectName(QString::fromLatin1(button.name));
  push->setToolTip(QString::fromUtf8(button.tip));
  push->setAccessibleName(QString::fromUtf8(button.tip));
  push->setAutoDefault(false);
  return push;
}

QHBoxLayout* newRow(std::span<const Button> buttons, QWidget* window) {
  auto* row = new QHBoxLayout;
  for (const Button& button : buttons) row->addWidget(newButton(button, window));
  return row;
}

QVBoxLayout* columnOf(const QWidget& window) {
  return static_cast<QVBoxLayout*>(window.layout());
}

}  // namespace

void addWhere(QWidget& window) {
  window.setWindowTitle(QStringLiteral("Trova"));
  window.setWindowIcon(platform::icon(QStringLiteral("trova")));
  auto* column = new QVBoxLayout(&window);
  auto* where = new QGroupBox(QStringLiteral("Dove cercare:"), &window);
  auto* options = new QVBoxLayout(where);
  for (const char* name : {"optRac", "optSubRac"}) {
    auto* option = new QRadioButton(QStringLiteral("Nella sotto-raccolta"), where);
    option->setObjectName(QString::fromLatin1(name));
    options->addWidget(option);
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
  column->addStretch(1);
  QHBoxLayout* others = newRow(kOthers, &window);
  others->insertStretch(0, 1);
  column->addLayout(others);
}

}  // namespace tavolix
