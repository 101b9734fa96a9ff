#include "analysis/elenco_model.h"

#include "model/testi.h"

namespace tavolix {
namespace {

enum Colonna { kAttributo, kRaccolta, kCodice, kDescrizione, kValore };

// What no data holds.
const QString kNessuno(QChar(127));

QString sCondizioneValore(const QString& sAttributo, const QString& sValore) {
  if (!sValore.isEmpty()) return sAttributo + QStringLiteral(" = ") + sApici(sValore);
  return sAttributo + QStringLiteral(" = '' or ") + sAttributo + QStringLiteral(" Is Null");
}

}  // namespace

QString sQueryMultiraccolta(const RichiestaElenco& richiesta) {
  const QString& sAttributo = richiesta.sAttributo;
  QString dove;
  if (richiesta.sValore) {
    dove = QStringLiteral(" WHERE ") + sCondizioneValore(sAttributo, *richiesta.sValore);
  }
  for (const int iRac : richiesta.escluse) {
    dove += dove.isEmpty() ? QStringLiteral(" WHERE ") : QStringLiteral(" AND ");
    dove += QStringLiteral(" TipoRac <> ") + QString::number(iRac);
  }
  return QStringLiteral("SELECT * FROM Q_ELENCHI_MULTIPLI_STEP1") + dove +
         QStringLiteral(" ORDER BY ") + sAttributo + QStringLiteral(", TipoRac");
}

ElencoModel::ElencoModel()
    : ResultModel({{},
                   QStringLiteral("Raccolta"),
                   QStringLiteral("Codice"),
                   QStringLiteral("Descrizione"),
                   QStringLiteral("Valore")},
                  {kValore}) {
  clear();
}

bool ElencoModel::bLeggi(const store::RecordsetPtr& rs, const QString& sAttributo,
                         const Passo& passo) {
  attributo_ = rs->FieldIndex(sAttributo);
  raccolta_ = rs->FieldIndex(QStringLiteral("DescRac"));
  codice_ = rs->FieldIndex(QStringLiteral("cod"));
  titolo_ = rs->FieldIndex(QStringLiteral("titolo"));
  valore_ = rs->FieldIndex(QStringLiteral("valore"));
  if (!bScorri(*rs, passo)) {
    clear();
    return false;
  }
  rs->ExpectFields({codice_, titolo_});
  show(rs, totale_ == 0 ? QStringList()
                        : QStringList{{}, {}, {}, QStringLiteral("T O T A L E"), sIntero(totale_)});
  return true;
}

bool ElencoModel::bScorri(const store::Recordset& rs, const Passo& passo) {
  const int righe = static_cast<int>(rs.RecordCount());
  iniziAttributo_.assign(static_cast<std::size_t>(righe), false);
  iniziRaccolta_.assign(static_cast<std::size_t>(righe), false);
  totale_ = 0;
  QString ultimoAttributo = kNessuno, ultimaRaccolta = kNessuno;
  for (int i = 0; i < righe; ++i) {
    if (!passo(i)) return false;
    const QString attributo = rs.ValueAt(i, attributo_).toString();
    if (attributo != ultimoAttributo) {
      ultimoAttributo = attributo;
      ultimaRaccolta = kNessuno;
      iniziAttributo_[static_cast<std::size_t>(i)] = true;
      noteText(kAttributo, attributo);
    }
    const QString raccolta = rs.ValueAt(i, raccolta_).toString();
    if (raccolta != ultimaRaccolta) {
      ultimaRaccolta = raccolta;
      iniziRaccolta_[static_cast<std::size_t>(i)] = true;
      noteText(kRaccolta, raccolta);
    }
    totale_ += rs.ValueAt(i, valore_).toDouble();
  }
  return true;
}

QString ElencoModel::text(int row, int column) const {
  const auto place = static_cast<std::size_t>(row);
  switch (column) {
    case kAttributo:
      return iniziAttributo_[place] ? valueAt(row, attributo_).toString() : QString();
    case kRaccolta:
      return iniziRaccolta_[place] ? valueAt(row, raccolta_).toString() : QString();
    case kCodice:
      return valueAt(row, codice_).toString();
    case kDescrizione:
      return valueAt(row, titolo_).toString();
    default: {
      const double valore = valueAt(row, valore_).toDouble();
      return valore == 0 ? QString() : sIntero(valore);
    }
  }
}

}  // namespace tavolix
