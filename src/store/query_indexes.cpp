// Where the keys of a query need less than the join of its tables.

#include <QSet>
#include <algorithm>

#include "store/query.h"
#include "store/sql_walk.h"

namespace store {

using sql::Expr;
using sql::ExprKind;
using sql::ExprPtr;
using sql::Source;
using sql::Walk;

// The columns of the first table that a condition gives their values; false if it does more.
bool Query::fixedColumns(const ExprPtr& where, QVector<int>& columns) const {
  if (!where) return true;
  if (where->kind != ExprKind::Binary) return false;
  if (where->name.compare(QLatin1String("and"), Qt::CaseInsensitive) == 0) {
    return fixedColumns(where->args[0], columns) && fixedColumns(where->args[1], columns);
  }
  if (where->name != QLatin1String("=") || where->args[1]->kind != ExprKind::Literal ||
      sourceOf(*where->args[0]) != keyTables_.front()) {
    return false;
  }
  columns.append(keyTables_.front()->table->findColumn(where->args[0]->name));
  return true;
}

bool Query::hasIndexOrder() const {
  if (keyTables_.size() != 1 || sortTerms_.empty() || keyOrderDescending_) return false;
  const TableInfo& table = *keyTables_.front()->table;
  QVector<int> fixed;
  if (!fixedColumns(resolved_->where, fixed)) return false;
  QVector<int> sorted;
  for (const SortTerm& term : sortTerms_) {
    if (term.descending || term.list != nullptr || sourceOf(*term.expr) != keyTables_.front()) {
      return false;
    }
    sorted.append(table.findColumn(term.expr->name));
  }
  return std::any_of(table.indexes.begin(), table.indexes.end(), [&](const IndexInfo& index) {
    const auto begin = index.columns.begin();
    return index.columns.size() == fixed.size() + sorted.size() &&
           std::is_permutation(begin, begin + fixed.size(), fixed.begin()) &&
           std::equal(sorted.begin(), sorted.end(), begin + fixed.size());
  });
}

// True if the condition just gives a column of the first table its value.
bool Query::fixesColumn() const {
  const ExprPtr& where = resolved_->where;
  return where && where->kind == ExprKind::Binary && where->name == QLatin1String("=") &&
         sourceOf(*where->args[0]) == keyTables_.front() &&
         where->args[1]->kind == ExprKind::Literal;
}

std::optional<Query::Halves> Query::halves() const {
  const QString pointer = joinColumns().first;
  if (pointer.isEmpty()) return std::nullopt;
  const bool sorts = std::all_of(sortTerms_.begin(), sortTerms_.end(), [&](const SortTerm& term) {
    return sourceOf(*term.expr) == keyTables_[0];
  });
  if (!sorts || !keyOrder_ || keyOrderDescending_ || sourceOf(*keyOrder_) != keyTables_[1]) {
    return std::nullopt;
  }
  if (resolved_->where && !fixesColumn()) return std::nullopt;
  const Source& second = *keyTables_[1];
  if (second.table->findColumn(joinColumns().second) != second.table->keyColumn) {
    return std::nullopt;
  }
  return Halves{pointersOf(*keyTables_[0], pointer),
                {"SELECT tvx_sum(rowid) FROM " + sql::quoteName(second.table->name), {}}};
}

sql::Statement Query::pointersOf(const Source& first, const QString& pointer) const {
  const QByteArray alias = sql::quoteName(first.alias);
  const QByteArray target = alias + "." + sql::quoteName(pointer);
  sql::Printer printer;
  printer.text("SELECT " + alias + ".rowid, " + target);
  for (const SortTerm& term : sortTerms_) printer.text(", ").expression(*term.expr);
  printer.text(" FROM ").text(sql::quoteName(first.table->name)).text(" AS ").text(alias);
  printer.where(resolved_->where, nullptr).text(" ORDER BY " + target + ", " + alias + ".rowid");
  return printer.take();
}

}  // namespace store
