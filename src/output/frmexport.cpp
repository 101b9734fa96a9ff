#include "output/frmexport.h"

#include <QCheckBox>
#include <QDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QStandardPaths>

#include "core/dialogo.h"
#include "core/errore.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "model/raccolte.h"
#include "output/export_file.h"
#include "platform/common_dialogs.h"
#include "platform/file_system.h"
#include "platform/handlers.h"
#include "platform/progress_window.h"
#include "platform/push_button.h"
#include "platform/screen_room.h"
#include "platform/text_box.h"

namespace tavolix {
namespace {

constexpr int kCharacters = 58;

constexpr platform::ButtonSpec kButtons[] = {
    {"cmdEsporta", "E&sporta"},
    {"cmdEsci", "&Esci", "", "esci"},
    {"cmdAiuto", "", "Guida in linea", "guida"},
};

void addCharacter(QFormLayout& form, const char* name, const char* caption, const char* value) {
  auto* box = new platform::TextBox(form.parentWidget());
  box->setObjectName(QString::fromLatin1(name));
  box->setMaxLength(1);
  box->setText(QString::fromLatin1(value));
  box->setFixedWidth(platform::widthOfCharacters(box, 5));
  form.addRow(QString::fromLatin1(caption), box);
}

void addChoice(QFormLayout& form, const char* name, const char* caption) {
  auto* box = new QCheckBox(QString::fromLatin1(caption), form.parentWidget());
  box->setObjectName(QString::fromLatin1(name));
  box->setChecked(true);
  form.addRow(box);
}

QGroupBox* newOptions(QWidget* window) {
  auto* group = new QGroupBox(QStringLiteral(" Opzioni di esportazione "), window);
  auto* form = new QFormLayout(group);
  addCharacter(*form, "txtSep", "Carattere di separazione campi", ";");
  addCharacter(*form, "txtDel", "Carattere di delimitazione testo", "\"");
  addChoice(*form, "chkPriRig", "La prima riga contiene l'intestazione dei campi");
  addChoice(*form, "chkRadDel", "Raddoppio del delimitatore all'interno del testo");
  return group;
}

QLabel* newExplanation(QWidget* window) {
  auto* label = new QLabel(
      QStringLiteral("Esportazione della raccolta corrente in formato testo delimitato (l'utilizzo "
                     "di questa funzione e' consigliato ad utenti esperti)."),
      window);
  label->setWordWrap(true);
  label->setMinimumWidth(platform::widthOfCharacters(label, kCharacters));
  return label;
}

}  // namespace

frmExport::frmExport()
    : platform::Form(
          QStringLiteral("frmExport"),
          {.title = "Esportazioni", .icon = "copia", .enter = "cmdEsporta", .escape = "cmdEsci"}) {}

QWidget* frmExport::build() {
  auto* window = new QDialog;
  auto* left = new QVBoxLayout;
  left->addWidget(newExplanation(window));
  left->addWidget(newOptions(window));
  left->addStretch(1);
  auto* buttons = new QVBoxLayout;
  for (const platform::ButtonSpec& button : kButtons) {
    buttons->addWidget(platform::newButton(button, window));
  }
  buttons->addStretch(1);
  auto* row = new QHBoxLayout(window);
  row->addLayout(left, 1);
  row->addLayout(buttons);
  return window;
}

void frmExport::loaded() {
  PreparaDialogo(*this);
  platform::onClick(this, "cmdEsporta", &frmExport::cmdEsporta_Click);
  platform::onClick(this, "cmdEsci", [this] { Unload(); });
  focus_.watch(Window());
  Control(QStringLiteral("txtSep"))->setFocus();
}

text_export::Format frmExport::format() {
  const auto character = [this](const char* name) {
    return control<QLineEdit>(QString::fromLatin1(name))->text();
  };
  const auto choice = [this](const char* name) {
    return control<QCheckBox>(QString::fromLatin1(name))->isChecked();
  };
  return {character("txtSep"), character("txtDel"), choice("chkPriRig"), choice("chkRadDel")};
}

void frmExport::cmdEsporta_Click() {
  const QString path = platform::saveFile(
      {.title = QStringLiteral("Salva con nome"),
       .kinds = {{QStringLiteral("Tutti i file (*.*)"), QStringLiteral("*.*")},
                 {QStringLiteral("File di testo (*.txt)"), QStringLiteral("*.txt")}},
       .kind = 2,
       .folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
       .name = aRaccolte(iRacCorr).sNome + QStringLiteral(".txt")});
  if (path.trimmed().isEmpty()) return;
  if (platform::isSameFile(path, sPathArc)) {
    iMsg(QStringLiteral("Questo file e' l'archivio in uso: scegliere un altro nome."), 0);
    return;
  }
  if (!write(path)) return;
  iMsg(QStringLiteral("Esportazione terminata con successo!"), 0);
  Unload();
}

bool frmExport::write(const QString& path) {
  qint64 unread = 0;
  Puntatore(kClessidra);
  const auto failure = fallimentoDi([&] {
    platform::ProgressWindow window(QStringLiteral("Esportazione in corso"), 1000,
                                    QStringLiteral("record"));
    unread = text_export::writeCollection(
        iRacCorr, *dbArc, *rsTab, path, format(),
        [&](qint64 done, qint64 total) { return window.report(done, total); });
  });
  Puntatore(kPuntatoreNormale);
  if (failure && failure->number() == store::failure::kInterrupted) return false;
  if (failure) {
    iMsg(QStringLiteral("Il file %1 e' incompleto e non viene conservato: %2. Un file precedente "
                        "con questo nome resta com'era.")
             .arg(path, failure->description()),
         0);
  } else if (unread > 0) {
    iMsg(QStringLiteral("Il file %1 e' incompleto: %2 record non si leggono e vi mancano.")
             .arg(path)
             .arg(unread),
         0);
  }
  return true;
}

void RegistraFormExport() {
  platform::forms().add<frmExport>(QStringLiteral("frmExport"));
}

}  // namespace tavolix
