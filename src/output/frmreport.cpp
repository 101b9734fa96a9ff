#include "output/frmreport.h"

#include <QDialog>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>

#include "core/dialogo.h"
#include "core/errore.h"
#include "core/modini.h"
#include "core/modutil.h"
#include "output/modcrystal32.h"
#include "output/preview_window.h"
#include "platform/file_system.h"
#include "platform/handlers.h"
#include "platform/icons.h"
#include "platform/message_box.h"
#include "platform/push_button.h"

namespace tavolix {
namespace {

constexpr platform::ButtonSpec kButtons[] = {
    {"cmdAnteprima", "&Anteprima", "", "trova"},
    {"cmdStampa", "&Stampa", "", "stampa"},
    {"cmdEsci", "&Esci", "", "esci"},
};

constexpr const char* kAncoraAttiva = "Finestra di anteprima ancora attiva!";

void avvisa(const char* sTesto) {
  platform::MsgBox(QString::fromUtf8(sTesto));
}

}  // namespace

frmReport::frmReport()
    : platform::Form(
          QStringLiteral("frmReport"),
          {.title = "Stampe", .icon = "stampa", .enter = "cmdAnteprima", .escape = "cmdEsci"}) {}

QWidget* frmReport::build() {
  auto* window = new QDialog;
  auto* list = new QListWidget(window);
  list->setObjectName(QStringLiteral("lstFile"));
  list->setAccessibleName(QStringLiteral("Stampe"));
  list->setMinimumSize(360, 260);
  auto* column = new QVBoxLayout;
  for (const platform::ButtonSpec& button : kButtons) {
    column->addWidget(platform::newButton(button, window));
  }
  column->addStretch(1);
  auto* row = new QHBoxLayout(window);
  row->addWidget(list, 1);
  row->addLayout(column);
  return window;
}

QListWidget& frmReport::lstFile() {
  return *control<QListWidget>(QStringLiteral("lstFile"));
}

void frmReport::loaded() {
  PreparaDialogo(*this);
  platform::onClick(this, "cmdAnteprima", &frmReport::cmdAnteprima_Click);
  platform::onClick(this, "cmdStampa", &frmReport::cmdStampa_Click);
  platform::onClick(this, "cmdEsci", [this] {
    if (queryUnload()) Unload();
  });
  platform::onCommand(&lstFile(), &QListWidget::itemDoubleClicked, this,
                      &frmReport::cmdAnteprima_Click);
  lstFile().setFocus();
}

bool frmReport::queryUnload() {
  if (bAnteprimaAperta_) avvisa(kAncoraAttiva);
  return !bAnteprimaAperta_;
}

void frmReport::Carica(const QString& sFileIni, const QString& sSezione) {
  ImpostaFileIni(sFileIni);
  ImpostaSezioneIni(sSezione);
  if (!bLeggiStr(QStringLiteral("rep_dir"), sDirectory_)) {
    sDirectory_ = QStringLiteral(".\\report\\");
  }
  RicaricaFiles();
}

void frmReport::RicaricaFiles() {
  protetto("frmReport!RicaricaFiles_ERR", [&] {
    lstFile().clear();
    aPercorsi_.clear();
    QString sFiltro;
    if (!bLeggiStr(QStringLiteral("rep_search"), sFiltro)) sFiltro = QStringLiteral("*.rpt");
    ImpostaFileIni(sPathCompleto(sDirectory_ + QStringLiteral("report.ini")));
    ImpostaSezioneIni(QStringLiteral("Descrizioni"));
    const auto selezione = infine([this] {
      if (lstFile().count() > 0) lstFile().setCurrentRow(0);
    });
    for (const QString& nome : platform::listFiles(sDirectory_ + sFiltro)) aggiungi(nome);
  });
}

void frmReport::aggiungi(const QString& nome) {
  if (aPercorsi_.size() == kMassimo) {
    throw store::Failure(store::failure::kSubscript,
                         QStringLiteral("Indice di stampa fuori dai limiti: %1").arg(kMassimo + 1));
  }
  aPercorsi_ << sDirectory_ + nome;
  QString sDescrizione;
  if (!bLeggiStr(nome, sDescrizione)) sDescrizione = nome;
  new QListWidgetItem(platform::icon(QStringLiteral("stampa")), sDescrizione, &lstFile());
}

bool frmReport::bScelto(const char* sAvviso) {
  if (lstFile().count() == 0) return false;
  if (bAnteprimaAperta_) {
    avvisa(sAvviso);
    return false;
  }
  sReport_ = aPercorsi_.value(std::max(0, lstFile().currentRow()));
  return true;
}

void frmReport::cmdAnteprima_Click() {
  if (bScelto("Esiste gia' una finestra di anteprima aperta!")) Anteprima();
}

void frmReport::cmdStampa_Click() {
  if (bScelto("Prima di eseguire la stampa, chiudere la finestra di anteprima!")) Stampa();
}

void frmReport::Anteprima() {
  Puntatore(kClessidra);
  const QString sDirectory = platform::currentDirectory();
  const bool bEseguito = bEseguiReport(kReportAnteprima, sReport_, sArchivio_);
  if (bEseguito) {
    bAnteprimaAperta_ = true;
    Puntatore(kPuntatoreNormale);
    attendiChiusura();
    bAnteprimaAperta_ = false;
    platform::setCurrentDirectory(sDirectory);
  }
  Puntatore(kPuntatoreNormale);
}

// What the user does in other windows goes on meanwhile.
void frmReport::attendiChiusura() {
  const QPointer<QWidget> finestra = FinestraAnteprima();
  if (auto* anteprima = qobject_cast<report::PreviewWindow*>(finestra.data())) {
    anteprima->stayOnTop();
  }
  QEventLoop attesa;
  while (finestra) attesa.processEvents(QEventLoop::WaitForMoreEvents);
}

void frmReport::Stampa() {
  Puntatore(kClessidra);
  bEseguiReport(kReportStampante, sReport_, sArchivio_);
  Puntatore(kPuntatoreNormale);
}

void RegistraFormReport() {
  platform::forms().add<frmReport>(QStringLiteral("frmReport"));
}

}  // namespace tavolix
