#include "output/report_values.h"

#include <QLocale>
#include <cmath>

#include "platform/clock.h"
#include "store/value_text.h"

namespace tavolix::report {
namespace {

QDate dayOf(const QVariant& value) {
  return store::dateOfDay(static_cast<qint64>(std::floor(value.toDouble())));
}

QString dateText(const QDate& date, Format format) {
  const QLocale locale;
  return format == Format::LongDate ? locale.toString(date, QLocale::LongFormat)
                                    : locale.toString(date, QStringLiteral("dd/MM/yyyy"));
}

QString number(double value, int decimals) {
  return QLocale().toString(value, 'f', decimals);
}

// Numbers without separators of thousands: years and codes are numbers, too.
QString plain(const QVariant& value) {
  return value.typeId() == QMetaType::QString ? value.toString() : store::numberText(value);
}

Format usualFormat(store::FieldKind kind) {
  switch (kind) {
    case store::FieldKind::Date:
      return Format::Date;
    case store::FieldKind::Time:
      return Format::Duration;
    case store::FieldKind::YesNo:
      return Format::YesNo;
    default:
      return Format::Plain;
  }
}

QString fieldText(const Piece& piece, const Facts& facts) {
  const QVariant value = facts.rows->field(facts.row, piece.field);
  if (!value.isValid()) return {};
  const Format format = piece.format.value_or(usualFormat(facts.rows->kind(piece.field)));
  if (format == Format::List) return facts.names->listText(value.toLongLong());
  return formatted(value, format, piece.decimals);
}

// The count of rows, or the sum of a field.
double amount(const Piece& piece, const Totals& totals) {
  if (piece.sum < 0) return static_cast<double>(totals.rows);
  return totals.sums[static_cast<std::size_t>(piece.sum)];
}

QString shareText(const Piece& piece, const Facts& facts) {
  if (facts.whole == nullptr) return {};
  const double whole = amount(piece, *facts.whole);
  if (whole == 0) return {};
  return formatted(amount(piece, *facts.totals) / whole, Format::Percent, piece.decimals);
}

QString averageText(const Piece& piece, const Facts& facts) {
  const qint64 filled = facts.totals->filled[static_cast<std::size_t>(piece.sum)];
  if (filled == 0) return {};
  return formatted(amount(piece, *facts.totals) / static_cast<double>(filled),
                   piece.format.value_or(Format::Number), piece.decimals);
}

QString totalText(const Piece& piece, const Facts& facts) {
  if (facts.totals == nullptr) return {};
  if (piece.quantity == Quantity::Share) return shareText(piece, facts);
  if (piece.quantity == Quantity::Average) return averageText(piece, facts);
  const bool isTime = piece.sum >= 0 && facts.rows->summedKind(piece.sum) == store::FieldKind::Time;
  const Format usual = isTime ? Format::Duration : Format::Number;
  return formatted(amount(piece, *facts.totals), piece.format.value_or(usual), piece.decimals);
}

QString pagesText(int pages) {
  return pages > 0 ? QString::number(pages) : QStringLiteral("…");
}

QString pieceText(const Piece& piece, const Facts& facts) {
  switch (piece.quantity) {
    case Quantity::Literal:
      return piece.literal;
    case Quantity::Field:
      return fieldText(piece, facts);
    case Quantity::Page:
      return QString::number(facts.page);
    case Quantity::Pages:
      return pagesText(facts.pages);
    case Quantity::Date:
      return dateText(platform::today(), piece.format.value_or(Format::Date));
    case Quantity::Archive:
      return facts.names->archive;
    case Quantity::Title:
      return facts.names->title;
    case Quantity::Filter:
      return facts.names->filter;
    default:
      return totalText(piece, facts);
  }
}

bool isFieldLike(const Piece& piece) {
  return piece.quantity != Quantity::Literal && piece.quantity != Quantity::Page &&
         piece.quantity != Quantity::Pages;
}

// A value beside the operand of a condition: below, at or above 0.
int compare(const QVariant& value, store::FieldKind kind, const QString& operand) {
  if (kind == store::FieldKind::Text) {
    return value.toString().compare(operand, Qt::CaseInsensitive);
  }
  double other = operand.toDouble();
  if (operand == QLatin1String("oggi")) {
    other = static_cast<double>(store::dayOfDate(platform::today()));
  }
  const double own = value.toDouble();
  return own < other ? -1 : own > other ? 1 : 0;
}

}  // namespace

QString formatted(const QVariant& value, Format format, int decimals) {
  if (!value.isValid()) return {};
  switch (format) {
    case Format::Number:
      return number(value.toDouble(), decimals);
    case Format::Money:
      return QStringLiteral("L. ") + number(value.toDouble(), decimals);
    case Format::Date:
    case Format::LongDate:
      return dateText(dayOf(value), format);
    case Format::Duration:
      return store::durationText(value.toLongLong());
    case Format::YesNo:
      return value.toInt() != 0 ? QStringLiteral("Sì") : QStringLiteral("No");
    case Format::Mark:
      return value.toInt() != 0 ? QStringLiteral("✓") : QString();
    case Format::Percent:
      return number(100 * value.toDouble(), decimals) + u'%';
    case Format::Capitals:
      return QLocale().toUpper(value.toString());
    default:
      return plain(value);
  }
}

QString usualText(const Facts& facts, int field) {
  Piece piece;
  piece.quantity = Quantity::Field;
  piece.field = field;
  return fieldText(piece, facts);
}

QString textOf(const std::vector<Run>& runs, const Facts& facts, bool* isEmpty) {
  QString all;
  for (const Run& run : runs) {
    QString text;
    bool filled = false;
    for (const Piece& piece : run.pieces) {
      const QString part = pieceText(piece, facts);
      filled |= isFieldLike(piece) && !part.isEmpty();
      text += part;
    }
    if (!run.isOptional || filled) all += text;
    if (isEmpty != nullptr && filled) *isEmpty = false;
  }
  return all;
}

bool holds(const Condition& condition, const Facts& facts) {
  const QVariant value = facts.rows->field(facts.row, condition.field);
  const bool filled = value.isValid() && !value.toString().isEmpty();
  const bool isYesNo = facts.rows->kind(condition.field) == store::FieldKind::YesNo;
  const bool stands = filled && !(isYesNo && value.toInt() == 0);
  if (condition.comparison == Comparison::Filled) return stands;
  if (condition.comparison == Comparison::Empty) return !stands;
  if (!filled) return condition.comparison == Comparison::Unequal;
  const int order = compare(value, facts.rows->kind(condition.field), condition.operand);
  switch (condition.comparison) {
    case Comparison::Less:
      return order < 0;
    case Comparison::Greater:
      return order > 0;
    case Comparison::Equal:
      return order == 0;
    default:
      return order != 0;
  }
}

}  // namespace tavolix::report
