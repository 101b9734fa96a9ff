#pragma once

#include <memory>

#include "output/report_definition.h"
#include "store/child_rows.h"

namespace tavolix::report {

// Rows of a section's source, read by place: they stay in the archive.
class Rows {
 public:
  Rows() = default;
  virtual ~Rows() = default;
  Rows(const Rows&) = delete;
  Rows& operator=(const Rows&) = delete;

  // A field, or a summed field, of a row by its place in the section; Null outside of the rows.
  virtual QVariant field(qint64 row, int place) const = 0;
  virtual QVariant summed(qint64 row, int place) const = 0;
  store::FieldKind kind(int place) const { return kinds_[place]; }
  store::FieldKind summedKind(int place) const { return sumKinds_[place]; }

 protected:
  void setKinds(const QVector<store::FieldInfo>& all, const QVector<int>& fields,
                const QVector<int>& sums);

 private:
  QVector<store::FieldKind> kinds_, sumKinds_;
};

// All rows of a source.
class ListRows final : public Rows {
 public:
  // Fails as Database::OpenRecordset does, and with 3265 for a field that is not there.
  ListRows(store::Database& database, const QString& source, const Section& section);

  qint64 count() const { return count_; }
  QVariant field(qint64 row, int place) const override { return value(row, fields_[place]); }
  QVariant summed(qint64 row, int place) const override { return value(row, sums_[place]); }

 private:
  QVariant value(qint64 row, int field) const;

  store::RecordsetPtr recordset_;
  QVector<int> fields_, sums_;
  qint64 count_ = 0;
};

// The rows of a subreport that belong to one row of the report at a time.
class LinkedRows final : public Rows {
 public:
  // Fails as ListRows does.
  LinkedRows(store::Database& database, const Subreport& subreport);

  void goTo(const QVariant& link);
  bool has(qint64 row) const;
  QVariant field(qint64 row, int place) const override;
  QVariant summed(qint64 row, int place) const override;

 private:
  std::unique_ptr<store::ChildRows> children_;
  int sumsFrom_ = 0;  // their place behind the fields
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
