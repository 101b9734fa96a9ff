#include "tools/source_table.h"

#include <QDate>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringDecoder>
#include <algorithm>

#include "store/failure.h"
#include "store/value_text.h"

namespace tavolix::builder {
namespace {

constexpr qsizetype kHeaderLine = 1;

QVariant toDay(const QString& cell) {
  // The pattern keeps out what the date's own reader takes with fewer digits.
  static const QRegularExpression pattern(QStringLiteral("^\\d{4}-\\d\\d-\\d\\d$"));
  if (!pattern.match(cell).hasMatch()) return {};
  const QDate date = QDate::fromString(cell, Qt::ISODate);
  return date.isValid() ? store::dayOfDate(date) : QVariant();
}

QVariant toSeconds(const QString& cell) {
  static const QRegularExpression pattern(QStringLiteral("^(\\d{1,3}):([0-5]\\d):([0-5]\\d)$"));
  const QRegularExpressionMatch match = pattern.match(cell);
  if (!match.hasMatch()) return {};
  return (match.captured(1).toInt() * 60 + match.captured(2).toInt()) * 60 +
         match.captured(3).toInt();
}

QVariant toYesNo(const QString& cell) {
  if (cell == QLatin1String("si")) return -1;
  return cell == QLatin1String("no") ? QVariant(0) : QVariant();
}

QVariant toNumber(const QString& cell) {
  static const QRegularExpression pattern(QStringLiteral("^-?\\d{1,15}(\\.\\d+)?$"));
  return pattern.match(cell).hasMatch() ? QVariant(cell.toDouble()) : QVariant();
}

struct Kind {
  store::FieldKind kind;
  QVariant (*convert)(const QString&);
  const char* expected;
};

constexpr Kind kKinds[] = {
    {store::FieldKind::Date, toDay, "data non valida (AAAA-MM-GG)"},
    {store::FieldKind::Time, toSeconds, "durata non valida (h:mm:ss)"},
    {store::FieldKind::YesNo, toYesNo, "valore diverso da si e no"},
    {store::FieldKind::Number, toNumber, "numero non valido"},
    {store::FieldKind::Long, toNumber, "numero non valido"},
    {store::FieldKind::Short, toNumber, "numero non valido"},
};

}  // namespace

SourceTable SourceTable::read(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    throw store::Failure(store::failure::kFileNotFound,
                         QStringLiteral("Impossibile leggere il file %1").arg(path));
  }
  SourceTable table(QFileInfo(path).fileName());
  const QList<QByteArray> lines = file.readAll().split('\n');
  for (qsizetype i = 0; i < lines.size(); ++i) {
    if (lines[i].isEmpty() && i + 1 == lines.size()) break;
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(lines[i]);
    if (decoder.hasError()) table.rejectLine(i + 1, QStringLiteral("testo non UTF-8"));
    i == 0 ? table.readHeader(text) : table.addRow(i + 1, text);
  }
  if (table.columns_.isEmpty()) table.rejectLine(kHeaderLine, QStringLiteral("file vuoto"));
  return table;
}

void SourceTable::readHeader(const QString& line) {
  for (const QString& name : line.trimmed().split(u'\t')) {
    if (findColumn(name) >= 0) {
      rejectLine(kHeaderLine, QStringLiteral("colonna %1: nome ripetuto").arg(name));
    }
    columns_.append(name);
  }
}

void SourceTable::addRow(qsizetype line, const QString& text) {
  QStringList cells = text.split(u'\t');
  if (cells.size() != columns_.size()) {
    rejectLine(line,
               QStringLiteral("%1 celle invece di %2").arg(cells.size()).arg(columns_.size()));
  }
  for (QString& cell : cells) cell = cell.trimmed();
  rows_.append(std::move(cells));
}

int SourceTable::findColumn(const QString& name) const {
  const auto found = std::find_if(columns_.begin(), columns_.end(), [&](const QString& column) {
    return column.compare(name, Qt::CaseInsensitive) == 0;
  });
  return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

int SourceTable::column(const QString& name) const {
  const int place = findColumn(name);
  if (place < 0) rejectLine(kHeaderLine, QStringLiteral("colonna %1: manca").arg(name));
  return place;
}

QVariant SourceTable::value(qsizetype row, int column, const store::FieldInfo& field) const {
  QString cell = text(row, column);
  if (cell.isEmpty()) return field.kind == store::FieldKind::YesNo ? QVariant(0) : QVariant();
  for (const Kind& kind : kKinds) {
    if (kind.kind != field.kind) continue;
    QVariant value = kind.convert(cell);
    if (!value.isValid()) {
      reject(row, column, QStringLiteral("%1: %2").arg(QString::fromUtf8(kind.expected), cell));
    }
    return value;
  }
  cell.replace(QLatin1String("\\n"), QLatin1String("\n"));
  if (field.size > 0 && cell.size() > field.size) {
    reject(row, column, QStringLiteral("testo oltre i %1 caratteri").arg(field.size));
  }
  return cell;
}

void SourceTable::reject(qsizetype row, int column, const QString& reason) const {
  rejectLine(row + kHeaderLine + 1, QStringLiteral("colonna %1: %2").arg(columns_[column], reason));
}

void SourceTable::rejectLine(qsizetype line, const QString& reason) const {
  throw store::Failure(store::failure::kConversion,
                       QStringLiteral("%1:%2: %3").arg(name_).arg(line).arg(reason));
}

}  // namespace tavolix::builder
