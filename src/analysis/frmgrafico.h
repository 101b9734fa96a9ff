#pragma once

#include "platform/chart.h"
#include "platform/form.h"
#include "store/recordset.h"

namespace tavolix {

// Draws one series of labelled numbers as a pie or as bars.
class frmGrafico final : public platform::Form {
  Q_OBJECT
 public:
  frmGrafico();

  // Takes the rows from the current one on; those of value 0 only with `bZeri`. True if there is
  // something to show, which the caller then does.
  bool bDisegnaGrafico(const QString& sTitolo, store::Recordset& rs, const QString& sColonnaDesc,
                       const QString& sColonnaValore, bool bZeri);
  // Applies the kind of chart and `opt3D`; no label shows then.
  void CambiaTipoGrafico();
  // Shows or hides the label of a row from 1, of all rows (-1), or of none (0).
  void MostraDataPointLabels(bool bMostra, int iIndice);

 private:
  enum class Genere { Torta = 0, Barre = 1 };

  QWidget* build() override;
  void loaded() override;
  void unloaded() override;

  platform::Chart& grf();
  bool b3D();
  void connectControls();
  void caricaDati(store::Recordset& rs, const QString& sColonnaDesc, const QString& sColonnaValore,
                  bool bZeri, double& somma);
  platform::DataPointLabel etichetta(bool bMostra);
  void grf_PointSelected(int serie);
  void grf_PartSelected(platform::ChartPart part, bool& bAnnulla);
  void cmdTipo_Click(Genere genere);
  void cmdStampa_Click();

  Genere genere_ = Genere::Torta;
  int iEtichetta_ = 0;  // whose label shows; 0 for none, -1 for all
};

void RegistraFormGrafico();

}  // namespace tavolix
