#pragma once

#include "analysis/result_model.h"

namespace tavolix {

// Groups with their numbers of records and values, each with its share of the whole, and what all
// of them have behind them.
class GruppiModel final : public ResultModel {
  Q_OBJECT
 public:
  GruppiModel();

  // Shows the rows; none is shown where there are none. Fails as the store does.
  void Leggi(const store::RecordsetPtr& rs);

 private:
  QString text(int row, int column) const override;

  int desc_ = 0, quantita_ = 0, valore_ = 0;
  double totQuantita_ = 0, totValore_ = 0;
};

// The grouping of Q_GRUPPI_STEP1 by a column, "table.column".
QString sQueryGruppi(const QString& sColonna);

}  // namespace tavolix
