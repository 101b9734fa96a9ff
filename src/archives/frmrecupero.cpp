#include "archives/frmrecupero.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "archives/dialogo.h"
#include "archives/file_archivio.h"
#include "core/errore.h"
#include "core/modini.h"
#include "core/modutil.h"
#include "platform/icons.h"
#include "platform/path_label.h"
#include "platform/push_button.h"
#include "platform/screen_room.h"

namespace tavolix {
namespace {

constexpr int kCharacters = 76;

constexpr const char* kAdvice =
    "A causa di un problema esterno non e' possibile leggere un file di archivio."
    " Per recuperare il file, seguire le seguenti procedure:\r"
    " 1 - Premere il pulsante 'USCITA DA PROGRAMMA' e riavviare Windows\r"
    " Se il problema persiste...\r"
    " 2 - Premere il pulsante 'TENTATIVO DI RECUPERO...'\r"
    " Se il problema persiste...\r"
    " 3 - Ripristinare una copia di sicurezza dell'archivio\r"
    " Se il problema persiste...\r"
    " 4 - Installare nuovamente il programma";

QLabel* newText(const char* name, const char* text, QWidget* window) {
  auto* label = new QLabel(QString::fromUtf8(text), window);
  label->setObjectName(QString::fromLatin1(name));
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

}  // namespace

frmRecupero::frmRecupero() : platform::Form(QStringLiteral("frmRecupero")) {}

QWidget* frmRecupero::build() {
  auto* window = new QDialog;
  window->setWindowTitle(QStringLiteral("Recupero archivio"));
  window->setWindowIcon(platform::windowIcon(QStringLiteral("archivi")));
  auto* lblDsc = newText("lblDsc", "Descrizione del problema", window);
  lblDsc->setMinimumWidth(platform::widthOfCharacters(lblDsc, kCharacters));
  auto* lblio = new platform::PathLabel(window);
  lblio->setObjectName(QStringLiteral("lblio"));
  auto* column = new QVBoxLayout(window);
  column->addWidget(lblDsc);
  column->addWidget(lblio);
  column->addSpacing(8);
  column->addWidget(newText("lblCons", "Consiglio:", window));
  column->addStretch(1);
  column->addWidget(platform::newButton(
      {"cmdRecupero", "&Tentativo di recupero automatico dell'archivio"}, window));
  column->addWidget(platform::newButton({"cmdUscita", "&Uscita dal programma"}, window));
  return window;
}

void frmRecupero::loaded() {
  // Before the window is shown, which takes its size from it.
  control<QLabel>(QStringLiteral("lblCons"))
      ->setText(QString::fromUtf8(kAdvice).replace(u'\r', u'\n'));
  Collega(*this, "cmdRecupero", [this] { cmdRecupero_Click(); });
  Collega(*this, "cmdUscita", [this] { Unload(); });
}

void frmRecupero::activated() {
  ChiediArchivioAllAvvio();
}

void frmRecupero::Mostra(const QString& sDescrizione, const QString& sPath) {
  control<QLabel>(QStringLiteral("lblDsc"))->setText(sDescrizione);
  control<QLabel>(QStringLiteral("lblio"))->setText(sPath);
  Control(QStringLiteral("cmdUscita"))->setFocus();
  ShowModal(nullptr);
}

void frmRecupero::cmdRecupero_Click() {
  protetto("frmRecupero!cmdRecupero", [&] {
    Puntatore(kClessidra);
    RiparaArchivio(control<QLabel>(QStringLiteral("lblio"))->text());
    Puntatore(kPuntatoreNormale);
    iMsg(QStringLiteral("Recupero dati terminato: ora bisogna riavviare il programma."), 0);
  });
  Unload();
}

bool frmRecupero::keyDown(int key, Qt::KeyboardModifiers) {
  return bTastoDialogo(*this, key, "cmdUscita", "cmdUscita");
}

void ChiediArchivioAllAvvio() {
  bScriviStr(QStringLiteral("db_AskOpen"), QStringLiteral("-1"));
  bScriviStr(QStringLiteral("db_LastOpen"), QStringLiteral("0"));
  bScriviStr(QStringLiteral("db_DefaultOpen"), QStringLiteral("0"));
}

void RecuperaArchivio(const QString& sDescrizione, const QString& sPath) {
  static_cast<frmRecupero&>(platform::forms()[QStringLiteral("frmRecupero")])
      .Mostra(sDescrizione, sPath);
}

void RegistraFormRecupero() {
  platform::forms().add(QStringLiteral("frmRecupero"),
                        [] { return std::make_unique<frmRecupero>(); });
}

}  // namespace tavolix
