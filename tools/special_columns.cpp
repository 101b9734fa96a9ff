#include "tools/special_columns.h"

#include <QDate>
#include <iterator>

#include "model/raccolte.h"
#include "store/value_text.h"
#include "tools/italian_text.h"
#include "tools/italian_words.h"

namespace tavolix::builder {
namespace {

constexpr int kPeople = 7;
constexpr int kLongestNote = 500;
constexpr int kNotesEvery = 10;
constexpr int kFirstYear = 1900;
constexpr int kFirstPurchase = 1975;
constexpr int kEndOfPurchases = 2026;

QString digits(Random& random, int count) {
  QString text;
  for (int i = 0; i < count; ++i) text += QChar(u'0' + static_cast<char16_t>(random.below(10)));
  return text;
}

// A person's name as it stands in addresses of the net.
QString webName(Random& random) {
  QString name = personName(random.below(kPlainNames)).toLower();
  name = name.normalized(QString::NormalizationForm_D);
  name.removeIf([](QChar letter) { return letter != u' ' && (letter < u'a' || letter > u'z'); });
  return name.replace(u' ', u'.');
}

QVariant makeCode(NewRecord& record) {
  return aRaccolte(record.collection).sNome.left(1) +
         QStringLiteral("%1").arg(record.number + 1, 7, 10, QLatin1Char('0'));
}

QVariant makePerson(NewRecord& record) {
  return personName(record.random.below(kPlainNames));
}

QVariant makeTitle(NewRecord& record) {
  return record.collection == kPeople ? makePerson(record) : title(record.random, 100);
}

QVariant makeTrackNumber(NewRecord& record) {
  return record.place + 1;
}

QVariant makeNote(NewRecord& record) {
  const bool any = record.number % kNotesEvery == 0;
  return any ? QVariant(prose(record.random, kLongestNote)) : QVariant();
}

QVariant makeYear(NewRecord& record) {
  return record.year = record.random.between(kFirstYear, kEndOfPurchases - 1);
}

QVariant makePurchase(NewRecord& record) {
  const int year = qMax(static_cast<int>(record.year), kFirstPurchase);
  return record.bought = record.random.between(firstDayOf(year), firstDayOf(kEndOfPurchases) - 1);
}

QVariant makePlacing(NewRecord& record) {
  const qint64 least = record.bought == 0 ? firstDayOf(kFirstPurchase) : record.bought;
  return record.random.between(least, firstDayOf(kEndOfPurchases) - 1);
}

QVariant makeExpiry(NewRecord& record) {
  return record.random.between(firstDayOf(2020), firstDayOf(2030));
}

QVariant makeAddress(NewRecord& record) {
  return address(record.random);
}
QVariant makePostcode(NewRecord& record) {
  return digits(record.random, 5);
}

QVariant makeTown(NewRecord& record) {
  record.town = record.random.below(static_cast<qint64>(std::size(words::kTowns)));
  return QString::fromUtf8(words::kTowns[record.town].name);
}

QVariant makeProvince(NewRecord& record) {
  return QString::fromUtf8(words::kTowns[record.town].province);
}

QVariant makeTaxCode(NewRecord& record) {
  QString text;
  for (const char kind : QByteArray("AAAAAA00A00A000A")) {
    const auto letter = static_cast<char16_t>(u'A' + record.random.below(26));
    text += kind == '0' ? digits(record.random, 1) : QString(QChar(letter));
  }
  return text;
}

QVariant makeVatNumber(NewRecord& record) {
  return digits(record.random, 11);
}

QVariant makeTelephone(NewRecord& record) {
  return QString(u'0' + digits(record.random, 2) + u'/' + digits(record.random, 7));
}

QVariant makeMail(NewRecord& record) {
  return webName(record.random) + QStringLiteral("@esempio.it");
}

QVariant makeSite(NewRecord& record) {
  return QStringLiteral("www.%1.example").arg(webName(record.random).section(u'.', 0, 0));
}

QVariant makeSerialNumber(NewRecord& record) {
  return QString(digits(record.random, 5) + u'-' + digits(record.random, 7));
}

constexpr SpecialColumn kSpecialColumns[] = {
    {"Cod", makeCode, true},
    {"Titolo", makeTitle, true},
    {"NrBrano", makeTrackNumber, true},
    {"Note", makeNote, true},
    {"Anno", makeYear, false},
    {"DtaAcq", makePurchase, false},
    {"DtaPos", makePlacing, false},
    {"DtaScad", makeExpiry, false},
    {"Traduttore", makePerson, false},
    {"Riferimento", makePerson, false},
    {"Indirizzo", makeAddress, false},
    {"cap", makePostcode, false},
    {"Citta", makeTown, false},
    {"Provincia", makeProvince, false},
    {"CodFisc", makeTaxCode, false},
    {"PartIva", makeVatNumber, false},
    {"Tel1", makeTelephone, false},
    {"Tel2", makeTelephone, false},
    {"Tel3", makeTelephone, false},
    {"Tel4", makeTelephone, false},
    {"Tel5", makeTelephone, false},
    {"email", makeMail, false},
    {"Web", makeSite, false},
    {"NrSerie", makeSerialNumber, false},
};

}  // namespace

qint64 firstDayOf(int year) {
  return store::dayOfDate(QDate(year, 1, 1));
}

const SpecialColumn* findSpecialColumn(const QString& column) {
  for (const SpecialColumn& special : kSpecialColumns) {
    if (column == QLatin1String(special.column)) return &special;
  }
  return nullptr;
}

}  // namespace tavolix::builder
