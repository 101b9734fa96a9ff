#include "archives/frmcopiesicurezza.h"

#include <QDialog>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "archives/copie_sicurezza.h"
#include "archives/file_archivio.h"
#include "archives/percorsi.h"
#include "archives/unita.h"
#include "core/dialogo.h"
#include "core/errore.h"
#include "core/modini.h"
#include "core/modutil.h"
#include "platform/common_dialogs.h"
#include "platform/file_system.h"
#include "platform/handlers.h"
#include "platform/option_button.h"
#include "platform/push_button.h"
#include "platform/screen_room.h"

namespace tavolix {
namespace {

constexpr int kCharacters = 46;
constexpr const char* kDrives[] = {"A:", "B:"};

constexpr platform::ButtonSpec kButtons[] = {
    {"cmdCopiaAutomatica", "Copia &automatica su unita' dischetti corrente"},
    {"cmdCopieSicurezzaHD", "Copia autom. su &disco fisso in: "},
    {"cmdManuale", "Esegui copia &manuale"},
    {"cmdEsci", "&Esci"},
};

QString optionName(int index) {
  return QStringLiteral("optDrive(%1)").arg(index);
}

// The label's letter leads to the option that is chosen.
QWidget* newDrives(QWidget* window) {
  auto* group = new QWidget(window);
  auto* label = new QLabel(QStringLiteral("&Unita' dischetti corrente:"), group);
  auto* row = new QHBoxLayout(group);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(label);
  for (int i = 0; i < 2; ++i) {
    QRadioButton* option = platform::newOption(optionName(i).toLatin1().constData(),
                                               QString::fromLatin1(kDrives[i]), group);
    option->setAccessibleDescription(QStringLiteral("Unita' dischetti corrente"));
    QObject::connect(option, &QRadioButton::toggled, label, [label, option](bool chosen) {
      if (chosen) label->setBuddy(option);
    });
    row->addWidget(option);
  }
  row->addStretch(1);
  return group;
}

// A long folder is shown without its middle, and whole as a tool tip.
void showFolder(QPushButton& button, const QString& folder) {
  const QString caption = button.text();
  const QString shown = button.fontMetrics().elidedText(
      folder, Qt::ElideMiddle, platform::widthOfCharacters(&button, kCharacters));
  platform::setCaption(button, caption + QString(shown).replace(u'&', QStringLiteral("&&")));
  button.setAccessibleName(QString(caption).remove(u'&') + folder);
  if (shown != folder) button.setToolTip(folder);
}

}  // namespace

frmCopieSicurezza::frmCopieSicurezza()
    : platform::Form(QStringLiteral("frmCopieSicurezza"), {.title = "Copie di sicurezza",
                                                           .icon = "copia",
                                                           .enter = "cmdCopieSicurezzaHD",
                                                           .escape = "cmdEsci"}) {}

frmCopieSicurezza& FrmCopieSicurezza() {
  return platform::forms().as<frmCopieSicurezza>(QStringLiteral("frmCopieSicurezza"));
}

QWidget* frmCopieSicurezza::build() {
  auto* window = new QDialog;
  auto* column = new QVBoxLayout(window);
  column->addWidget(newDrives(window));
  for (const platform::ButtonSpec& button : kButtons) {
    column->addWidget(platform::newButton(button, window));
  }
  return window;
}

void frmCopieSicurezza::loaded() {
  PreparaDialogo(*this);
  const Unita drives = AggiornaUnita(sPathCompleto(QStringLiteral("tvx.ini")));
  const int chosen = drives.sA.isEmpty() && !drives.sB.isEmpty() ? 1 : 0;
  control<QRadioButton>(optionName(chosen))->setChecked(true);
  TogliResti(sCartellaCopie(QStringLiteral(".\\copie")));
  showFolder(*control<QPushButton>(QStringLiteral("cmdCopieSicurezzaHD")),
             sCartellaCopie(QStringLiteral("A:\\")));
  platform::onClick(this, "cmdCopiaAutomatica", [this] { cmdCopiaAutomatica_Click(); });
  platform::onClick(this, "cmdCopieSicurezzaHD", [this] { cmdCopieSicurezzaHD_Click(); });
  platform::onClick(this, "cmdManuale", [this] { cmdManuale_Click(); });
  platform::onClick(this, "cmdEsci", [this] { Unload(); });
  Control(QStringLiteral("cmdCopieSicurezzaHD"))->setFocus();
}

void frmCopieSicurezza::cmdCopiaAutomatica_Click() {
  const bool first = control<QRadioButton>(optionName(0))->isChecked();
  EseguiCopiaSicur(sPath_, QLatin1String(kDrives[first ? 0 : 1]) + u'\\' + sNomeArchivio(sPath_),
                   true);
  Unload();
}

void frmCopieSicurezza::cmdCopieSicurezzaHD_Click() {
  protetto("frmCopieSicurezza!cmdCopieSicurezzHD", [&] {
    const QString folder = sCartellaCopie(QStringLiteral(".\\copie"));
    RichiediDisco(folder);
    if (!platform::folderExists(folder)) platform::createFolder(folder);
    EseguiCopiaSicur(sPath_, folder + sNomeArchivio(sPath_), true);
    Unload();
  });
}

void frmCopieSicurezza::cmdManuale_Click() {
  QString extension;
  if (!bLeggiStr(QStringLiteral("db_ext"), extension)) extension = QStringLiteral(".*");
  platform::FileRequest request;
  request.title = QStringLiteral("Copia di sicurezza");
  request.kinds = TipiDiFile(extension);
  request.kind = 2;
  request.asksToReplace = false;
  const QString copies = sCartellaCopie({});
  request.folder = platform::folderExists(copies) ? copies : QDir::homePath();
  EseguiCopiaSicur(sPath_, platform::saveFile(request), true);
  Unload();
}

void RegistraFormCopieSicurezza() {
  platform::forms().add<frmCopieSicurezza>(QStringLiteral("frmCopieSicurezza"));
}

}  // namespace tavolix
