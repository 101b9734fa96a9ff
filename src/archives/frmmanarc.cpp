#include "archives/frmmanarc.h"

#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPixmap>
#include <QPushButton>

#include "archives/copie_sicurezza.h"
#include "archives/file_archivio.h"
#include "archives/frmcopiesicurezza.h"
#include "archives/frmsceltadir.h"
#include "archives/manarc_view.h"
#include "archives/nome_archivio.h"
#include "archives/percorsi.h"
#include "archives/rapporto_riparazione.h"
#include "core/dialogo.h"
#include "core/errore.h"
#include "core/modini.h"
#include "core/modutil.h"
#include "platform/file_system.h"
#include "platform/handlers.h"
#include "platform/icons.h"

namespace tavolix {
namespace {

constexpr const char* kOfSelected[] = {"cmdAprire",     "cmdEliminare",   "cmdRinominare",
                                       "cmdCorreggere", "cmdEseguiCopie", "cmdDuplica"};

// The picture that the settings name, else ours.
QIcon iconOfArchives() {
  QString file;
  if (bLeggiStr(QStringLiteral("Icon"), file)) {
    const QPixmap picture(platform::systemPath(sPathCompleto(file)));
    if (!picture.isNull()) return picture;
  }
  return platform::icon(QStringLiteral("archivi"));
}

}  // namespace

frmManArc::frmManArc()
    : platform::Form(QStringLiteral("frmManArc"), {.title = "Gestione archivi",
                                                   .icon = "archivi",
                                                   .enter = "cmdAprire",
                                                   .escape = "cmdEsci"}) {}

QWidget* frmManArc::build() {
  return buildManArcWindow();
}

QListWidget& frmManArc::lstFile() {
  return *control<QListWidget>(QStringLiteral("lstFile"));
}

void frmManArc::loaded() {
  PreparaDialogo(*this);
  connectCommands();
  protetto("frmManArc!frmLoad", [&] {
    FileName_.clear();
    directory_ = sCartellaArchivi();
    extension_ = sEstensioneArchivi();
    int help = 0;
    if (bLeggiInt(QStringLiteral("HelpID"), help)) Window()->setProperty("HelpContextID", help);
    icon_ = iconOfArchives();
    TogliResti(directory_);
    RicaricaFiles();
  });
}

void frmManArc::connectCommands() {
  const std::pair<const char*, void (frmManArc::*)()> commands[] = {
      {"cmdAprire", &frmManArc::cmdAprire_Click},
      {"cmdCreare", &frmManArc::CreaNuovo},
      {"cmdDuplica", &frmManArc::cmdDuplica_Click},
      {"cmdRinominare", &frmManArc::cmdRinominare_Click},
      {"cmdEliminare", &frmManArc::cmdEliminare_Click},
      {"cmdCorreggere", &frmManArc::cmdCorreggere_Click},
      {"cmdEseguiCopie", &frmManArc::cmdEseguiCopie_Click},
      {"cmdRecupero", &frmManArc::cmdRecupero_Click},
      {"cmdDirectory", &frmManArc::cmdDirectory_Click},
      {"cmdImpostazioni", &frmManArc::cmdImpostazioni_Click},
      {"cmdEsci", &frmManArc::cmdEsci_Click},
  };
  for (const auto& [name, procedure] : commands) {
    platform::onClick(this, name, [this, procedure = procedure] { (this->*procedure)(); });
  }
  platform::onCommand(&lstFile(), &QListWidget::itemDoubleClicked, this,
                      &frmManArc::cmdAprire_Click);
  platform::onSignal(&lstFile(), &QListWidget::currentRowChanged, this, [this] {
    if (lstFile().count() != 0) MostraInfoFile();
  });
}

// What the user is to do next: choose, or make the first.
void frmManArc::takeFocus() {
  if (lstFile().count() != 0) {
    lstFile().setFocus();
  } else {
    Control(QStringLiteral("cmdCreare"))->setFocus();
  }
}

void frmManArc::write(const char* label, const QString& text) {
  control<QLabel>(QString::fromLatin1(label))->setText(text);
}

void frmManArc::RicaricaFiles() {
  protetto("frmManArc!RicaricaFiles", [&] {
    write("lblDir", u' ' + directory_);
    fillList();
    showArchives(*Window(), lstFile().count() != 0);
    MostraInfoFile();
    AbilitazionePulsanti();
    takeFocus();
  });
}

// What is selected is told once, at the end.
void frmManArc::fillList() {
  const QSignalBlocker quiet(lstFile());
  lstFile().clear();
  for (const QString& name : sElencoArchivi(directory_, extension_)) {
    lstFile().addItem(new QListWidgetItem(icon_, name));
  }
  if (lstFile().count() != 0) lstFile().setCurrentRow(0);
}

void frmManArc::MostraInfoFile() {
  const QString name = selectedName();
  if (name.isEmpty()) return write("lblFileInfo", {});
  const qint64 length = platform::fileLength(pathOf(name));
  write(
      "lblFileInfo",
      QStringLiteral(" Archivio selezionato: %1 (%2 bytes)").arg(name, QLocale().toString(length)));
}

void frmManArc::AbilitazionePulsanti() {
  for (const char* name : kOfSelected) {
    Control(QString::fromLatin1(name))->setEnabled(lstFile().count() != 0);
  }
}

QString frmManArc::selectedName() {
  const QListWidgetItem* item = lstFile().currentItem();
  return item == nullptr ? QString() : item->text();
}

void frmManArc::cmdAprire_Click() {
  const QString name = selectedName();
  if (name.isEmpty()) return;
  FileName_ = pathOf(name);
  Hide();
}

void frmManArc::CreaNuovo() {
  const QString name =
      sChiediNomeArchivio(directory_, QStringLiteral("Nome del nuovo archivio"), extension_);
  if (name.isEmpty()) return;
  const bool made = protetto("modManArc!CreaNuovo", [&] {
    return CopiaArchivio(sModello(), pathOf(name), QStringLiteral("Nuovo archivio")) ==
           EsitoFile::kFatto;
  });
  if (made) RicaricaFiles();
}

void frmManArc::cmdDuplica_Click() {
  const QString from = selectedName();
  if (from.isEmpty()) return;
  const QString name =
      sChiediNomeArchivio(directory_, QStringLiteral("Nome del nuovo archivio "), extension_);
  if (name.isEmpty()) return;
  const bool made = protetto("modManArc!cmdDuplicare", [&] {
    return CopiaArchivio(pathOf(from), pathOf(name), QStringLiteral("Duplicazione archivio")) ==
           EsitoFile::kFatto;
  });
  if (made) RicaricaFiles();
}

void frmManArc::cmdRinominare_Click() {
  const QString from = selectedName();
  if (from.isEmpty()) return;
  const QString name =
      sChiediNomeArchivio(directory_, QStringLiteral("Nuovo nome arc. ") + from, extension_, from);
  if (name.isEmpty()) return;
  const bool renamed = protetto("modManArc!cmdRinominare", [&] {
    RinominaArchivio(pathOf(from), pathOf(name));
    return true;
  });
  if (renamed) RicaricaFiles();
}

void frmManArc::cmdEliminare_Click() {
  const QString name = selectedName();
  if (name.isEmpty()) return;
  const QString question = QStringLiteral(
      "Sei veramente sicuro di volere eliminare l'archivio %1 con tutti i dati in esso contenuti?");
  if (iMsg(question.arg(name), 2) != 1) return;
  const bool deleted = protetto("modManArc!cmdEliminare", [&] {
    EliminaArchivio(pathOf(name));
    return true;
  });
  if (deleted) RicaricaFiles();
}

void frmManArc::cmdCorreggere_Click() {
  const QString name = selectedName();
  if (name.isEmpty()) return;
  protetto("modManArc!cmdCorreggere", [&] {
    const auto pointer = infine([] { Puntatore(kPuntatoreNormale); });
    Puntatore(kClessidra);
    const auto report = RiparaArchivio(pathOf(name));
    if (!report) return;
    // Whatever comes of the rest.
    const auto telling = infine([&] { DiRiparazione(*report, pathOf(name)); });
    if (ComprimiArchivio(pathOf(name)) != EsitoFile::kFatto) return;
    Puntatore(kPuntatoreNormale);
    iMsg(QStringLiteral("Riparazione e compressione dell'archivio avvenuta con successo!"), 0);
  });
}

void frmManArc::cmdEseguiCopie_Click() {
  const QString name = selectedName();
  if (name.isEmpty()) return;
  FileName_ = pathOf(name);
  FrmCopieSicurezza().SetPath(FileName_);
  FrmCopieSicurezza().ShowModal(this);
  FileName_.clear();
}

void frmManArc::cmdRecupero_Click() {
  if (bRecuperaCopia(directory_, extension_)) RicaricaFiles();
}

void frmManArc::cmdDirectory_Click() {
  directory_ = sScegliDir(*this, directory_);
  TogliResti(directory_);
  RicaricaFiles();
}

void frmManArc::cmdImpostazioni_Click() {
  platform::forms()[QStringLiteral("frmManArcCfg")].ShowModal(this);
}

void frmManArc::cmdEsci_Click() {
  FileName_.clear();
  Hide();
}

bool frmManArc::keyDown(int key, Qt::KeyboardModifiers) {
  if (key != Qt::Key_F2 || !lstFile().hasFocus()) return false;
  runCommand([this] { cmdRinominare_Click(); });
  return true;
}

QString sScegliArchivio() {
  auto& manager = platform::forms().as<frmManArc>(QStringLiteral("frmManArc"));
  manager.Load();
  manager.ShowModal(nullptr);
  QString chosen = manager.FileName();
  manager.Unload();
  return chosen;
}

void RegistraFormManArc() {
  platform::forms().add<frmManArc>(QStringLiteral("frmManArc"));
}

}  // namespace tavolix
