#include "output/report_rows.h"

#include "store/field_names.h"

namespace tavolix::report {
namespace {

QVector<int> placesOf(const QVector<store::FieldInfo>& all, const QStringList& names) {
  QVector<int> places;
  for (const QString& name : names) places << store::fieldIndex(all, name);
  return places;
}

QString sourceOf(const Subreport& subreport) {
  const QString& source = subreport.rows.source;
  if (subreport.order.isEmpty()) return source;
  return QStringLiteral("SELECT * FROM %1 ORDER BY %2").arg(source, subreport.order);
}

}  // namespace

void Rows::setKinds(const QVector<store::FieldInfo>& all, const QVector<int>& fields,
                    const QVector<int>& sums) {
  for (const int field : fields) kinds_ << all[field].kind;
  for (const int field : sums) sumKinds_ << all[field].kind;
}

ListRows::ListRows(store::Database& database, const QString& source, const Section& section)
    : recordset_(database.OpenRecordset(source, store::RecordsetType::Snapshot)),
      fields_(placesOf(recordset_->Fields(), section.fields)),
      sums_(placesOf(recordset_->Fields(), section.sums)),
      count_(recordset_->RecordCount()) {
  recordset_->ExpectFields(fields_ + sums_);
  setKinds(recordset_->Fields(), fields_, sums_);
}

QVariant ListRows::value(qint64 row, int field) const {
  if (row < 0 || row >= count_) return {};
  return recordset_->ValueAt(row, field);
}

LinkedRows::LinkedRows(store::Database& database, const Subreport& subreport)
    : children_(store::openChildRows(database, sourceOf(subreport), subreport.key)) {
  const QVector<int> fields = placesOf(children_->fields(), subreport.rows.fields);
  const QVector<int> sums = placesOf(children_->fields(), subreport.rows.sums);
  sumsFrom_ = static_cast<int>(fields.size());
  children_->read(fields + sums);
  setKinds(children_->fields(), fields, sums);
}

void LinkedRows::goTo(const QVariant& link) {
  children_->seek(link);
}

bool LinkedRows::has(qint64 row) const {
  return children_->has(row);
}

QVariant LinkedRows::field(qint64 row, int place) const {
  return children_->value(row, place);
}

QVariant LinkedRows::summed(qint64 row, int place) const {
  return children_->value(row, sumsFrom_ + place);
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
