// The ways by indexes to the rows of a query.

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

std::vector<const TableInfo*> Query::indexedTables() const {
  std::vector<const TableInfo*> tables;
  for (const Source& source : resolved_->from) {
    const bool byNumber = source.join == sql::Join::Left && hasOneMatch(source);
    if (source.table != nullptr && !byNumber) tables.push_back(source.table);
  }
  return tables;
}

Query::Indexes Query::usableIndexes(const ExprPtr& condition) const {
  const sql::Resolved sources = sourcesOf({resolved_->where, condition});
  Indexes usable;
  for (const Source& source : sources.from) {
    if (source.table == nullptr) continue;
    QSet<int> named;
    Walk walk;
    walk.expression = [&](const Expr& expr) {
      const bool ours = expr.kind == ExprKind::Column && expr.qualifier == source.alias;
      if (ours) named.insert(source.table->findColumn(expr.name));
    };
    walk.through(resolved_->where);
    walk.through(condition);
    for (const Source& other : sources.from) walk.through(other.on);
    // One table may be read in an index's order.
    if (keyTables_.size() == 1 && !sortTerms_.empty()) walk.through(sortTerms_.front().expr);
    for (const IndexInfo& index : source.table->indexes) {
      if (named.contains(index.columns.front())) usable.emplace_back(source.table, &index);
    }
  }
  return usable;
}

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

bool Query::hasWalk() const {
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

std::optional<sql::Statement> Query::walk() const {
  if (!hasWalk()) return std::nullopt;
  const Source& source = *keyTables_.front();
  const QByteArray key = sql::quoteName(source.alias) + ".rowid";
  sql::Printer printer;
  printer.text("SELECT ").text(key).text(" FROM ").text(sql::quoteName(source.table->name));
  printer.text(" AS ").text(sql::quoteName(source.alias)).where(resolved_->where, nullptr);
  printer.text(resolved_->where ? " AND " : " WHERE ").text("tvx_take(" + key + ") ORDER BY ");
  for (const SortTerm& term : sortTerms_) printer.expression(*term.expr).text(", ");
  return printer.text(key).take();
}

// True if the condition just gives a column of the first table its value.
bool Query::fixesColumn() const {
  const ExprPtr& where = resolved_->where;
  return where && where->kind == ExprKind::Binary && where->name == QLatin1String("=") &&
         sourceOf(*where->args[0]) == keyTables_.front() &&
         where->args[1]->kind == ExprKind::Literal;
}

// The index of the first table that begins with what the condition fixes, then the pointer.
const IndexInfo* Query::indexToWalk(const QString& pointer) const {
  const Source& first = *keyTables_.front();
  const TableInfo& table = *first.table;
  QVector<int> wanted;
  if (const ExprPtr& where = resolved_->where) {
    if (!fixesColumn()) return nullptr;
    wanted.append(table.findColumn(where->args[0]->name));
  }
  wanted.append(table.findColumn(pointer));
  const auto found = std::find_if(table.indexes.begin(), table.indexes.end(),
                                  [&](const IndexInfo& index) { return index.columns == wanted; });
  return found == table.indexes.end() ? nullptr : &*found;
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
  const IndexInfo* index = indexToWalk(pointer);
  if (index == nullptr) return std::nullopt;
  const Source& first = *keyTables_[0];
  const Source& second = *keyTables_[1];
  if (second.table->findColumn(joinColumns().second) != second.table->keyColumn) {
    return std::nullopt;
  }
  const QByteArray target = sql::quoteName(second.table->name);
  Halves halves{pointersOf(first, pointer),
                {"SELECT rowid FROM " + target + " WHERE tvx_take(rowid) ORDER BY rowid", {}},
                {{first.table, index}}};
  for (const IndexInfo& other : second.table->indexes) {
    if (other.columns == QVector<int>{second.table->keyColumn}) {
      halves.indexes.emplace_back(second.table, &other);
    }
  }
  return halves;
}

sql::Statement Query::pairCount() const {
  const QByteArray first = sql::quoteName(keyTables_[0]->alias);
  const QByteArray second = sql::quoteName(keyTables_[1]->alias);
  sql::Printer printer;
  printer.text("SELECT count(*) FROM ").text(sql::quoteName(keyTables_[0]->table->name));
  printer.text(" AS ").text(first).text(" NOT INDEXED CROSS JOIN ");
  printer.text(sql::quoteName(keyTables_[1]->table->name)).text(" AS ").text(second);
  printer.text(" NOT INDEXED ON ").text(second).text(".rowid = ").text(first).text(".");
  return printer.text(sql::quoteName(joinColumns().first)).where(resolved_->where, nullptr).take();
}

// With sort values they are rows; without, the scan hands number and key over by itself.
sql::Statement Query::pointersOf(const Source& first, const QString& pointer) const {
  const QByteArray alias = sql::quoteName(first.alias);
  const QByteArray both = alias + "." + sql::quoteName(pointer) + ", " + alias + ".rowid";
  sql::Printer printer;
  printer.text("SELECT ").text(both);
  for (const SortTerm& term : sortTerms_) printer.text(", ").expression(*term.expr);
  printer.text(" FROM ").text(sql::quoteName(first.table->name)).text(" AS ").text(alias);
  printer.where(resolved_->where, nullptr);
  if (sortTerms_.empty()) {
    printer.text(resolved_->where ? " AND " : " WHERE ").text("tvx_take(" + both + ")");
  }
  return printer.text(" ORDER BY ").text(both).take();
}

}  // namespace store
