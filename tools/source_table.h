#pragma once

#include <QStringList>
#include <QVariant>
#include <QVector>

#include "store/field_info.h"

namespace tavolix::builder {

// A table in a text file (UTF-8): a line of column names, then one record a line, cells separated
// by tabs. Everything wrong in it is failure 3421, described by file, line and column.
class SourceTable final {
 public:
  // Failure 3024 without such a file.
  static SourceTable read(const QString& path);

  const QStringList& columns() const { return columns_; }
  // Place of a column, without case; -1 if there is none.
  int findColumn(const QString& name) const;
  // The same, but a missing column is refused.
  int column(const QString& name) const;
  qsizetype rows() const { return rows_.size(); }
  const QString& text(qsizetype row, int column) const { return rows_[row][column]; }
  // The cell as a field of the archive stores it: YYYY-MM-DD is a day number, h:mm:ss seconds,
  // "si" -1 and "no" 0, "\n" in a text a line break. Null if the cell is empty, but 0 for yes/no.
  QVariant value(qsizetype row, int column, const store::FieldInfo& field) const;

  [[noreturn]] void reject(qsizetype row, int column, const QString& reason) const;
  [[noreturn]] void rejectLine(qsizetype line, const QString& reason) const;

 private:
  explicit SourceTable(QString name) : name_(std::move(name)) {}
  void readHeader(const QString& line);
  void addRow(qsizetype line, const QString& text);

  QString name_;
  QStringList columns_;
  QVector<QStringList> rows_;
};

}  // namespace tavolix::builder
