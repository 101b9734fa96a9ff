#include "tools/generated_values.h"

#include "model/campi.h"
#include "model/raccolte.h"
#include "tools/italian_text.h"

namespace tavolix::builder {
namespace {

constexpr int kEmptyPercent = 10;
constexpr int kLongestProse = 500;
constexpr int kMemo = 1000;  // from this size on a text is written as sentences

struct Range {
  const char* column;
  int least;
  int most;
  int step;
};

constexpr Range kRanges[] = {
    {"Dim", 1, 1200, 1},   {"Valore", 1000, 150000, 500}, {"Voto", 0, 99, 1},
    {"Numero", 1, 400, 1}, {"NrSupporti", 1, 6, 1},       {"NrSupporto", 1, 3, 1},
    {"Traccia", 1, 20, 1}, {"Pagina", 1, 200, 1},         {"NrPagine", 1, 24, 1},
};

Range rangeOf(const QString& column) {
  for (const Range& range : kRanges) {
    if (column == QLatin1String(range.column)) return range;
  }
  return {"", 1, 100, 1};
}

}  // namespace

RecordMaker::RecordMaker(quint64 seed, const ListTable& lists, const RecordWriter& writer)
    : random_(seed), fields_(kRaccolte) {
  for (int i = 0; i < kRaccolte; ++i) {
    for (int j = 0; j < iNumeroCampi(i); ++j) {
      fields_[static_cast<std::size_t>(i)].push_back(fieldOf(i, j, lists, writer));
    }
  }
}

RecordMaker::Field RecordMaker::fieldOf(int collection, int field, const ListTable& lists,
                                        const RecordWriter& writer) {
  const tCampo& campo = aCampi(collection, field);
  if (campo.sTipo == QLatin1String(CBO)) {
    const QVector<qint64> keys = lists.keys({campo.sCodTab, campo.iRacTab});
    return {[keys](NewRecord& record) { return keys[record.random.below(keys.size())]; }};
  }
  if (const SpecialColumn* special = findSpecialColumn(campo.sCampoDB)) {
    return {special->make, special->always};
  }
  return {makerOf(writer.column(collection, field)), campo.sTipo == QLatin1String(CHK)};
}

RecordMaker::Maker RecordMaker::makerOf(const store::FieldInfo& column) {
  const Range range = rangeOf(column.name);
  const int size = column.size;
  switch (column.kind) {
    case store::FieldKind::Date:
      return [](NewRecord& record) {
        return record.random.between(firstDayOf(1975), firstDayOf(2026) - 1);
      };
    case store::FieldKind::Time:
      return [](NewRecord& record) { return record.random.between(60, 10800); };
    case store::FieldKind::YesNo:
      return [](NewRecord& record) { return record.random.chance(50) ? -1 : 0; };
    case store::FieldKind::Text:
      if (size >= kMemo)
        return [](NewRecord& record) { return prose(record.random, kLongestProse); };
      return [size](NewRecord& record) { return title(record.random, size); };
    default:
      return [range](NewRecord& record) {
        return record.random.between(range.least / range.step, range.most / range.step) *
               range.step;
      };
  }
}

QVector<QVariant> RecordMaker::make(int collection, qint64 number, qint64 place) {
  NewRecord record{random_, collection, number, place};
  QVector<QVariant> values;
  for (const Field& field : fields_[static_cast<std::size_t>(collection)]) {
    const bool empty = !field.always && random_.chance(kEmptyPercent);
    values.append(empty ? QVariant() : field.make(record));
  }
  return values;
}

}  // namespace tavolix::builder
