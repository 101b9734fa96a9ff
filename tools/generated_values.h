#pragma once

#include <functional>
#include <vector>

#include "tools/list_table.h"
#include "tools/record_writer.h"
#include "tools/special_columns.h"

namespace tavolix::builder {

// Makes up records: every field that the field table has, about one in ten left empty.
class RecordMaker final {
 public:
  // The lists must be complete: values are taken from them.
  RecordMaker(quint64 seed, const ListTable& lists, const RecordWriter& writer);

  // Values of all fields of a new record. `number` counts the collection's records from 0,
  // `place` those of the record it belongs to.
  QVector<QVariant> make(int collection, qint64 number, qint64 place);

 private:
  using Maker = std::function<QVariant(NewRecord&)>;
  struct Field {
    Maker make;
    bool always = false;
  };
  static Field fieldOf(int collection, int field, const ListTable& lists,
                       const RecordWriter& writer);
  static Maker makerOf(const store::FieldInfo& column);

  Random random_;
  std::vector<std::vector<Field>> fields_;
};

}  // namespace tavolix::builder
