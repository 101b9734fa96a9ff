#include "analysis/gruppi_model.h"

namespace tavolix {
namespace {

enum Colonna { kDesc, kQuantita, kQuotaQuantita, kValore, kQuotaValore };

QString sQuota(double parte, double tutto) {
  return tutto == 0 ? QString() : sPercento(parte / tutto);
}

}  // namespace

QString sQueryGruppi(const QString& sColonna) {
  return QStringLiteral("SELECT ") + sColonna +
         QStringLiteral(" AS TabID,  Count(Main.ID) AS TotQuantita,  Sum(Valore) AS TotValore ") +
         QStringLiteral(" FROM Q_GRUPPI_STEP1  GROUP BY ") + sColonna +
         QStringLiteral(" ORDER BY ") + sColonna;
}

GruppiModel::GruppiModel()
    : ResultModel({{}, QStringLiteral("Quantita'"), {}, QStringLiteral("Valore"), {}},
                  {kQuantita, kQuotaQuantita, kValore, kQuotaValore}) {
  clear();
}

void GruppiModel::Leggi(const store::RecordsetPtr& rs) {
  desc_ = rs->FieldIndex(QStringLiteral("Desc"));
  quantita_ = rs->FieldIndex(QStringLiteral("TotQuantita"));
  valore_ = rs->FieldIndex(QStringLiteral("TotValore"));
  totQuantita_ = totValore_ = 0;
  const int righe = static_cast<int>(rs->RecordCount());
  if (righe == 0) return;
  rs->ExpectFields({desc_, quantita_, valore_});
  for (int i = 0; i < righe; ++i) {
    totQuantita_ += rs->ValueAt(i, quantita_).toDouble();
    totValore_ += rs->ValueAt(i, valore_).toDouble();
    noteText(kDesc, rs->ValueAt(i, desc_).toString());
  }
  const QString tutto = QStringLiteral("100%");
  show(rs,
       {QStringLiteral("T O T A L E"), sIntero(totQuantita_), tutto, sIntero(totValore_), tutto});
}

QString GruppiModel::text(int row, int column) const {
  const auto number = [&](int field) { return valueAt(row, field).toDouble(); };
  switch (column) {
    case kDesc:
      return valueAt(row, desc_).toString();
    case kQuantita:
      return sIntero(number(quantita_));
    case kQuotaQuantita:
      return sQuota(number(quantita_), totQuantita_);
    case kValore:
      return sIntero(number(valore_));
    default:
      return sQuota(number(valore_), totValore_);
  }
}

}  // namespace tavolix
