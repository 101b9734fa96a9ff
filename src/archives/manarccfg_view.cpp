#include "archives/manarccfg_view.h"

#include <QCheckBox>
#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "core/dialogo.h"
#include "platform/drop_down.h"
#include "platform/fitting_area.h"
#include "platform/option_button.h"
#include "platform/push_button.h"
#include "platform/screen_reader.h"
#include "platform/screen_room.h"
#include "platform/text_box.h"

namespace tavolix {
namespace {

constexpr int kArchiveCharacters = 34;
constexpr int kFolderCharacters = 50;

struct Folder {
  const char* label;
  const char* box;
  platform::ButtonSpec button;
  const char* purpose;  // of the button, which looks like the other one
};

constexpr Folder kFolders[] = {
    {"Posizione predefinita degli archivi",
     "txtDirArc",
     {"cmdDirArc", "Directory..."},
     "Directory degli archivi"},
    {"Posizione predefinita delle copie di sicurezza",
     "txtDirCopie",
     {"cmdDirCopie", "Directory..."},
     "Directory delle copie di sicurezza"},
};

QGroupBox* newStart(QWidget* window) {
  auto* group = new QGroupBox(QStringLiteral(" All'avvio "), window);
  auto* cboArc = new platform::DropDown(group);
  cboArc->setObjectName(QStringLiteral("cboArc"));
  platform::nameControl(*cboArc, QStringLiteral("Archivio da aprire"));
  cboArc->setMinimumWidth(platform::widthOfCharacters(cboArc, kArchiveCharacters));
  cboArc->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  cboArc->setEnabled(false);
  auto* grid = new QGridLayout(group);
  grid->addWidget(
      platform::newOption("optAsk", QStringLiteral("Richiedere l'archivio da aprire"), group), 0, 0,
      1, 2);
  grid->addWidget(platform::newOption(
                      "optUltimo", QStringLiteral("Aprire l'archivio usato l'ultima volta"), group),
                  1, 0, 1, 2);
  grid->addWidget(platform::newOption("optApri", QStringLiteral("Aprire l'archivio: "), group), 2,
                  0);
  grid->addWidget(cboArc, 2, 1);
  grid->setColumnStretch(1, 1);
  QWidget::setTabOrder(group->findChild<QWidget*>(QStringLiteral("optApri")), cboArc);
  return group;
}

QGroupBox* newFolders(QWidget* window) {
  auto* group = new QGroupBox(QStringLiteral(" Directory predefinite "), window);
  group->setObjectName(QStringLiteral("frmPos"));
  auto* grid = new QGridLayout(group);
  int row = 0;
  for (const Folder& folder : kFolders) {
    auto* box = new platform::TextBox(group);
    box->setObjectName(QString::fromLatin1(folder.box));
    box->setMinimumWidth(platform::widthOfCharacters(box, kFolderCharacters));
    auto* label = new QLabel(QString::fromLatin1(folder.label), group);
    label->setBuddy(box);
    auto* button = platform::newButton(folder.button, group);
    button->setAccessibleDescription(QString::fromLatin1(folder.purpose));
    grid->addWidget(label, row++, 0, 1, 2);
    grid->addWidget(box, row, 0);
    grid->addWidget(button, row++, 1);
  }
  grid->setColumnStretch(0, 1);
  group->setEnabled(false);
  return group;
}

}  // namespace

QWidget* buildManArcCfgWindow() {
  auto* window = new QDialog;
  auto* area = new platform::FittingArea(window);
  auto* content = new QVBoxLayout(area->widget());
  content->setContentsMargins(0, 0, 0, 0);
  content->addWidget(newStart(area->widget()));
  auto* chkModPos = new QCheckBox(
      QStringLiteral(
          "Modificare la posizione degli archivi (funzione consigliata ad utenti esperti)"),
      area->widget());
  chkModPos->setObjectName(QStringLiteral("chkModPos"));
  content->addWidget(chkModPos);
  content->addWidget(newFolders(area->widget()));
  content->addStretch(1);
  auto* column = new QVBoxLayout(window);
  column->addWidget(area, 1);
  column->addLayout(rigaConferma(window));
  platform::fitToScreen(*window);
  return window;
}

}  // namespace tavolix
