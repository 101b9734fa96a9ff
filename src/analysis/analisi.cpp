#include "analysis/analisi.h"

#include <QApplication>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/modini.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "core/verbi.h"
#include "platform/push_button.h"
#include "platform/screen_room.h"

namespace tavolix {
namespace {

constexpr int kRossoChiaro = 12;
constexpr int kIntervallo = 400;  // milliseconds

constexpr QSize kGrandezza(720, 560);

constexpr platform::ButtonSpec kElabora = {"cmdElabora", "E&labora", "", "ordina"};
constexpr platform::ButtonSpec kButtons[] = {
    {"cmdStampa", "&Stampa", "", "stampa"},
    {"cmdAnteprima", "", "Anteprima di stampa", "trova"},
    {"cmdIdea", "", "Suggerimenti...", "suggerimenti"},
    {"cmdAiuto", "", "Guida in linea", "guida"},
    {"cmdEsci", "&Esci", "", "esci"},
};

}  // namespace

QVBoxLayout* newAnalysisButtons(QWidget* window, const platform::ButtonSpec* proprio) {
  auto* column = new QVBoxLayout;
  column->addWidget(platform::newButton(kElabora, window));
  if (proprio != nullptr) column->addWidget(platform::newButton(*proprio, window));
  for (const platform::ButtonSpec& button : kButtons) {
    column->addWidget(platform::newButton(button, window));
  }
  column->addStretch(1);
  return column;
}

void GrandezzaIniziale(QWidget& window) {
  window.resize(window.sizeHint().expandedTo(kGrandezza).boundedTo(platform::roomOnScreen()));
}

void LampeggiaElabora(platform::Form& form) {
  verbi().Lampeggia(form.Control(QStringLiteral("cmdElabora")), kRossoChiaro, kIntervallo);
}

bool bPremiElabora(platform::Form& form, int key) {
  if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
  QWidget* focused = QApplication::focusWidget();
  if (focused == form.Control(QStringLiteral("grd"))) return true;
  auto* button = qobject_cast<QPushButton*>(focused);
  if (button == nullptr) button = form.control<QPushButton>(QStringLiteral("cmdElabora"));
  button->click();
  return true;
}

QString sQueryNonScritta() {
  return QStringLiteral(
      "L'analisi non si e' potuta preparare: l'archivio e' in uso da un altro programma o non si "
      "puo' scrivere. Riprovare tra poco.");
}

void StampaAnalisi(const QString& sFile, bool bAnteprima) {
  ImpostaFileIni(sPathCompleto(QStringLiteral("tvx.ini")));
  ImpostaSezioneIni(QStringLiteral("Report"));
  QString sDirectory;
  if (!bLeggiStr(QStringLiteral("rep_dir"), sDirectory)) {
    sDirectory = QStringLiteral(".\\report\\");
  }
  verbi().EseguiReport(sPathCompleto(sDirectory + sFile), sPathCompleto(sPathArc), bAnteprima);
}

}  // namespace tavolix
