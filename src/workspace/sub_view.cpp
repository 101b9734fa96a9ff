#include "workspace/sub_view.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "model/raccolte.h"
#include "platform/data_control.h"
#include "platform/data_grid.h"
#include "platform/push_button.h"
#include "platform/screen_room.h"
#include "workspace/form_pages.h"

namespace tavolix {
namespace {

constexpr QSize kCharacters(120, 27);  // of the window
constexpr QSize kLeastList(220, 150);
constexpr int kPanelCharacters = 50;

using platform::ButtonSpec;
using platform::newButton;

constexpr ButtonSpec kRecordButtons[] = {
    {"cmdAddNew", "&Nuovo     ", "Crea una nuova voce nell'elenco", "nuovo"},
    {"cmdDuplica", "&Duplica   ", "Duplica la voce corrente", "duplica"},
    {"cmdCancella", "&Cancella    ", "Elimina la voce correntemente selezionata", "cancella"},
};
constexpr ButtonSpec kOtherButtons[] = {
    {"cmdAiuto", "Aiuto", "", "guida"},
    {"cmdEsci", "&Esci      ", "", "esci"},
};

QWidget* newList(platform::DataControl* dbSubCurr, QWidget* parent) {
  auto* panel = new QWidget(parent);
  panel->setObjectName(QStringLiteral("SSPanel1"));
  auto* grdSub = new platform::DataGrid(panel);
  grdSub->setObjectName(QStringLiteral("grdSub"));
  grdSub->SetDataSource(dbSubCurr);
  auto* layout = new QHBoxLayout(panel);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(grdSub);
  panel->setMinimumSize(kLeastList);
  return panel;
}

// The panels lie upon each other; panRecord(0) marks their place. An empty page comes first, for
// while none of them is set up.
QWidget* newPanels(platform::DataControl& dbSubCurr, QWidget* parent) {
  auto* place = new QWidget(parent);
  place->setObjectName(QStringLiteral("panRecord(0)"));
  auto* stack = new QStackedLayout(place);
  stack->addWidget(new QWidget(place));
  ControlNumbers numbers;
  for (int iSub = kRaccoltePrincipali; iSub < kRaccolte; ++iSub) {
    stack->addWidget(scrolling(buildPanel(iSub, dbSubCurr, numbers, place), place));
  }
  place->setMinimumWidth(platform::widthOfCharacters(place, kPanelCharacters));
  return place;
}

QWidget* newButtons(QWidget* parent) {
  auto* strip = new QWidget(parent);
  auto* row = new QHBoxLayout(strip);
  row->setContentsMargins(0, 0, 0, 0);
  auto* panCrea = new QWidget(strip);
  panCrea->setObjectName(QStringLiteral("panCrea"));
  auto* records = new QHBoxLayout(panCrea);
  records->setContentsMargins(0, 0, 0, 0);
  for (const ButtonSpec& button : kRecordButtons) records->addWidget(newButton(button, panCrea));
  row->addWidget(panCrea);
  row->addStretch(1);
  for (const ButtonSpec& button : kOtherButtons) row->addWidget(newButton(button, strip));
  return strip;
}

}  // namespace

QWidget* buildSubWindow() {
  auto* window = new QDialog;
  auto* dbSubCurr = new platform::DataControl(window);
  dbSubCurr->setObjectName(QStringLiteral("dbSubCurr"));
  auto* both = new QSplitter(window);
  both->setChildrenCollapsible(false);
  both->addWidget(newList(dbSubCurr, both));
  both->addWidget(newPanels(*dbSubCurr, both));
  both->setStretchFactor(0, 1);
  auto* column = new QVBoxLayout(window);
  column->addWidget(both, 1);
  column->addWidget(newButtons(window));
  const QSize wanted(platform::widthOfCharacters(window, kCharacters.width()),
                     window->fontMetrics().lineSpacing() * kCharacters.height());
  window->resize(wanted.boundedTo(platform::roomOnScreen()));
  return window;
}

}  // namespace tavolix
