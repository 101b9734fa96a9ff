#include "platform/masked_box.h"

#include <QPainter>
#include <QStyleOptionFrame>

#include "store/value_text.h"

namespace platform {
namespace {

constexpr int kAnyLength = 32767;  // of QLineEdit
constexpr int kTextMargin = 2;     // of QLineEdit, on either side of its text
constexpr int kFaint = 110;        // of 255

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
  return store::numberText(
      value, grouped_ && !focused() ? store::Grouping::Thousands : store::Grouping::None);
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

// Not a placeholder, which is gone with the first letter, and is read out by screen readers.
void MaskedBox::paintEvent(QPaintEvent* event) {
  LineBox::paintEvent(event);
  const qsizetype open = places_ - text().size();
  if (open <= 0 || (grouped_ && !focused())) return;
  QStyleOptionFrame frame;
  initStyleOption(&frame);
  QRect room = style()->subElementRect(QStyle::SE_LineEditContents, &frame, this);
  room.adjust(kTextMargin + fontMetrics().horizontalAdvance(text()), 0, -kTextMargin, 0);
  if (room.width() <= 0) return;
  QPainter painter(this);
  painter.setClipRect(room);
  QColor faint = palette().color(QPalette::Text);
  faint.setAlpha(kFaint);
  painter.setPen(faint);
  painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                   QString(open, u'_'));
}

}  // namespace platform
