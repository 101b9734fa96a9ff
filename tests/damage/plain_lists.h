#pragma once

#include <QHash>
#include <QString>
#include <QVariant>
#include <QVector>
#include <optional>

// The archive's lists as they follow from its tables alone: every table is read from end to end,
// no index helps, and the rows are put together here.
namespace plain {

// Null, then numbers, then texts in their order.
int compare(const QVariant& left, const QVariant& right);

using Row = QVector<QVariant>;

class Lists final {
 public:
  explicit Lists(const QString& path);

  // Rows of a stored query of the kind "one or two tables, their lookup texts", with all fields
  // and in order. Nothing where a table cannot be read, or where the archive holds another text
  // than the `good` one: then there is no telling.
  std::optional<QVector<Row>> list(const QString& query, const QString& good) const;
  // Rows of a table that begin with some values in some columns, in the order of all these columns.
  std::optional<QVector<Row>> rows(const QString& table, const QStringList& columns,
                                   const QVariantList& values) const;

 private:
  struct Table {
    QStringList columns;
    QVector<std::pair<qint64, Row>> rows;  // by their numbers
  };
  const Table* table(const QString& name, const QStringList& columns) const;

  QHash<QString, Table> tables_;
};

}  // namespace plain
