#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "analysis/result_model.h"

namespace tavolix {

// The rows of several collections by an attribute that all of them have. Value and collection
// stand in the first row of their group; the total, where it is not 0, behind the rows.
class ElencoModel final : public ResultModel {
  Q_OBJECT
 public:
  ElencoModel();

  // Goes through the rows once, in their order. Told how many are done; false breaks off: no row
  // is shown then. Fails as the store does.
  using Passo = std::function<bool(int fatti)>;
  bool bLeggi(const store::RecordsetPtr& rs, const QString& sAttributo, const Passo& passo);

 private:
  QString text(int row, int column) const override;
  bool bScorri(const store::Recordset& rs, const Passo& passo);

  int attributo_ = 0, raccolta_ = 0, codice_ = 0, titolo_ = 0, valore_ = 0;
  std::vector<bool> iniziAttributo_, iniziRaccolta_;
  double totale_ = 0;
};

// What the list is made of: the query column of the attribute, the value if only one is wanted,
// and which of the collections 0 to 6 are left out.
struct RichiestaElenco {
  QString sAttributo;
  std::optional<QString> sValore;
  std::vector<int> escluse;
};

// The query of the list. The exclusions bind to the last branch of a choice without value only.
QString sQueryMultiraccolta(const RichiestaElenco& richiesta);

}  // namespace tavolix
