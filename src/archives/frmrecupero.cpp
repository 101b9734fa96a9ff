#include "archives/frmrecupero.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "archives/file_archivio.h"
#include "archives/rapporto_riparazione.h"
#include "core/dialogo.h"
#include "core/errore.h"
#include "core/modini.h"
#include "core/modutil.h"
#include "platform/fitting_area.h"
#include "platform/handlers.h"
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

frmRecupero::frmRecupero()
    : platform::Form(QStringLiteral("frmRecupero"), {.title = "Recupero archivio",
                                                     .icon = "archivi",
                                                     .enter = "cmdUscita",
                                                     .escape = "cmdUscita"}) {}

QWidget* frmRecupero::build() {
  auto* window = new QDialog;
  auto* area = new platform::FittingArea(window);
  auto* lblDsc = newText("lblDsc", "Descrizione del problema", area->widget());
  lblDsc->setMinimumWidth(platform::widthOfCharacters(lblDsc, kCharacters));
  auto* lblio = new platform::PathLabel(area->widget());
  lblio->setObjectName(QStringLiteral("lblio"));
  auto* content = new QVBoxLayout(area->widget());
  content->setContentsMargins(0, 0, 0, 0);
  content->addWidget(lblDsc);
  content->addWidget(lblio);
  content->addSpacing(8);
  content->addWidget(newText("lblCons", "Consiglio:", area->widget()));
  content->addStretch(1);
  auto* column = new QVBoxLayout(window);
  column->addWidget(area, 1);
  column->addWidget(platform::newButton(
      {"cmdRecupero", "&Tentativo di recupero automatico dell'archivio"}, window));
  column->addWidget(platform::newButton({"cmdUscita", "&Uscita dal programma"}, window));
  return window;
}

void frmRecupero::loaded() {
  PreparaDialogo(*this);
  // Before the window is shown, which takes its size from it.
  control<QLabel>(QStringLiteral("lblCons"))
      ->setText(QString::fromUtf8(kAdvice).replace(u'\r', u'\n'));
  platform::onClick(this, "cmdRecupero", [this] { cmdRecupero_Click(); });
  platform::onClick(this, "cmdUscita", [this] { Unload(); });
}

void frmRecupero::activated() {
  ChiediArchivioAllAvvio();
}

void frmRecupero::Mostra(const QString& sDescrizione, const QString& sPath) {
  control<QLabel>(QStringLiteral("lblDsc"))->setText(sDescrizione);
  control<QLabel>(QStringLiteral("lblio"))->setText(sPath);
  Control(QStringLiteral("cmdUscita"))->setFocus();
  platform::fitToScreen(*Window());
  ShowModal(nullptr);
}

void frmRecupero::cmdRecupero_Click() {
  const QString path = control<QLabel>(QStringLiteral("lblio"))->text();
  bool stopped = false;
  protetto("frmRecupero!cmdRecupero", [&] {
    Puntatore(kClessidra);
    const auto report = RiparaArchivio(path);
    Puntatore(kPuntatoreNormale);
    stopped = !report;
    if (stopped) return;
    iMsg(QStringLiteral("Recupero dati terminato: ora bisogna riavviare il programma."), 0);
    DiRiparazione(*report, path);
  });
  if (!stopped) Unload();
}

void ChiediArchivioAllAvvio() {
  bScriviStr(QStringLiteral("db_AskOpen"), QStringLiteral("-1"));
  bScriviStr(QStringLiteral("db_LastOpen"), QStringLiteral("0"));
  bScriviStr(QStringLiteral("db_DefaultOpen"), QStringLiteral("0"));
}

void RecuperaArchivio(const QString& sDescrizione, const QString& sPath) {
  platform::forms().as<frmRecupero>(QStringLiteral("frmRecupero")).Mostra(sDescrizione, sPath);
}

void RegistraFormRecupero() {
  platform::forms().add<frmRecupero>(QStringLiteral("frmRecupero"));
}

}  // namespace tavolix
