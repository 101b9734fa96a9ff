#include "workspace/tab_view.h"

#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "platform/data_control.h"
#include "platform/data_grid.h"
#include "platform/form.h"
#include "platform/push_button.h"
#include "platform/screen_room.h"
#include "platform/text_box.h"

namespace tavolix {
namespace {

constexpr QSize kLeastList(260, 150);  // pixels
constexpr int kListHeight = 340;

using platform::ButtonSpec;
using platform::newButton;

constexpr ButtonSpec kAdd = {"cmdAdd", "&Aggiungi", "Aggiungi una nuova voce in tabella"};
// From the top down; a gap parts the last two from the others.
constexpr ButtonSpec kButtons[] = {
    {"cmdElimina", "E&limina", "Cancellazione della voce selezionata nell'elenco"},
    {"cmdPredefinito", "&Predefinito", "Imposta valore predifito nella creazione di nuovi record"},
    {"cmdNoPredefinito", "&No predef.", ""},
    {nullptr, nullptr},
    {"cmdAiuto", "Aiuto", ""},
    {"cmdEsci", "&Esci", ""},
};

platform::DataGrid* newList(platform::DataControl* dbTab, QWidget* parent) {
  auto* grd = new platform::DataGrid(parent);
  grd->setObjectName(QStringLiteral("grd"));
  grd->setAccessibleName(QStringLiteral("Elenco voci"));
  grd->SetDataSource(dbTab);
  grd->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  const int columns = platform::toPixels(kWidthVoce + kWidthPred);
  const int frame = 2 * grd->frameWidth() + grd->verticalScrollBar()->sizeHint().width();
  grd->setMinimumSize(kLeastList);
  grd->resize(columns + frame, kListHeight);
  return grd;
}

QVBoxLayout* newButtons(QWidget* window) {
  auto* buttons = new QVBoxLayout;
  for (const ButtonSpec& button : kButtons) {
    if (button.name == nullptr) {
      buttons->addStretch(1);
    } else {
      buttons->addWidget(newButton(button, window));
    }
  }
  return buttons;
}

}  // namespace

QWidget* buildTabWindow() {
  auto* window = new QDialog;
  auto* dbTab = new platform::DataControl(window);
  dbTab->setObjectName(QStringLiteral("dbTab"));
  // Made in the order of the Tab key.
  auto* txtAdd = new platform::TextBox(window);
  txtAdd->setObjectName(QStringLiteral("txtAdd"));
  txtAdd->setToolTip(QStringLiteral("Digitare la voce da aggiungere all'elenco"));
  auto* label = new QLabel(QStringLiteral("Aggiungere una voce:"), window);
  label->setBuddy(txtAdd);
  QPushButton* cmdAdd = newButton(kAdd, window);
  auto* layout = new QGridLayout(window);
  layout->addWidget(label, 0, 0);
  layout->addWidget(txtAdd, 1, 0);
  layout->addWidget(cmdAdd, 1, 1);
  platform::DataGrid* grd = newList(dbTab, window);
  const QSize list = grd->size();
  layout->addWidget(grd, 2, 0);
  layout->addLayout(newButtons(window), 2, 1);
  layout->setColumnStretch(0, 1);
  layout->setRowStretch(2, 1);
  const QSize wanted = layout->minimumSize() - grd->minimumSize() + list;
  window->resize(wanted.boundedTo(platform::roomOnScreen()));
  return window;
}

}  // namespace tavolix
