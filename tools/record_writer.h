#pragma once

#include <QVector>

#include "store/database.h"

namespace tavolix::builder {

// Adds records of the collections to an archive, in the columns that the field table names. A
// record's number is the next one of the archive's counter.
class RecordWriter final {
 public:
  explicit RecordWriter(store::Database& database);

  // The column that holds a field of a collection.
  const store::FieldInfo& column(int collection, int field) const;
  // Adds a record of a main collection: values[j] is that of field j, Null for none. Returns the
  // record's number.
  qint64 addRecord(int collection, const QVector<QVariant>& values);
  // Adds a record of a sub-collection to the record `parent`.
  void addChild(int collection, qint64 parent, const QVector<QVariant>& values);
  // Writes the counter back to the archive: to be called once, after the last record.
  void saveCounter();

 private:
  struct Place {
    store::RecordsetPtr rows;
    int column = -1;
  };
  struct Tables {
    store::RecordsetPtr main;
    store::RecordsetPtr detail;  // none for a sub-collection
    QVector<Place> fields;
  };
  static Tables open(store::Database& database, int collection);
  void fill(int collection, const QVector<QVariant>& values);

  QVector<Tables> tables_;
  store::RecordsetPtr counter_;
  qint64 last_;
};

}  // namespace tavolix::builder
