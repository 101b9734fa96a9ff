#include "platform/time_box.h"

#include <cmath>

#include "store/value_text.h"

namespace platform {
namespace {

constexpr int kMostLetters = 12;  // of the longest time, 596523:14:07
constexpr qlonglong kMostSeconds = 2'147'483'647;
constexpr double kMostShown = 1e15;

// Hours, minutes and seconds as they were typed.
QStringList partsOf(const QString& text) {
  if (!text.contains(u':')) {
    const QString digits = text.rightJustified(5, u'0');
    return {digits.chopped(4), digits.sliced(digits.size() - 4, 2), digits.right(2)};
  }
  QStringList parts = text.split(u':');
  while (parts.size() < 3) parts.prepend(QString());
  for (QString& part : parts) {
    if (!part.isEmpty()) break;
    part = u'0';
  }
  return parts;
}

// The number of a part; -1 if it is none or above the limit.
qlonglong partNumber(const QString& part, qlonglong limit) {
  bool ok = false;
  const qlonglong number = part.toLongLong(&ok);
  return ok && number <= limit ? number : -1;
}

}  // namespace

TimeBox::TimeBox(QWidget* parent) : LineBox(parent) {
  setPlaceholderText(QStringLiteral(" 0:00:00 "));
}

QVariant TimeBox::parsed(const QString& text) const {
  const QStringList parts = partsOf(text);
  if (text.isEmpty() || parts.size() != 3) return {};
  const qlonglong hours = partNumber(parts[0], kMostSeconds);
  const qlonglong minutes = partNumber(parts[1], 59);
  const qlonglong seconds = partNumber(parts[2], 59);
  if (hours < 0 || minutes < 0 || seconds < 0) return {};
  const qlonglong total = (hours * 60 + minutes) * 60 + seconds;
  return total <= kMostSeconds ? QVariant(total) : QVariant();
}

QString TimeBox::shown(const QVariant& value) const {
  bool ok = false;
  const double number = value.toDouble(&ok);
  if (!ok || std::abs(number) > kMostShown) return value.toString();
  return store::durationText(static_cast<qint64>(number));
}

bool TimeBox::takes(QChar letter) const {
  return (letter >= u'0' && letter <= u'9') || letter == u':' || letter == u'.';
}

void TimeBox::clean(QString& text, int& cursor) const {
  text.replace(u'.', u':');
  LineBox::clean(text, cursor);
  cut(text, cursor, kMostLetters);
}

}  // namespace platform
