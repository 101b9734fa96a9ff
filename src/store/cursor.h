#pragma once

#include <QVariant>
#include <QVector>
#include <memory>
#include <utility>

#include "store/connection.h"

namespace store {

// A column to be written, by its place in the fields, and its value.
using Change = std::pair<int, QVariant>;

// How a kind of recordset keeps its current row, reads and writes. The recordset above it checks
// what is allowed and tells its observers.
class Cursor {
 public:
  Cursor() = default;
  virtual ~Cursor() = default;
  Cursor(const Cursor&) = delete;
  Cursor& operator=(const Cursor&) = delete;

  virtual Connection& connection() const = 0;
  virtual const QVector<FieldInfo>& fields() const = 0;
  virtual qint64 count() const = 0;

  virtual bool bof() const = 0;
  virtual bool eof() const = 0;
  // True if a row is current; false at the ends and on a row just deleted.
  virtual bool onRow() const = 0;
  virtual void moveFirst() = 0;
  virtual void moveLast() = 0;
  virtual void moveBy(qint64 rows) = 0;
  virtual QVariant value(int field) = 0;
  virtual QByteArray bookmark() const = 0;
  virtual void setBookmark(const QByteArray& bookmark) = 0;
  virtual std::shared_ptr<Cursor> clone() const = 0;
  // Reads the rows anew, aside; requery() then takes them and cannot fail.
  virtual void prepareRequery() = 0;
  virtual void requery() = 0;
  virtual void refreshRow() = 0;

  // Writes to the archive. A new row's place in the set is told by its bookmark.
  virtual QByteArray insertRow(const QVector<Change>& values) = 0;
  virtual void updateRow(const QVector<Change>& values) = 0;
  virtual void deleteRow() = 0;
  // Takes the deleted current row, or a new row, out of or into the set.
  virtual void dropRow() = 0;
  virtual void addRow(const QByteArray& bookmark) = 0;

  // Sets with places only.
  virtual bool hasPlaces() const { return false; }
  virtual qint64 place() const { return -1; }
  // The places between which the cursor stands: the nearest rows that are not the current one.
  virtual qint64 placeBefore() const { return -1; }
  virtual qint64 placeBehind() const { return -1; }
  virtual void setPlace(qint64) {}
  virtual QVariant valueAt(qint64, int) { return {}; }
  virtual void expect(const QVector<int>&) {}
  virtual const std::vector<qint64>& hits(const QString& condition) = 0;

  // Table recordsets only.
  virtual void setIndex(const QString& name) = 0;
  virtual QString index() const { return {}; }
  virtual bool seek(const QString& comparison, const QVariantList& keys) = 0;
};

std::shared_ptr<Cursor> makeKeysetCursor(std::shared_ptr<Connection> connection,
                                         const QString& source);
std::shared_ptr<Cursor> makeTableCursor(std::shared_ptr<Connection> connection,
                                        const QString& table);

}  // namespace store
