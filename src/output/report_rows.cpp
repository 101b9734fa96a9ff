#include "output/report_rows.h"

namespace tavolix::report {

Rows::Rows(store::Database& database, const QString& source, const Section& section)
    : recordset_(database.OpenRecordset(source, store::RecordsetType::Snapshot)),
      fields_(placesOf(section.fields)),
      sums_(placesOf(section.sums)),
      count_(recordset_->RecordCount()) {
  recordset_->ExpectFields(fields_ + sums_);
}

QVector<int> Rows::placesOf(const QStringList& names) const {
  QVector<int> places;
  for (const QString& name : names) places << recordset_->FieldIndex(name);
  return places;
}

QVariant Rows::value(qint64 row, const QVector<int>& places, int place) const {
  if (row < 0 || row >= count_) return {};
  return recordset_->ValueAt(row, places[place]);
}

store::FieldKind Rows::kindOf(const QVector<int>& places, int place) const {
  return recordset_->Fields()[places[place]].kind;
}

void Totals::add(const Rows& source, qint64 row) {
  ++rows;
  for (std::size_t i = 0; i < sums.size(); ++i) {
    const QVariant value = source.summed(row, static_cast<int>(i));
    if (!value.isValid()) continue;
    sums[i] += value.toDouble();
    ++filled[i];
  }
}

}  // namespace tavolix::report
