#pragma once

#include <QHash>
#include <QStringList>
#include <QVariant>
#include <memory>
#include <vector>

namespace store {

// Reads files of the record engine that archives were kept in before, Jet 3 and Jet 4. Nothing is
// ever written to them. What a damaged file does not give is left out.

enum class JetKind { Text, Number, Money, Date, YesNo, Unknown };

struct JetColumn {
  QString name;
  JetKind kind = JetKind::Unknown;
};

class JetLibrary;

// The rows of a table, one after the other, in the order of the file.
class JetTable final {
 public:
  // Fails with 3049 if the page does not tell of a table.
  JetTable(std::shared_ptr<JetLibrary> library, quint32 page);
  ~JetTable();
  JetTable(const JetTable&) = delete;
  JetTable& operator=(const JetTable&) = delete;

  const QVector<JetColumn>& columns() const { return columns_; }
  // Place of a column by its name, without case; else -1.
  int findColumn(const QString& name) const;
  // The number of rows that the table is said to have; damage leaves fewer.
  qint64 rowsTold() const;

  // Goes to the next row, before the first at the begin; false behind the last.
  bool next();
  // A value of the current row: invalid for Null and for a column of another kind, QString, double,
  // qlonglong for whole numbers and for money in ten-thousandths, -1 and 0 for yes and no; a date
  // is a day number with its part of a day, also before day 0.
  QVariant value(int column) const { return values_[static_cast<std::size_t>(column)]; }
  // By name; invalid if there is no such column.
  QVariant value(const QString& name) const;
  // True for a value that stands in the file and cannot be read any more.
  bool isLost(int column) const { return lost_[static_cast<std::size_t>(column)]; }

 private:
  struct Work;

  bool nextPage();
  bool readRow(int row);
  void readField(int column);

  std::shared_ptr<JetLibrary> library_;
  std::unique_ptr<Work> work_;
  QVector<JetColumn> columns_;
  std::vector<QVariant> values_;
  std::vector<bool> lost_;
};

class JetFile final {
 public:
  // True if the content of a file is that of this engine, whatever its name.
  static bool isJet(const QString& path);

  // Fails with 3024 (no such file), 3343 (another format, or one of later engines), 3049 (damaged),
  // 3051.
  explicit JetFile(const QString& path);

  // The names of the user's tables.
  const QStringList& tables() const { return names_; }
  bool has(const QString& table) const { return pages_.contains(table.toUpper()); }
  // By name, without case. Fails with 3078 (no such table), 3049.
  std::unique_ptr<JetTable> open(const QString& table) const;

 private:
  void readCatalog();

  std::shared_ptr<JetLibrary> library_;
  QStringList names_;
  QHash<QString, quint32> pages_;
};

}  // namespace store
