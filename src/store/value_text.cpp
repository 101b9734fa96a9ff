#include "store/value_text.h"

#include <QLocale>
#include <cmath>
#include <cstdlib>

namespace store {
namespace {

constexpr QLatin1Char kZero('0');
constexpr double kExactWholes = 9007199254740992.0;
constexpr int kKeptDigits = 15;

const QDate& firstDay() {
  static const QDate day(1899, 12, 30);
  return day;
}

bool isWhole(const QVariant& value) {
  if (value.typeId() != QMetaType::Double) return true;
  const double number = value.toDouble();
  return std::abs(number) < kExactWholes && number == std::floor(number);
}

}  // namespace

QDate dateOfDay(qint64 day) {
  return firstDay().addDays(day);
}

qint64 dayOfDate(const QDate& date) {
  return firstDay().daysTo(date);
}

QString numberText(const QVariant& number, Grouping grouping) {
  QLocale locale;
  if (grouping == Grouping::None) locale.setNumberOptions(QLocale::OmitGroupSeparator);
  if (isWhole(number)) return locale.toString(number.toLongLong());
  const double rounded = QString::number(number.toDouble(), 'g', kKeptDigits).toDouble();
  return locale.toString(rounded, 'f', QLocale::FloatingPointShortest);
}

std::optional<double> numberIn(const QString& text) {
  bool isNumber = false;
  double number = QLocale().toDouble(text.trimmed(), &isNumber);
  if (!isNumber) number = QLocale::c().toDouble(text.trimmed(), &isNumber);
  if (!isNumber || !std::isfinite(number)) return {};
  return number;
}

QString durationText(qint64 seconds) {
  const qint64 length = std::abs(seconds);
  return QStringLiteral("%1%2:%3:%4")
      .arg(QLatin1String(seconds < 0 ? "-" : ""))
      .arg(length / 3600)
      .arg(length / 60 % 60, 2, 10, kZero)
      .arg(length % 60, 2, 10, kZero);
}

}  // namespace store
