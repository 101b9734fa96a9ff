#include "query/trova_view.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>

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

QGroupBox* newWhere(QWidget* window) {
  auto* where = new QGroupBox(QStringLiteral("Dove cercare:"), window);
  auto* column = new QVBoxLayout(where);
  for (const char* name : {"optRac", "optSubRac"}) {
    auto* option = new QRadioButton(where);
    option->setObjectName(QString::fromLatin1(name));
    column->addWidget(option);
  }
  where->findChild<QRadioButton*>(QStringLiteral("optSubRac"))
      ->setText(QStringLiteral("Nella sotto-raccolta"));
  return where;
}

}  // namespace

void buildTrovaWindow(QWidget& window, const ControlliCondizione& controlli) {
  window.setWindowTitle(QStringLiteral("Trova"));
  window.setWindowIcon(platform::icon(QStringLiteral("trova")));
  auto* column = new QVBoxLayout(&window);
  column->addWidget(newWhere(&window));
  auto* what = new QGroupBox(QStringLiteral("Cosa cercare:"), &window);
  auto* form = new QFormLayout(what);
  form->addRow(QStringLiteral("Campo"), controlli.Campo());
  form->addRow(QStringLiteral("Condizione"), controlli.Condizioni());
  form->addRow(QStringLiteral("Valore"), controlli.Valori());
  column->addWidget(what);
  auto* search = new QHBoxLayout;
  for (const Button& button : kSearch) search->addWidget(newButton(button, &window));
  column->addLayout(search);
  auto* others = new QHBoxLayout;
  others->addStretch(1);
  for (const Button& button : kOthers) others->addWidget(newButton(button, &window));
  column->addStretch(1);
  column->addLayout(others);
}

}  // namespace tavolix
