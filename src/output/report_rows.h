#pragma once

#include <QHash>
#include <memory>

#include "output/report_definition.h"
#include "store/database.h"

namespace tavolix::report {

// The rows of a section's source, read by place: they stay in the archive.
class Rows final {
 public:
  // Fails as Database::OpenRecordset does, and with 3265 for a field that is not there.
  Rows(store::Database& database, const QString& source, const Section& section);

  qint64 count() const { return count_; }
  // A field, or a summed field, of a row by its place in the section; Null outside of the rows.
  QVariant field(qint64 row, int place) const { return value(row, fields_, place); }
  QVariant summed(qint64 row, int place) const { return value(row, sums_, place); }
  store::FieldKind kind(int place) const { return kindOf(fields_, place); }
  store::FieldKind summedKind(int place) const { return kindOf(sums_, place); }

 private:
  QVector<int> placesOf(const QStringList& names) const;
  QVariant value(qint64 row, const QVector<int>& places, int place) const;
  store::FieldKind kindOf(const QVector<int>& places, int place) const;

  store::RecordsetPtr recordset_;
  QVector<int> fields_, sums_;
  qint64 count_ = 0;
};

// Counts and sums over some rows.
struct Totals {
  qint64 rows = 0;
  std::vector<double> sums;
  std::vector<qint64> filled;

  explicit Totals(std::size_t fields = 0) : sums(fields), filled(fields) {}
  void add(const Rows& source, qint64 row);
};

}  // namespace tavolix::report
