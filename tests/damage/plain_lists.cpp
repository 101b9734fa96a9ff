#include "damage/plain_lists.h"

#include <QRegularExpression>
#include <algorithm>

#include "disk/plain_file.h"
#include "store/connection.h"
#include "store/sqlite_language.h"
#include "store/text_order.h"

namespace plain {
namespace {

bool isNumber(const QVariant& value, qint64 number) {
  return value.isValid() && value.typeId() != QMetaType::QString &&
         value.toDouble() == static_cast<double>(number);
}

struct Lookup {
  qsizetype key;  // place of the column that selects
  QHash<qint64, QVariant> texts;
};

}  // namespace

int compare(const QVariant& left, const QVariant& right) {
  if (!left.isValid() || !right.isValid()) return int(left.isValid()) - int(right.isValid());
  const bool isText = left.typeId() == QMetaType::QString;
  if (isText != (right.typeId() == QMetaType::QString)) return isText ? 1 : -1;
  if (isText) {
    return store::compareText(left.toString().toStdString(), right.toString().toStdString());
  }
  return left.toDouble() < right.toDouble() ? -1 : int(left.toDouble() > right.toDouble());
}

Lists::Lists(const QString& path) {
  SQLite::Database file(path.toStdString(), SQLite::OPEN_READWRITE);
  store::addLanguage(file.getHandle());
  for (const char* name : {"MAIN", "LIB", "RIV", "AUD", "VID", "COM", "MED", "OGG", "PER", "RIVSUB",
                           "AUDSUB", "PERSUB", "TAB", "CFG", "GRDCONFIG", "QUERYDEF"}) {
    try {
      Table table;
      SQLite::Statement rows(file, std::string("SELECT rowid, * FROM ") + name + " NOT INDEXED");
      for (int i = 1; i < rows.getColumnCount(); ++i) {
        table.columns.append(QString::fromUtf8(rows.getColumnName(i)));
      }
      QHash<qint64, Row> known;
      bool isOne = true;
      while (rows.executeStep()) {
        Row row;
        for (int i = 1; i < rows.getColumnCount(); ++i) row.append(store::columnValue(rows, i));
        const qint64 number = rows.getColumn(0).getInt64();
        // A page that is there twice; if its rows differ, either may be meant.
        isOne = isOne && known.value(number, row) == row;
        if (!known.contains(number)) table.rows.append({number, row});
        known.insert(number, row);
      }
      if (!isOne) continue;
      tables_.insert(QLatin1String(name), table);
    } catch (const SQLite::Exception&) {
      continue;  // not to be read
    }
  }
}

const Lists::Table* Lists::table(const QString& name, const QStringList& columns) const {
  const auto found = tables_.constFind(name);
  if (found == tables_.constEnd()) return nullptr;
  for (const QString& column : columns) {
    if (!found->columns.contains(column)) return nullptr;
  }
  return &*found;
}

std::optional<QVector<Row>> Lists::rows(const QString& name, const QStringList& columns,
                                        const QVariantList& values) const {
  const Table* from = table(name, columns);
  if (from == nullptr) return {};
  const auto at = [&](const Row& row, qsizetype i) {
    return row[from->columns.indexOf(columns[i])];
  };
  QVector<Row> found;
  for (const auto& [number, row] : from->rows) {
    bool same = true;
    for (qsizetype i = 0; i < values.size(); ++i)
      same = same && compare(at(row, i), values[i]) == 0;
    if (same) found.append(row);
  }
  std::stable_sort(found.begin(), found.end(), [&](const Row& a, const Row& b) {
    for (qsizetype i = 0; i < columns.size(); ++i) {
      if (const int order = compare(at(a, i), at(b, i))) return order < 0;
    }
    return false;
  });
  return found;
}

std::optional<QVector<Row>> Lists::list(const QString& query, const QString& good) const {
  const auto texts = rows(QStringLiteral("QUERYDEF"), {QStringLiteral("Name")}, {query});
  if (!texts || texts->size() != 1 || texts->front()[1] != good) return {};
  static const QRegularExpression selected(
      QStringLiteral("SELECT (\\w+)\\.\\*(?:,\\s*(\\w+)\\.\\*)?"));
  static const QRegularExpression kind(QStringLiteral("MAIN.TipoRac = (\\d)"));
  static const QRegularExpression joined(
      QStringLiteral("LEFT JOIN TAB AS \\w+ ON (\\w+)\\.(\\w+) = "));
  const auto names = selected.match(good);
  const bool two = !names.captured(2).isEmpty();
  const Table* first =
      table(names.captured(1), two ? QStringList{"RacID", "TipoRac"} : QStringList{"ID"});
  const Table* second = two ? table(names.captured(2), {"ID"}) : nullptr;
  const Table* lookup = table(QStringLiteral("TAB"), {"ID", "Desc"});
  if (first == nullptr || (two && second == nullptr) || lookup == nullptr) return {};

  // The rows of both tables side by side, by the second one's number.
  QVector<std::pair<std::pair<qint64, qint64>, Row>> all;
  QMultiHash<qint64, qsizetype> partners;
  for (qsizetype i = 0; two && i < second->rows.size(); ++i) {
    partners.insert(second->rows[i].second[second->columns.indexOf("ID")].toLongLong(), i);
  }
  for (const auto& [number, row] : first->rows) {
    if (!two) {
      all.append({{number, 0}, row});
      continue;
    }
    if (!isNumber(row[first->columns.indexOf("TipoRac")], kind.match(good).captured(1).toInt()))
      continue;
    const QVariant pointer = row[first->columns.indexOf("RacID")];
    if (!isNumber(pointer, pointer.toLongLong())) continue;
    for (const qsizetype partner : partners.values(pointer.toLongLong())) {
      all.append({{pointer.toLongLong(), number}, row + second->rows[partner].second});
    }
  }
  std::stable_sort(all.begin(), all.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });

  QHash<qint64, QVariant> descriptions;
  for (const auto& [number, row] : lookup->rows) {
    const QVariant key = row[lookup->columns.indexOf("ID")];
    if (key.isValid()) descriptions.insert(key.toLongLong(), row[lookup->columns.indexOf("Desc")]);
  }
  QVector<Row> result;
  for (auto& [keys, row] : all) {
    const Row values = row;
    for (auto join = joined.globalMatch(good); join.hasNext();) {
      const auto match = join.next();
      const bool ofFirst = match.captured(1) == names.captured(1);
      const qsizetype place = (ofFirst ? first : second)->columns.indexOf(match.captured(2));
      if (place < 0) return {};
      const QVariant key = values[place + (ofFirst ? 0 : first->columns.size())];
      row.append(isNumber(key, key.toLongLong()) ? descriptions.value(key.toLongLong())
                                                 : QVariant());
    }
    result.append(row);
  }
  return result;
}

}  // namespace plain
