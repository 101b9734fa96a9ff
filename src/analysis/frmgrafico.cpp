#include "analysis/frmgrafico.h"

#include <QCheckBox>
#include <QDialog>
#include <QHBoxLayout>
#include <QPrinter>
#include <QPushButton>
#include <limits>

#include "core/dialogo.h"
#include "core/errore.h"
#include "core/modutil.h"
#include "core/verbi.h"
#include "platform/handlers.h"
#include "platform/number_format.h"
#include "platform/printer_dialog.h"
#include "platform/push_button.h"
#include "platform/screen_room.h"

namespace tavolix {
namespace {

using platform::Chart;
using platform::ChartPart;
using platform::ChartType;
using platform::DataPointLabel;

constexpr double kElevazioneTorta = 60;
constexpr double kElevazioneBarre = 20;
constexpr double kRotazioneBarre = 345;
constexpr double kMargineStampa = 3;
constexpr QSize kDimensione(940, 560);

constexpr platform::ButtonSpec kButtons[] = {
    {"cmdTorta", "&Torta", "Grafico a torta", "torta"},
    {"cmdBarre", "&Barre", "Grafico a barre", "raggruppamenti"},
    {"cmdStampa", "&Stampa", "Stampa grafico corrente", "stampa"},
    {"cmdEsci", "&Esci", "", "esci"},
    {"cmdIdea", "", "Suggerimenti...", "suggerimenti"},
    {"cmdAiuto", "", "Guida in linea", "guida"},
};

QVBoxLayout* newControls(QWidget* window) {
  auto* column = new QVBoxLayout;
  auto* solid = new QCheckBox(QStringLiteral("3D"), window);
  solid->setObjectName(QStringLiteral("opt3D"));
  solid->setChecked(true);
  column->addWidget(solid);
  for (const platform::ButtonSpec& button : kButtons) {
    column->addWidget(platform::newButton(button, window));
  }
  column->addStretch(1);
  return column;
}

}  // namespace

frmGrafico::frmGrafico()
    : platform::Form(QStringLiteral("frmGrafico"),
                     {.title = "Grafico", .icon = "raggruppamenti", .escape = "cmdEsci"}) {}

QWidget* frmGrafico::build() {
  auto* window = new QDialog;
  auto* chart = new Chart(window);
  chart->setObjectName(QStringLiteral("grf"));
  auto* row = new QHBoxLayout(window);
  row->addWidget(chart, 1);
  row->addLayout(newControls(window));
  window->resize(kDimensione.boundedTo(platform::roomOnScreen()));
  return window;
}

platform::Chart& frmGrafico::grf() {
  return *control<Chart>(QStringLiteral("grf"));
}

bool frmGrafico::b3D() {
  return control<QCheckBox>(QStringLiteral("opt3D"))->isChecked();
}

void frmGrafico::loaded() {
  PreparaDialogo(*this);
  connectControls();
  grf().setFocus();
}

void frmGrafico::unloaded() {
  genere_ = Genere::Torta;
  iEtichetta_ = 0;
}

void frmGrafico::connectControls() {
  platform::onClick(this, "opt3D", [this] { CambiaTipoGrafico(); });
  platform::onClick(this, "cmdTorta", [this] { cmdTipo_Click(Genere::Torta); });
  platform::onClick(this, "cmdBarre", [this] { cmdTipo_Click(Genere::Barre); });
  platform::onClick(this, "cmdStampa", [this] { cmdStampa_Click(); });
  platform::onClick(this, "cmdIdea", [] { verbi().MostraSuggerimenti(QStringLiteral("GRAFICI")); });
  platform::onClick(this, "cmdEsci", [this] { Unload(); });
  platform::onSignal(&grf(), &Chart::PointSelected, this, &frmGrafico::grf_PointSelected);
  platform::onSignal(&grf(), &Chart::PartSelected, this,
                     [this](ChartPart part, bool* annulla) { grf_PartSelected(part, *annulla); });
}

bool frmGrafico::bDisegnaGrafico(const QString& sTitolo, store::Recordset& rs,
                                 const QString& sColonnaDesc, const QString& sColonnaValore,
                                 bool bZeri) {
  return protetto("frmGrafici!bDisegnaGrafico", [&] {
    iEtichetta_ = 0;
    if (rs.RecordCount() == 0) return false;
    Puntatore(kClessidra);
    grf().SetRepaint(false);
    grf().SetRowCount(0);
    grf().SetChartType(ChartType::Pie3D);
    grf().SetElevation(kElevazioneTorta);
    double somma = 0;
    caricaDati(rs, sColonnaDesc, sColonnaValore, bZeri, somma);
    const bool vuoto = grf().RowCount() == 0;
    if (!vuoto) {
      grf().SetFootnoteText(QStringLiteral("Totale ") +
                            platform::formatNumber(somma, QStringLiteral("#,##0")));
      grf().SetTitleText(sTitolo);
    }
    Puntatore(kPuntatoreNormale);
    grf().SetRepaint(true);
    if (vuoto) iMsg(QStringLiteral("Nessun dato trovato!"), 0);
    return !vuoto;
  });
}

void frmGrafico::caricaDati(store::Recordset& rs, const QString& sColonnaDesc,
                            const QString& sColonnaValore, bool bZeri, double& somma) {
  const int desc = rs.FieldIndex(sColonnaDesc);
  const int colonna = rs.FieldIndex(sColonnaValore);
  for (; !rs.NoMatch() && !rs.Eof(); rs.MoveNext()) {
    const double valore = NullAZero(rs.Value(colonna)).toDouble();
    if (valore == 0 && !bZeri) continue;
    if (grf().RowCount() == std::numeric_limits<qint16>::max()) {
      throw store::Failure(store::failure::kOverflow,
                           QStringLiteral("Troppi valori per un grafico"));
    }
    grf().SetRowCount(grf().RowCount() + 1);
    grf().SetRow(grf().RowCount());
    const QString sDesc = NullAStringa(rs.Value(desc));
    grf().SetRowLabel(sDesc.isEmpty() ? QStringLiteral("<<Ness. descr.>>") : sDesc);
    grf().SetData(valore);
    somma += valore;
  }
}

void frmGrafico::CambiaTipoGrafico() {
  grf().SetRepaint(false);
  const bool torta = genere_ == Genere::Torta;
  const bool solido = b3D();
  if (solido) grf().SetElevation(torta ? kElevazioneTorta : kElevazioneBarre);
  if (solido && !torta) grf().SetRotation(kRotazioneBarre);
  MostraDataPointLabels(false, iEtichetta_);
  const ChartType pie = solido ? ChartType::Pie3D : ChartType::Pie;
  grf().SetChartType(torta ? pie : (solido ? ChartType::Bars3D : ChartType::Bars));
  grf().SetRepaint(true);
}

platform::DataPointLabel frmGrafico::etichetta(bool bMostra) {
  DataPointLabel label;
  const int barre = b3D() ? DataPointLabel::OverSolidBar : DataPointLabel::OverBar;
  label.LocationType = genere_ == Genere::Torta ? int{DataPointLabel::InSlice} : barre;
  label.component = bMostra ? DataPointLabel::All : DataPointLabel::Nothing;
  label.ValueFormat = QStringLiteral("#,##0");
  label.PercentFormat = QStringLiteral("0.0%");
  label.filled = bMostra;
  label.FillColor = QColor(0, 0, 255);
  label.FontName = QStringLiteral("Arial");
  label.FontSize = 8;
  label.bold = true;
  label.FontColor = QColor(255, 255, 255);
  return label;
}

void frmGrafico::MostraDataPointLabels(bool bMostra, int iIndice) {
  if (iIndice == 0) return;
  const DataPointLabel label = etichetta(bMostra);
  const int prima = iIndice == -1 ? 1 : iIndice;
  const int ultima = iIndice == -1 ? grf().RowCount() : iIndice;
  for (int i = prima; i <= ultima; ++i) grf().SetPointLabel(i, label);
  if (bMostra) iEtichetta_ = iIndice;
}

void frmGrafico::grf_PointSelected(int serie) {
  MostraDataPointLabels(false, iEtichetta_);
  MostraDataPointLabels(true, serie);
}

// Title, legend and footnote cannot be selected, a flat plot neither.
void frmGrafico::grf_PartSelected(ChartPart part, bool& bAnnulla) {
  bAnnulla = part != ChartPart::Plot || !b3D();
}

void frmGrafico::cmdTipo_Click(Genere genere) {
  genere_ = genere;
  CambiaTipoGrafico();
}

void frmGrafico::cmdStampa_Click() {
  QPrinter printer(QPrinter::HighResolution);
  if (!platform::choosePrinter(printer, QStringLiteral("Selezione stampante"),
                               platform::PageRange::All)) {
    return;
  }
  Cedi();
  grf().SetBackdrop(Chart::NoBackdrop);
  platform::ChartPrintSettings& stampa = grf().Printing();
  stampa.LayoutForPrinter = true;
  stampa.Orientation = platform::ChartPrintSettings::Portrait;
  stampa.ScaleType = platform::ChartPrintSettings::Fit;
  stampa.LeftMargin = stampa.RightMargin = kMargineStampa;
  stampa.TopMargin = stampa.BottomMargin = kMargineStampa;
  stampa.CenterHorizontally = stampa.CenterVertically = true;
  MostraDataPointLabels(false, iEtichetta_);
  ignorando([&] { grf().PrintTo(printer); });
  stampa.LayoutForPrinter = false;
  grf().SetBackdrop(Chart::FilledBackdrop);
}

void RegistraFormGrafico() {
  platform::forms().add<frmGrafico>(QStringLiteral("frmGrafico"));
}

}  // namespace tavolix
