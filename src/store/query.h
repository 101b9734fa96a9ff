#pragma once

#include <QMap>
#include <optional>

#include "store/sql_printer.h"

namespace store {

// A source of a recordset, compiled: what its fields are, and the statements that list its rows'
// keys and read a row by its keys.
class Query final {
 public:
  // `source` is a table, a stored query or a SELECT.
  Query(const QString& source, const Catalog& catalog);

  const QVector<FieldInfo>& fields() const { return fields_; }
  // Tables whose rows make up a row of the query, at most two; none if its rows have no keys.
  const std::vector<const sql::Source*>& keyTables() const { return keyTables_; }
  // Names of all tables that are read, as the file has them.
  std::vector<QByteArray> tables() const;
  // Place in keyTables() of the table that holds a field, -1 if no such table does.
  int tableOf(int field) const { return tableOf_[field]; }

  // The columns of the two key tables that their rows are joined by; empty if there are none.
  std::pair<QString, QString> joinColumns() const;

  // The order's terms that the statement of keys() leaves to the caller. A text taken from a
  // joined list is replaced by the list's key (see listOf).
  struct SortTerm {
    sql::ExprPtr expr;
    bool descending = false;
    const sql::Source* list = nullptr;  // the expression is a key of this list
    QString listColumn;
  };
  const std::vector<SortTerm>& sortTerms() const { return sortTerms_; }

  // True if the rows of keys() are in order but for sortTerms(), whose values follow the keys.
  bool leavesSorting() const { return !sortTerms_.empty() && !hasIndexOrder(); }
  // Keys of all rows, in the stored order.
  sql::Statement keys() const;
  // The same from the first table alone, as if each row that it points at were there: `targets` is
  // the sum of those that are (see keyMark). Nothing where a condition or order needs the second
  // table.
  struct Halves {
    sql::Statement pointers;
    sql::Statement targets;
  };
  std::optional<Halves> halves() const;
  // Keys of the rows that meet a condition, in any order: of those that keys() lists, or of all.
  sql::Statement keysWhere(const sql::ExprPtr& condition, bool listed) const;
  // Has a row if that of the keys, which are the statement's last values, meets a condition.
  sql::Statement testByKeys(const sql::ExprPtr& condition) const;
  // True if whether keys() lists a row is said by the row itself.
  bool listsByRow() const;
  // Some fields of one row by its keys, which are the statement's values behind those given.
  sql::Statement rowByKeys(const QVector<int>& fields) const;
  // Some fields of the rows whose column equals a value, in the query's order. The value is given
  // when the statement is run, as its value at `place`.
  sql::Statement rowsByValue(const sql::ExprPtr& column, const QVector<int>& fields,
                             int& place) const;
  // Place in keyTables() of the table whose key a field is, -1 if it is none.
  int keyTableOf(int field) const;
  sql::ExprPtr condition(const QString& text, const Catalog& catalog) const;

  // Without keys, all rows are to be copied to a table of this name and with these columns, in
  // order; keysWhere(), rowByKeys() and condition() are about that table, its row number the key.
  sql::Statement everything() const;
  static QString resultName() { return QStringLiteral("result"); }
  static QString resultColumn(int field) { return QStringLiteral("c%1").arg(field); }

 private:
  void findKeyTables();
  void describeFields();
  QString lookupKeyOf(const sql::OutColumn& column) const;
  const sql::Source* listOf(const sql::Expr& expr, sql::ExprPtr* key) const;
  const sql::Source* sourceOf(const sql::Expr& column) const;
  bool hasOneMatch(const sql::Source& joined) const;
  void splitOrder();
  bool isKey(const sql::Expr& expr) const;
  bool isUnique(const sql::Expr& key) const;
  sql::ExprPtr orderColumn() const;
  sql::Resolved sourcesOf(const std::vector<sql::ExprPtr>& conditions) const;
  void printKeys(sql::Printer& printer) const;
  sql::Statement rowOrder() const;
  void printFields(sql::Printer& printer, const QVector<int>& fields) const;
  void printKeyTests(sql::Printer& printer, bool first) const;
  sql::Statement pointersOf(const sql::Source& first, const QString& pointer) const;
  bool fixesColumn() const;
  bool fixedColumns(const sql::ExprPtr& where, QVector<int>& columns) const;
  bool hasIndexOrder() const;

  sql::ResolvedPtr resolved_;
  QVector<FieldInfo> fields_;
  QVector<int> tableOf_;
  std::vector<const sql::Source*> keyTables_;
  std::vector<SortTerm> sortTerms_;
  sql::ExprPtr keyOrder_;
  bool keyOrderDescending_ = false;
};

}  // namespace store
