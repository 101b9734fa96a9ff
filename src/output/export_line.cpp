#include "output/export_line.h"

#include <QLocale>
#include <cmath>

#include "model/campi.h"
#include "model/testi.h"
#include "store/value_text.h"

namespace tavolix::text_export {
namespace {

constexpr double kMostDigits = 1e15;

// Blanks only: other white space belongs to the text.
QString trimmed(QString text) {
  while (text.endsWith(u' ')) text.chop(1);
  qsizetype blanks = 0;
  while (blanks < text.size() && text.at(blanks) == u' ') ++blanks;
  return text.mid(blanks);
}

QString delimited(QString text, const Format& format) {
  if (format.doublesDelimiter && !format.delimiter.isEmpty()) {
    RaddoppiaCarattere(text, format.delimiter.at(0));
  }
  return format.delimiter + text + format.delimiter;
}

QString plainText(const QVariant& value, const Format& format) {
  QString text = trimmed(NullAStringa(value));
  if (text.isEmpty()) return {};
  TogliACapo(text);
  return delimited(text, format);
}

// With all digits that the stored number needs to read back the same, in any country.
QString number(const QVariant& value) {
  if (value.typeId() != QMetaType::Double) return QString::number(value.toLongLong());
  const double number = value.toDouble();
  const char form = std::abs(number) < kMostDigits ? 'f' : 'g';
  return QString::number(number, form, QLocale::FloatingPointShortest);
}

QString date(const QVariant& value) {
  const auto day = static_cast<qint64>(std::floor(value.toDouble()));
  return store::dateOfDay(day).toString(QStringLiteral("dd-MM-yyyy"));
}

QString time(const QVariant& value) {
  return SecondiAData(value.toInt()).toString(QStringLiteral("hh:mm:ss"));
}

}  // namespace

QString headLine(int iRac, const Format& format) {
  QStringList titles;
  for (int i = 0; i < iNumeroCampi(iRac); ++i) titles << aCampi(iRac, i).sTitolo;
  return titles.join(format.separator);
}

QString fieldText(const QString& sTipo, const QVariant& value, const Format& format) {
  if (sTipo == QLatin1String(TXTSTR)) return plainText(value, format);
  if (sTipo == QLatin1String(CBO)) {
    return value.isValid() ? delimited(trimmed(value.toString()), format) : QString();
  }
  if (sTipo == QLatin1String(TXTNUM)) return number(NullAZero(value));
  if (sTipo == QLatin1String(TXTDTA)) return date(NullAZero(value));
  if (sTipo == QLatin1String(TXTTIM)) return time(NullAZero(value));
  if (sTipo != QLatin1String(CHK)) return {};
  return NullAZero(value).toDouble() != 0 ? QStringLiteral("Si") : QStringLiteral("No");
}

}  // namespace tavolix::text_export
