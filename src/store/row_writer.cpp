#include "store/row_writer.h"

#include <cmath>
#include <limits>

namespace store {
namespace {

[[noreturn]] void rowGone() {
  throw Failure(failure::kRecordDeleted, QStringLiteral("Il record e' stato eliminato"));
}

struct Range {
  double least;
  double most;
};

// Days from 1 January 100 to the end of 31 December 9999, counted from 30 December 1899.
constexpr Range kDays = {-657434.0, 2958466.0 - 1e-9};

Range rangeOf(FieldKind kind) {
  constexpr double most = std::numeric_limits<double>::max();
  switch (kind) {
    case FieldKind::Short:
      return {-32768.0, 32767.0};
    case FieldKind::Date:
      return kDays;
    case FieldKind::Long:
    case FieldKind::Counter:
    case FieldKind::Time:
      return {-2147483648.0, 2147483647.0};
    default:
      return {-most, most};
  }
}

bool isWhole(FieldKind kind) {
  return kind != FieldKind::Number && kind != FieldKind::Date;
}

[[noreturn]] void wrongKind(const QVariant& value, const FieldInfo& field) {
  throw Failure(failure::kConversion, QStringLiteral("Valore non valido per il campo %1: %2")
                                          .arg(field.name, value.toString().left(60)));
}

QVariant toText(const QVariant& value, const FieldInfo& field) {
  const QString text = value.toString();
  if (field.size > 0 && text.size() > field.size) {
    throw Failure(failure::kTextTooLong,
                  QStringLiteral("Il testo supera i %1 caratteri del campo %2")
                      .arg(field.size)
                      .arg(field.name));
  }
  return text;
}

QVariant toNumber(const QVariant& value, const FieldInfo& field) {
  bool ok = false;
  const double number = value.toDouble(&ok);
  if (!ok || std::isnan(number)) wrongKind(value, field);
  const Range range = rangeOf(field.kind);
  if (number < range.least || number > range.most) {
    throw Failure(failure::kOverflow, QStringLiteral("Valore fuori dai limiti per il campo %1: %2")
                                          .arg(field.name, value.toString().left(60)));
  }
  if (isWhole(field.kind)) return static_cast<qlonglong>(std::llround(number));
  // Whole values stay whole in the file, also beyond what a double tells apart.
  const bool isReal = value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float;
  const qlonglong whole = value.toLongLong(&ok);
  return ok && !isReal ? QVariant(whole) : QVariant(number);
}

}  // namespace

QVariant toKind(const QVariant& value, const FieldInfo& field) {
  if (!value.isValid() || value.isNull()) return {};
  if (field.kind == FieldKind::Text) return toText(value, field);
  if (value.typeId() == QMetaType::QString && value.toString().trimmed().isEmpty()) return {};
  if (value.typeId() == QMetaType::Bool) return value.toBool() ? -1LL : 0LL;
  QVariant number = toNumber(value, field);
  if (field.kind == FieldKind::YesNo) return number.toDouble() != 0.0 ? -1LL : 0LL;
  return number;
}

qint64 insertInto(Connection& connection, const TableInfo& table,
                  const QVector<std::pair<QString, QVariant>>& values) {
  QByteArray names;
  QByteArray places;
  QVariantList bound;
  for (const auto& [name, value] : values) {
    names += (names.isEmpty() ? "" : ", ") + sql::quoteName(name);
    places += places.isEmpty() ? "?" : ", ?";
    bound.append(value);
  }
  const QByteArray target = "INSERT OR ABORT INTO " + sql::quoteName(table.name);
  connection.execute(values.isEmpty() ? target + " DEFAULT VALUES"
                                      : target + " (" + names + ") VALUES (" + places + ")",
                     bound);
  // A number beyond what other tables' columns can hold would be a row that nothing can point at.
  const qint64 key = connection.lastInsertKey();
  if (key > std::numeric_limits<qint32>::max()) {
    throw Failure(
        failure::kOverflow,
        QStringLiteral("La tabella %1 non ha piu' numeri per nuovi record").arg(table.name));
  }
  return key;
}

void updateIn(Connection& connection, const TableInfo& table, qint64 key,
              const QVector<std::pair<QString, QVariant>>& values) {
  QByteArray text;
  QVariantList bound;
  for (const auto& [name, value] : values) {
    if (table.keyColumn >= 0 && table.findColumn(name) == table.keyColumn) {
      throw Failure(failure::kFieldNotUpdatable,
                    QStringLiteral("La chiave %1 di un record non e' modificabile").arg(name));
    }
    text += (text.isEmpty() ? "" : ", ") + sql::quoteName(name) + " = ?";
    bound.append(value);
  }
  bound.append(key);
  text = "UPDATE OR ABORT " + sql::quoteName(table.name) + " SET " + text + " WHERE rowid = ?";
  if (connection.execute(text, bound) == 0) rowGone();
}

void deleteFrom(Connection& connection, const TableInfo& table, qint64 key) {
  if (connection.execute("DELETE FROM " + sql::quoteName(table.name) + " WHERE rowid = ?", {key}) ==
      0) {
    rowGone();
  }
}

}  // namespace store
