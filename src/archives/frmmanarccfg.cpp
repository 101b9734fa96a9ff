#include "archives/frmmanarccfg.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <algorithm>

#include "archives/frmsceltadir.h"
#include "archives/manarccfg_view.h"
#include "archives/percorsi.h"
#include "core/dialogo.h"
#include "core/errore.h"
#include "core/modini.h"
#include "core/modutil.h"
#include "platform/file_system.h"
#include "platform/handlers.h"

namespace tavolix {
namespace {

struct Scelta {
  const char* option;
  const char* key;
};

// In the order in which they are read and written.
constexpr Scelta kChoices[] = {
    {"optAsk", "db_AskOpen"}, {"optUltimo", "db_LastOpen"}, {"optApri", "db_DefaultOpen"}};

// With a separator at its end, as it may have been typed without.
QString typedFolder(const QLineEdit& box) {
  return sCartellaMostrata(box.text());
}

}  // namespace

frmManArcCfg::frmManArcCfg()
    : platform::Form(QStringLiteral("frmManArcCfg"), {.title = "Impostazioni manutenzione archivi",
                                                      .icon = "archivi",
                                                      .enter = "cmdConferma",
                                                      .escape = "cmdAnnulla"}) {}

QWidget* frmManArcCfg::build() {
  return buildManArcCfgWindow();
}

QRadioButton& frmManArcCfg::option(const char* name) {
  return *control<QRadioButton>(QString::fromLatin1(name));
}
QLineEdit& frmManArcCfg::box(const char* name) {
  return *control<QLineEdit>(QString::fromLatin1(name));
}
QComboBox& frmManArcCfg::cboArc() {
  return *control<QComboBox>(QStringLiteral("cboArc"));
}

void frmManArcCfg::loaded() {
  PreparaDialogo(*this);
  readSettings();
  followOption();
  for (const Scelta& choice : kChoices) {
    platform::onSignal(&option(choice.option), &QRadioButton::toggled, this,
                       [this] { followOption(); });
  }
  platform::onSignal(control<QCheckBox>(QStringLiteral("chkModPos")), &QCheckBox::toggled, this,
                     [this] { chkModPos_Click(); });
  platform::onClick(this, "cmdDirArc", [this] { cmdDirArc_Click(); });
  platform::onClick(this, "cmdDirCopie", [this] { cmdDirCopie_Click(); });
  platform::onClick(this, "cmdConferma", [this] { cmdConferma_Click(); });
  platform::onClick(this, "cmdAnnulla", [this] { Unload(); });
  focus_.watch(Window());
}

void frmManArcCfg::readSettings() {
  box("txtDirArc").setText(sCartellaArchivi());
  box("txtDirCopie").setText(sCartellaCopie(sCartellaProgramma() + QStringLiteral("\\copie\\")));
  CaricaArchivi();
  for (const Scelta& choice : kChoices) {
    int chosen = 0;
    bLeggiInt(QString::fromLatin1(choice.key), chosen);
    if (chosen != 0) option(choice.option).setChecked(true);
  }
  QString name;
  if (bLeggiStr(QStringLiteral("db_DefaultNameOpen"), name)) {
    SelezionaVoceLista(cboArc(), sNomeArchivio(name));
  }
}

void frmManArcCfg::CaricaArchivi() {
  protetto("frmManArcCfg!CaricaArchivi", [&] {
    cboArc().clear();
    cboArc().addItems(sElencoArchivi(typedFolder(box("txtDirArc")), sEstensioneArchivi()));
    cboArc().setCurrentIndex(cboArc().count() == 0 ? -1 : 0);
  });
}

// Without any choice the Tab key has to come to the first.
void frmManArcCfg::followOption() {
  const bool any = std::any_of(std::begin(kChoices), std::end(kChoices),
                               [this](const Scelta& c) { return option(c.option).isChecked(); });
  if (!any) option(kChoices[0].option).setFocusPolicy(Qt::StrongFocus);
  if (any && !option(kChoices[0].option).isChecked()) {
    option(kChoices[0].option).setFocusPolicy(Qt::ClickFocus);
  }
  cboArc().setEnabled(option("optApri").isChecked());
}

void frmManArcCfg::chkModPos_Click() {
  Control(QStringLiteral("frmPos"))
      ->setEnabled(control<QCheckBox>(QStringLiteral("chkModPos"))->isChecked());
}

void frmManArcCfg::cmdDirArc_Click() {
  box("txtDirArc").setText(sScegliDir(*this, box("txtDirArc").text()));
  CaricaArchivi();
}

void frmManArcCfg::cmdDirCopie_Click() {
  box("txtDirCopie").setText(sScegliDir(*this, box("txtDirCopie").text()));
}

void frmManArcCfg::cmdConferma_Click() {
  const QString archives = typedFolder(box("txtDirArc"));
  ScriviPercorso(QStringLiteral("db_DirArc"), archives);
  ScriviPercorso(QStringLiteral("db_DirCopie"), typedFolder(box("txtDirCopie")));
  for (const Scelta& choice : kChoices) {
    bScriviStr(QString::fromLatin1(choice.key),
               option(choice.option).isChecked() ? QStringLiteral("-1") : QStringLiteral("0"));
  }
  ScriviPercorso(QStringLiteral("db_DefaultNameOpen"), archives + cboArc().currentText());
  Unload();
}

void RegistraFormManArcCfg() {
  platform::forms().add<frmManArcCfg>(QStringLiteral("frmManArcCfg"));
}

}  // namespace tavolix
