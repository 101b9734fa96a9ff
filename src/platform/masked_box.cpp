#include "platform/masked_box.h"

#include <QFocusEvent>
#include <QLocale>
#include <cmath>

namespace platform {
namespace {

constexpr int kAnyLength = 32767;  // of QLineEdit
constexpr double kExactWholes = 9007199254740992.0;

bool isWhole(const QVariant& value) {
  if (value.typeId() != QMetaType::Double) return true;
  const double number = value.toDouble();
  return std::abs(number) < kExactWholes && number == std::floor(number);
}

QString numberText(const QVariant& value, bool grouped) {
  QLocale locale;
  if (!grouped) locale.setNumberOptions(QLocale::OmitGroupSeparator);
  if (isWhole(value)) return locale.toString(value.toLongLong());
  return locale.toString(value.toDouble(), 'f', QLocale::FloatingPointShortest);
}

}  // namespace

void MaskedBox::SetMaxText(int length) {
  places_ = length;
  number_ = false;
  setMaxLength(length);
}

void MaskedBox::SetMask(const QString& mask) {
  places_ = static_cast<int>(mask.size());
  number_ = true;
  setMaxLength(kAnyLength);  // a stored number may have more digits
  settle();
}

void MaskedBox::SetFormat(const QString& format) {
  grouped_ = format.contains(u',');
  settle();
}

QVariant MaskedBox::parsed(const QString& text) const {
  if (text.isEmpty()) return {};
  if (!number_) return text;
  bool ok = false;
  const qlonglong number = text.toLongLong(&ok);
  return ok ? QVariant(number) : QVariant();
}

QString MaskedBox::shown(const QVariant& value) const {
  const bool isText = value.typeId() == QMetaType::QString;
  if (!number_ || isText || !value.isValid()) return value.toString();
  return numberText(value, grouped_ && !focused());
}

bool MaskedBox::takes(QChar letter) const {
  return !number_ || (letter >= u'0' && letter <= u'9');
}

// Digits typed over others take their places, as the places of a mask are.
void MaskedBox::overtype(QString& text, int cursor) const {
  const qsizetype put = text.size() - lastText().size();
  if (put > 0) text.remove(cursor, std::min(put, text.size() - cursor));
}

void MaskedBox::clean(QString& text, int& cursor) const {
  LineBox::clean(text, cursor);
  if (number_) overtype(text, cursor);
  cut(text, cursor, places_);
}

void MaskedBox::focusInEvent(QFocusEvent* event) {
  setPlaceholderText(QString(places_, u'_'));
  LineBox::focusInEvent(event);
}

void MaskedBox::focusOutEvent(QFocusEvent* event) {
  if (event->reason() != Qt::PopupFocusReason) setPlaceholderText(QString());
  LineBox::focusOutEvent(event);
}

}  // namespace platform
