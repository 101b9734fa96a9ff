#include "platform/date_box.h"

#include <cmath>

#include "store/value_text.h"

namespace platform {
namespace {

const QString& pattern() {
  static const QString text = QStringLiteral("__-__-____");
  return text;
}

constexpr double kMostDays = 100'000'000;  // what QDate can show by far
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
constexpr int kLastYoungYear = 29;

bool isDigit(QChar letter) {
  return letter >= u'0' && letter <= u'9';
}
bool isSeparator(QChar letter) {
  return letter == u'-' || letter == u'/' || letter == u'.';
}

// Appends the pattern's own signs up to the next place for a digit.
void skipSigns(QString& text) {
  while (text.size() < pattern().size() && pattern().at(text.size()) != u'_') text += u'-';
}

void skipPart(QString& text) {
  const auto next = pattern().indexOf(u'-', text.size());
  if (next >= 0) text += pattern().mid(text.size(), next + 1 - text.size());
}

// What was typed, laid on the places of the pattern from the first.
QString laidOut(const QString& typed) {
  QString text;
  for (const QChar letter : typed) {
    if (isSeparator(letter)) {
      skipPart(text);
    } else if (isDigit(letter) || letter == u'_') {
      skipSigns(text);
      if (text.size() < pattern().size()) text += letter;
    }
  }
  return text;
}

// The number in one part of the pattern; -1 if there is none, or places free in between.
int partNumber(QString part) {
  while (part.startsWith(u'_')) part.remove(0, 1);
  while (part.endsWith(u'_')) part.chop(1);
  bool ok = false;
  const int number = part.toInt(&ok);
  return ok ? number : -1;
}

// One or two digits get their century; three are a year not typed to its end.
int fullYear(const QString& part) {
  const int year = partNumber(part);
  const auto digits = part.size() - part.count(u'_');
  if (year < 0 || digits == 3) return -1;
  if (digits > 3) return year;
  return year + (year <= kLastYoungYear ? 2000 : 1900);
}

bool isShown(const QDate& date) {
  return date.isValid() && date.year() >= kFirstYear && date.year() <= kLastYear;
}

QDate dateIn(const QString& text) {
  const QStringList parts = text.split(u'-');
  if (parts.size() != 3) return {};
  const QDate date(fullYear(parts[2]), partNumber(parts[1]), partNumber(parts[0]));
  return isShown(date) ? date : QDate();
}

}  // namespace

DateBox::DateBox(QWidget* parent) : LineBox(parent) {
  setContent({});
}

QString DateBox::Text() const {
  return text() == pattern() ? QString() : text();
}

QDate DateBox::Date() const {
  const QVariant value = Value();
  if (!value.isValid()) return {};
  const double day = std::floor(value.toDouble());
  return std::abs(day) < kMostDays ? store::dateOfDay(static_cast<qint64>(day)) : QDate();
}

void DateBox::SetRawData(const QString& digits) {
  selectAll();
  insert(digits);
  settle();
}

QVariant DateBox::parsed(const QString& text) const {
  const QDate date = dateIn(text);
  return date.isValid() ? QVariant(store::dayOfDate(date)) : QVariant();
}

QString DateBox::shown(const QVariant& value) const {
  if (!value.isValid()) return pattern();
  bool ok = false;
  const double day = std::floor(value.toDouble(&ok));
  if (!ok || std::abs(day) >= kMostDays) return value.toString();
  return store::dateOfDay(static_cast<qint64>(day)).toString(QStringLiteral("dd-MM-yyyy"));
}

bool DateBox::takes(QChar letter) const {
  return isDigit(letter) || isSeparator(letter);
}

void DateBox::clean(QString& text, int& cursor) const {
  const QString behind = text.mid(cursor);
  text = laidOut(text.left(cursor));
  cursor = static_cast<int>(text.size());
  // What stood behind the cursor keeps its places, as far as it has not been typed over.
  text += pattern().mid(cursor);
  for (qsizetype i = 1; i <= behind.size() && i <= text.size() - cursor; ++i) {
    QChar& place = text[text.size() - i];
    const QChar letter = behind.at(behind.size() - i);
    if (place == u'_' && isDigit(letter)) place = letter;
  }
}

void DateBox::mouseReleaseEvent(QMouseEvent* event) {
  LineBox::mouseReleaseEvent(event);
  if (Text().isEmpty() && !hasSelectedText()) setCursorPosition(0);
}

}  // namespace platform
