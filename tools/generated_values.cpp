#include "tools/generated_values.h"

#include <QDate>

#include "core/campi.h"
#include "core/raccolte.h"
#include "tools/day_number.h"
#include "tools/italian_text.h"
#include "tools/italian_words.h"

namespace tavolix::builder {
namespace {

constexpr int kEmptyPercent = 10;
constexpr int kLongestProse = 500;
constexpr int kNotesEvery = 10;
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

QString digits(Random& random, int count) {
  QString text;
  for (int i = 0; i < count; ++i) text += QChar(u'0' + static_cast<char16_t>(random.below(10)));
  return text;
}

QString telephone(Random& random) {
  return u'0' + digits(random, 2) + u'/' + digits(random, 7);
}

QString taxCode(Random& random) {
  QString text;
  for (const char kind : QByteArray("AAAAAA00A00A000A")) {
    text += kind == '0' ? digits(random, 1)
                        : QString(QChar(u'A' + static_cast<char16_t>(random.below(26))));
  }
  return text;
}

QString webName(Random& random) {
  QString name =
      personName(random.below(kListTexts)).toLower().normalized(QString::NormalizationForm_D);
  name.removeIf([](QChar letter) { return letter != u' ' && (letter < u'a' || letter > u'z'); });
  return name.section(u' ', 0, 1).replace(u' ', u'.');
}

qint64 dayOf(int year) {
  return dayNumber(QDate(year, 1, 1));
}

}  // namespace

// Columns whose values are more than a text, number or date of their kind.
struct RecordMaker::Special {
  const char* column;
  QVariant (*make)(Record&);
  bool always;
};

const RecordMaker::Special* RecordMaker::findSpecial(const QString& column) {
  static const Special specials[] = {
      {"Cod",
       [](Record& record) -> QVariant {
         return aRaccolte(record.collection).sNome.left(1) +
                QStringLiteral("%1").arg(record.number + 1, 7, 10, QLatin1Char('0'));
       },
       true},
      {"Titolo", [](Record& record) -> QVariant { return title(record.random, 100); }, true},
      {"NrBrano", [](Record& record) -> QVariant { return record.place + 1; }, true},
      {"Note",
       [](Record& record) -> QVariant {
         const bool any = record.number % kNotesEvery == 0;
         return any ? QVariant(prose(record.random, kLongestProse)) : QVariant();
       },
       true},
      {"Anno",
       [](Record& record) -> QVariant { return record.year = record.random.between(1900, 2024); },
       false},
      {"DtaAcq",
       [](Record& record) -> QVariant {
         const int year = static_cast<int>(qMax<qint64>(record.year, 1975));
         return record.bought = record.random.between(dayOf(year), dayOf(2026) - 1);
       },
       false},
      {"DtaPos",
       [](Record& record) -> QVariant {
         const qint64 least = record.bought == 0 ? dayOf(1975) : record.bought;
         return record.random.between(least, dayOf(2026) - 1);
       },
       false},
      {"DtaScad",
       [](Record& record) -> QVariant { return record.random.between(dayOf(2020), dayOf(2030)); },
       false},
      {"Traduttore",
       [](Record& record) -> QVariant { return personName(record.random.below(8000)); }, false},
      {"Riferimento",
       [](Record& record) -> QVariant { return personName(record.random.below(8000)); }, false},
      {"Indirizzo", [](Record& record) -> QVariant { return address(record.random); }, false},
      {"cap", [](Record& record) -> QVariant { return digits(record.random, 5); }, false},
      {"Citta", [](Record& record) -> QVariant { return pick(record.random, words::kTowns); },
       false},
      {"Provincia",
       [](Record& record) -> QVariant { return pick(record.random, words::kProvinces); }, false},
      {"CodFisc", [](Record& record) -> QVariant { return taxCode(record.random); }, false},
      {"PartIva", [](Record& record) -> QVariant { return digits(record.random, 11); }, false},
      {"email",
       [](Record& record) -> QVariant {
         return webName(record.random) + QStringLiteral("@esempio.it");
       },
       false},
      {"Web",
       [](Record& record) -> QVariant {
         return QStringLiteral("www.%1.example").arg(webName(record.random).section(u'.', 0, 0));
       },
       false},
      {"NrSerie",
       [](Record& record) -> QVariant {
         return QStringLiteral("%1-%2").arg(digits(record.random, 5), digits(record.random, 7));
       },
       false},
  };
  for (const Special& special : specials) {
    if (column == QLatin1String(special.column)) return &special;
  }
  return nullptr;
}

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
    return {[keys](Record& record) { return keys[record.random.below(keys.size())]; }};
  }
  if (const Special* special = findSpecial(campo.sCampoDB)) return {special->make, special->always};
  return {makerOf(writer.column(collection, field)), campo.sTipo == QLatin1String(CHK)};
}

RecordMaker::Maker RecordMaker::makerOf(const store::FieldInfo& column) {
  const Range range = rangeOf(column.name);
  const int size = column.size;
  switch (column.kind) {
    case store::FieldKind::Date:
      return [](Record& record) { return record.random.between(dayOf(1975), dayOf(2026) - 1); };
    case store::FieldKind::Time:
      return [](Record& record) { return record.random.between(60, 3 * 3600); };
    case store::FieldKind::YesNo:
      return [](Record& record) { return record.random.chance(50) ? -1 : 0; };
    case store::FieldKind::Text:
      if (column.name.startsWith(QLatin1String("Tel"))) {
        return [](Record& record) { return telephone(record.random); };
      }
      if (size >= kMemo) return [](Record& record) { return prose(record.random, kLongestProse); };
      return [size](Record& record) { return title(record.random, size); };
    default:
      return [range](Record& record) {
        return record.random.between(range.least / range.step, range.most / range.step) *
               range.step;
      };
  }
}

QVector<QVariant> RecordMaker::make(int collection, qint64 number, qint64 place) {
  Record record{random_, collection, number, place};
  QVector<QVariant> values;
  for (const Field& field : fields_[static_cast<std::size_t>(collection)]) {
    const bool empty = !field.always && random_.chance(kEmptyPercent);
    values.append(empty ? QVariant() : field.make(record));
  }
  return values;
}

}  // namespace tavolix::builder
