#include "archives/frmconfig.h"

#include <QCheckBox>
#include <QDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>

#include "core/dialogo.h"
#include "core/modini.h"
#include "core/modutil.h"
#include "model/raccolte.h"
#include "platform/drop_down.h"
#include "platform/fitting_area.h"
#include "platform/handlers.h"
#include "platform/option_button.h"
#include "platform/push_button.h"

namespace tavolix {
namespace {

struct Opzione {
  const char* name;
  const char* caption;
};

void settings(const char* section) {
  ImpostaFileIni(sPathCompleto(QStringLiteral("tvx.ini")));
  ImpostaSezioneIni(QString::fromLatin1(section));
}

QGroupBox* newStart(QWidget* window) {
  auto* group = new QGroupBox(QStringLiteral(" All'avvio ... "), window);
  auto* cboRac = new platform::DropDown(group);
  cboRac->setObjectName(QStringLiteral("cboRac"));
  auto* label = new QLabel(QStringLiteral("Inizia con la raccolta"), group);
  label->setBuddy(cboRac);
  auto* chkSugg = new QCheckBox(QStringLiteral("Mostra suggerimenti"), group);
  chkSugg->setObjectName(QStringLiteral("chkSugg"));
  auto* row = new QHBoxLayout;
  row->addWidget(label);
  row->addWidget(cboRac, 1);
  auto* column = new QVBoxLayout(group);
  column->addLayout(row);
  column->addWidget(chkSugg);
  return group;
}

QGroupBox* newOptions(const char* title, const Opzione (&options)[2], QWidget* window) {
  auto* group = new QGroupBox(QString::fromLatin1(title), window);
  auto* column = new QVBoxLayout(group);
  for (const Opzione& option : options) {
    column->addWidget(platform::newOption(option.name, QString::fromLatin1(option.caption), group));
  }
  return group;
}

QHBoxLayout* newButtons(QWidget* window) {
  QHBoxLayout* row = rigaConferma(window);
  row->insertWidget(
      0, platform::newButton({"cmdImpostazioniArchivi", "Configura apertura archivi ..."}, window));
  return row;
}

}  // namespace

frmConfig::frmConfig()
    : platform::Form(QStringLiteral("frmConfig"), {.title = "Configurazione",
                                                   .icon = "tavolix",
                                                   .enter = "cmdConferma",
                                                   .escape = "cmdAnnulla"}) {}

QWidget* frmConfig::build() {
  auto* window = new QDialog;
  auto* area = new platform::FittingArea(window);
  auto* content = new QVBoxLayout(area->widget());
  content->setContentsMargins(0, 0, 0, 0);
  content->addWidget(newStart(area->widget()));
  content->addWidget(newOptions(
      " Visualizzazione elenco record ",
      {{"optExtMax", "Estensione massima "}, {"optExtMin", "Estensione minima"}}, area->widget()));
  content->addWidget(newOptions(" Posizione finestra principale ",
                                {{"optPosUlt", "Come da ultimo utilizzo"},
                                 {"optPosPred", "Come da impostazione predefinita"}},
                                area->widget()));
  content->addStretch(1);
  auto* column = new QVBoxLayout(window);
  column->addWidget(area, 1);
  column->addLayout(newButtons(window));
  platform::fitToScreen(*window);
  return window;
}

QRadioButton& frmConfig::option(const char* name) {
  return *control<QRadioButton>(QString::fromLatin1(name));
}
QComboBox& frmConfig::cboRac() {
  return *control<QComboBox>(QStringLiteral("cboRac"));
}
QCheckBox& frmConfig::chkSugg() {
  return *control<QCheckBox>(QStringLiteral("chkSugg"));
}

void frmConfig::loaded() {
  PreparaDialogo(*this);
  for (int i = 0; i < kRaccoltePrincipali; ++i) cboRac().addItem(aRaccolte(i).sNome);
  readSettings();
  platform::onClick(this, "cmdConferma", [this] { cmdConferma_Click(); });
  platform::onClick(this, "cmdAnnulla", [this] { Unload(); });
  platform::onClick(this, "cmdImpostazioniArchivi", [this] { cmdImpostazioniArchivi_Click(); });
  focus_.watch(Window());
}

void frmConfig::readSettings() {
  settings("Application");
  int value = 0;
  bLeggiInt(QStringLiteral("RacAvvio"), value);
  cboRac().setCurrentIndex(value < kRaccoltePrincipali ? std::max(value, 0) : 0);
  // What the program does where the settings say nothing.
  option("optExtMax").setChecked(true);
  option("optPosPred").setChecked(true);
  readOptions("ElencoExt", "optExtMin", "optExtMax");
  readOptions("Win_RePos", "optPosUlt", "optPosPred");
  if (bLeggiInt(QStringLiteral("SuggAvvio"), value)) chkSugg().setChecked(value == 1);
}

// A value that is neither 0 nor -1 is both; the second option stands then.
void frmConfig::readOptions(const char* key, const char* notZero, const char* notMinusOne) {
  int value = 0;
  if (!bLeggiInt(QString::fromLatin1(key), value)) return;
  if (value != 0) option(notZero).setChecked(true);
  if (value != -1) option(notMinusOne).setChecked(true);
}

void frmConfig::write(const char* key, const QString& value) {
  bScriviStr(QString::fromLatin1(key), value);
}

void frmConfig::cmdConferma_Click() {
  settings("Application");
  const auto truth = [this](const char* name) {
    return option(name).isChecked() ? QStringLiteral("-1") : QStringLiteral("0");
  };
  write("RacAvvio", QString::number(cboRac().currentIndex()));
  write("ElencoExt", truth("optExtMin"));
  write("Win_RePos", truth("optPosUlt"));
  write("SuggAvvio", chkSugg().isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
  Unload();
}

void frmConfig::cmdImpostazioniArchivi_Click() {
  settings("ManArc");
  platform::forms()[QStringLiteral("frmManArcCfg")].ShowModal(this);
}

void RegistraFormConfig() {
  platform::forms().add<frmConfig>(QStringLiteral("frmConfig"));
}

}  // namespace tavolix
