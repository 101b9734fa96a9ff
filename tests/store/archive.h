#pragma once

#include <QTemporaryDir>
#include <ostream>
#include <random>

#include "store/database.h"

inline void PrintTo(const QString& text, std::ostream* out) {
  *out << text.toStdString();
}

namespace store {

// A file of the source tree.
QByteArray sourceFile(const QString& path);

// A new archive in a folder of its own, with all tables and stored queries and a few records:
// books 1 to 7 (one with Null in most columns), magazines 8 and 9, and the lists they use.
class Archive final {
 public:
  Archive();

  const QString& path() const { return path_; }
  QString path(const QString& name) const { return folder_.filePath(name); }
  Database& operator*() const { return *database_; }
  Database* operator->() const { return database_.get(); }
  RecordsetPtr open(const QString& source, RecordsetType type = RecordsetType::Dynaset) const {
    return database_->OpenRecordset(source, type);
  }

  // What another program does to the file: statements in SQLite's language.
  void outside(const QByteArray& statements) const;
  // The same, by a program that stays until the result is let go.
  std::shared_ptr<void> hold(const QByteArray& statements) const;
  // The values that a statement of another program gives, rows parted by blanks.
  QString outsideValues(const QByteArray& statement) const;

 private:
  QTemporaryDir folder_;
  QString path_;
  DatabasePtr database_;
};

using Values = QVector<std::pair<QString, QVariant>>;
void setAll(Recordset& rows, const Values& values);
// Writes a new row, or values of the current one.
void add(Recordset& rows, const Values& values = {});
void change(Recordset& rows, const Values& values);

// A field of all rows from the first on, parted by blanks; Null is "-".
QString valuesOf(Recordset& rows, const QString& field);
QString textOf(const QVariant& value);
// Null first, then numbers, then texts in their order: below, at or above 0.
int compareValues(const QVariant& left, const QVariant& right);

// "L'isola", "ÀB 3", ...: short texts of few letters, so that equal and nearly equal ones are many.
QString randomText(std::mt19937& random);

// "e|è|é": the texts between the bars.
std::vector<std::string> split(const std::string& line, char separator = '|');

// The number of the failure that some work ends with, 0 without one.
template <typename Work>
int failureOf(Work&& work) {
  try {
    work();
    return 0;
  } catch (const Failure& failure) {
    return failure.number();
  }
}

}  // namespace store
