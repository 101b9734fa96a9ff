#include "store/query.h"

#include <QSet>
#include <algorithm>

#include "store/failure.h"
#include "store/sql_functions.h"
#include "store/sql_parser.h"
#include "store/sql_walk.h"

namespace store {
namespace {

using sql::Expr;
using sql::ExprKind;
using sql::ExprPtr;
using sql::Source;
using sql::Walk;

std::shared_ptr<const sql::Select> selectOf(const QString& source) {
  if (sql::looksLikeSelect(source)) return sql::parseSelect(source);
  sql::Select select;
  sql::SelectCore core;
  core.items.emplace_back();
  core.from.push_back({source.trimmed(), {}, sql::Join::Inner, nullptr});
  select.cores.push_back(std::move(core));
  return std::make_shared<const sql::Select>(std::move(select));
}

bool sameColumn(const Expr& a, const Expr& b) {
  return a.kind == ExprKind::Column && b.kind == ExprKind::Column && a.qualifier == b.qualifier &&
         a.name.compare(b.name, Qt::CaseInsensitive) == 0;
}

bool isKeyOf(const Expr& expr, const Source& source) {
  return expr.kind == ExprKind::Column && source.table != nullptr && source.table->keyColumn >= 0 &&
         expr.qualifier == source.alias &&
         source.table->findColumn(expr.name) == source.table->keyColumn;
}

}  // namespace

Query::Query(const QString& source, const Catalog& catalog)
    : resolved_(sql::resolve(*selectOf(source), catalog)) {
  findKeyTables();
  describeFields();
  splitOrder();
}

void Query::findKeyTables() {
  if (!resolved_->isPlain()) return;
  std::vector<const Source*> found;
  for (const Source& source : resolved_->from) {
    if (source.join == sql::Join::Inner) found.push_back(&source);
    // A LEFT JOIN that may find several rows makes several of one.
    if (source.table == nullptr || (source.join == sql::Join::Left && !hasOneMatch(source))) return;
  }
  if (found.size() <= 2) keyTables_ = std::move(found);
}

bool Query::hasOneMatch(const Source& joined) const {
  if (!joined.on || joined.on->kind != ExprKind::Binary) return false;
  const Expr& on = *joined.on;
  return on.name == QLatin1String("=") &&
         (isKeyOf(*on.args[0], joined) || isKeyOf(*on.args[1], joined));
}

const Source* Query::sourceOf(const Expr& column) const {
  if (column.kind != ExprKind::Column) return nullptr;
  const auto found = std::find_if(resolved_->from.begin(), resolved_->from.end(),
                                  [&](const Source& s) { return s.alias == column.qualifier; });
  return found == resolved_->from.end() ? nullptr : &*found;
}

void Query::describeFields() {
  for (const sql::OutColumn& column : resolved_->columns) {
    const auto holder = std::find(keyTables_.begin(), keyTables_.end(), sourceOf(*column.expr));
    const bool held = holder != keyTables_.end();
    tableOf_.append(held ? static_cast<int>(holder - keyTables_.begin()) : -1);
    FieldInfo field{column.name, column.table, column.column, column.kind, column.size, {}, held};
    if (column.kind == FieldKind::Counter) field.updatable = false;
    if (!held) field.lookupKey = lookupKeyOf(column);
    fields_.append(std::move(field));
  }
}

// A LEFT JOINed table whose condition is its own key = a column is a list: that column selects.
const Source* Query::listOf(const Expr& expr, ExprPtr* key) const {
  const Source* source = sourceOf(expr);
  if (source == nullptr || source->join != sql::Join::Left || !hasOneMatch(*source)) return nullptr;
  const Expr& on = *source->on;
  for (const int side : {0, 1}) {
    const ExprPtr& other = on.args[static_cast<std::size_t>(1 - side)];
    if (isKeyOf(*on.args[static_cast<std::size_t>(side)], *source) &&
        other->kind == ExprKind::Column) {
      *key = other;
      return source;
    }
  }
  return nullptr;
}

QString Query::lookupKeyOf(const sql::OutColumn& column) const {
  ExprPtr key;
  if (listOf(*column.expr, &key) == nullptr) return {};
  const auto found =
      std::find_if(resolved_->columns.begin(), resolved_->columns.end(),
                   [&](const sql::OutColumn& c) { return sameColumn(*c.expr, *key); });
  return found == resolved_->columns.end() ? QString() : found->name;
}

std::pair<QString, QString> Query::joinColumns() const {
  if (keyTables_.size() != 2 || !keyTables_[1]->on) return {};
  const Expr& on = *keyTables_[1]->on;
  if (on.kind != ExprKind::Binary || on.name != QLatin1String("=")) return {};
  const Expr& a = *on.args[0];
  const Expr& b = *on.args[1];
  if (sourceOf(a) == keyTables_[0] && sourceOf(b) == keyTables_[1]) return {a.name, b.name};
  if (sourceOf(b) == keyTables_[0] && sourceOf(a) == keyTables_[1]) return {b.name, a.name};
  return {};
}

bool Query::isKey(const Expr& expr) const {
  return std::any_of(keyTables_.begin(), keyTables_.end(),
                     [&](const Source* source) { return isKeyOf(expr, *source); });
}

// A table's key is in one row only where the other table is joined by its own key.
bool Query::isUnique(const Expr& key) const {
  if (keyTables_.size() == 1) return true;
  const bool ofFirst = isKeyOf(key, *keyTables_[0]);
  const auto [left, right] = joinColumns();
  const sql::Source& other = *keyTables_[ofFirst ? 1 : 0];
  return !left.isEmpty() &&
         other.table->findColumn(ofFirst ? right : left) == other.table->keyColumn;
}

void Query::splitOrder() {
  for (const sql::OrderTerm& term : resolved_->orderBy) {
    const bool last = &term == &resolved_->orderBy.back();
    if (isKey(*term.expr) && (last || isUnique(*term.expr))) {
      // No two rows share the key: what follows decides nothing.
      keyOrder_ = term.expr;
      keyOrderDescending_ = term.descending;
      return;
    }
    SortTerm sort{term.expr, term.descending, nullptr, {}};
    ExprPtr key;
    const Source* list = listOf(*term.expr, &key);
    if (list != nullptr && kindOf(*term.expr) == FieldKind::Text) {
      sort.list = list;
      sort.listColumn = term.expr->name;
      sort.expr = key;
    }
    sortTerms_.push_back(std::move(sort));
  }
}

void Query::printKeys(sql::Printer& printer) const {
  bool first = true;
  for (const Source* source : keyTables_) {
    printer.text(first ? "SELECT " : ", ").text(sql::quoteName(source->alias)).text(".rowid");
    first = false;
  }
}

void Query::printKeyTests(sql::Printer& printer, bool first) const {
  for (const Source* source : keyTables_) {
    printer.text(first ? " WHERE " : " AND ").text(sql::quoteName(source->alias));
    printer.text(".rowid = ?");
    first = false;
  }
}

// Lists that only give texts decide neither which rows there are nor their order: the engine need
// not weigh ways to them.
sql::Resolved Query::sourcesOf(const std::vector<ExprPtr>& conditions) const {
  QSet<QString> named;
  Walk walk;
  walk.expression = [&named](const Expr& expr) {
    if (expr.kind == ExprKind::Column) named.insert(expr.qualifier);
  };
  for (const ExprPtr& condition : conditions) walk.through(condition);
  for (const SortTerm& term : sortTerms_) walk.through(term.expr);
  sql::Resolved needed;
  for (auto source = resolved_->from.rbegin(); source != resolved_->from.rend(); ++source) {
    if (source->join == sql::Join::Left && !named.contains(source->alias)) continue;
    walk.through(source->on);
    needed.from.insert(needed.from.begin(), *source);
  }
  return needed;
}

// The order by the second table's key is that of the first one's column that points at it, and
// that is what an index may have behind what the condition gives.
sql::ExprPtr Query::orderColumn() const {
  const auto [pointer, target] = joinColumns();
  if (pointer.isEmpty() || !isKeyOf(*keyOrder_, *keyTables_[1]) ||
      keyTables_[1]->table->findColumn(target) != keyTables_[1]->table->keyColumn) {
    return keyOrder_;
  }
  const std::vector<ExprPtr>& sides = keyTables_[1]->on->args;
  return sourceOf(*sides[0]) == keyTables_[0] ? sides[0] : sides[1];
}

sql::Statement Query::keys() const {
  sql::Printer printer;
  printKeys(printer);
  const bool sorts = hasIndexOrder();
  for (const SortTerm& term : sortTerms_) {
    if (!sorts) printer.text(", ").value(*term.expr);
  }
  printer.text(" FROM ")
      .sources(sourcesOf({resolved_->where}))
      .where(resolved_->where, nullptr)
      .text(" ORDER BY ");
  for (const SortTerm& term : sortTerms_) {
    if (sorts) printer.expression(*term.expr).text(", ");
  }
  if (keyOrder_) printer.expression(*orderColumn()).text(keyOrderDescending_ ? " DESC, " : ", ");
  // Beyond that the stored order is that of the first table, whatever way SQLite takes.
  printer.text(sql::quoteName(keyTables_.front()->alias)).text(".rowid");
  return printer.take();
}

std::vector<QByteArray> Query::tables() const {
  std::vector<QByteArray> names;
  Walk walk;
  walk.source = [&names](const Source& source) {
    if (source.table != nullptr) names.push_back(source.table->name.toUtf8());
  };
  walk.through(*resolved_);
  return names;
}

sql::Statement Query::keysWhere(const ExprPtr& condition, bool listed) const {
  sql::Printer printer;
  if (keyTables_.empty()) {
    printer.text("SELECT rowid FROM ").text(sql::quoteName(resultName()));
    return printer.where(condition, nullptr).take();
  }
  const ExprPtr own = listed ? resolved_->where : nullptr;
  printKeys(printer);
  return printer.text(" FROM ").sources(sourcesOf({own, condition})).where(own, condition).take();
}

sql::Statement Query::testByKeys(const ExprPtr& condition) const {
  sql::Printer printer;
  printer.text("SELECT 1 FROM ").sources(sourcesOf({condition})).where(condition, nullptr);
  printKeyTests(printer, false);
  return printer.take();
}

bool Query::listsByRow() const {
  bool byRow = true;
  Walk walk;
  walk.expression = [&](const Expr& expr) {
    const auto end = keyTables_.end();
    if (expr.kind == ExprKind::Subquery) byRow = false;
    if (expr.kind == ExprKind::Column) {
      byRow = byRow && std::find(keyTables_.begin(), end, sourceOf(expr)) != end;
    }
  };
  walk.through(resolved_->where);
  return byRow;
}

int Query::keyTableOf(int field) const {
  const Expr& expr = *resolved_->columns[static_cast<std::size_t>(field)].expr;
  const int table = tableOf_[field];
  return table >= 0 && isKeyOf(expr, *keyTables_[static_cast<std::size_t>(table)]) ? table : -1;
}

void Query::printFields(sql::Printer& printer, const QVector<int>& fields) const {
  bool first = true;
  for (const int field : fields) {
    printer.text(first ? "SELECT " : ", ");
    first = false;
    if (keyTables_.empty()) {
      printer.text(sql::quoteName(resultColumn(field)));
    } else {
      printer.value(*resolved_->columns[static_cast<std::size_t>(field)].expr);
    }
  }
}

sql::Statement Query::rowByKeys(const QVector<int>& fields) const {
  sql::Printer printer;
  printFields(printer, fields);
  if (keyTables_.empty()) {
    return printer.text(" FROM ")
        .text(sql::quoteName(resultName()))
        .text(" WHERE rowid = ?")
        .take();
  }
  printer.text(" FROM ").sources(*resolved_);
  printKeyTests(printer, true);
  return printer.take();
}

sql::Statement Query::rowsByValue(const ExprPtr& column, const QVector<int>& fields,
                                  int& place) const {
  sql::Printer printer;
  printFields(printer, fields);
  printer.text(" FROM ");
  if (keyTables_.empty()) {
    printer.text(sql::quoteName(resultName())).text(" WHERE ");
  } else {
    printer.sources(*resolved_).where(resolved_->where, nullptr);
    printer.text(resolved_->where ? " AND " : " WHERE ");
  }
  sql::Statement rows = printer.expression(*column).text(" = ?").take();
  rows.values.append(QVariant());
  place = static_cast<int>(rows.values.size());
  const sql::Statement order = rowOrder();
  rows.text += order.text;
  rows.values += order.values;
  return rows;
}

// The whole order, that of keys() and sortTerms() together.
sql::Statement Query::rowOrder() const {
  if (keyTables_.empty()) return {" ORDER BY rowid", {}};
  sql::Printer printer;
  printer.text(" ORDER BY ");
  for (const sql::OrderTerm& term : resolved_->orderBy) {
    const bool made = term.expr->kind != ExprKind::Column && kindOf(*term.expr) == FieldKind::Text;
    printer.value(*term.expr).text(made ? " COLLATE ITALIANO" : "");
    printer.text(term.descending ? " DESC, " : ", ");
  }
  return printer.text(sql::quoteName(keyTables_.front()->alias)).text(".rowid").take();
}

sql::Statement Query::everything() const {
  return sql::Printer().query(*resolved_, true).take();
}

ExprPtr Query::condition(const QString& text, const Catalog& catalog) const {
  const ExprPtr parsed = sql::parseCondition(text);
  if (!keyTables_.empty()) return sql::resolveCondition(parsed, *resolved_, catalog);
  sql::Resolved result;
  result.columns = resolved_->columns;
  for (std::size_t i = 0; i < result.columns.size(); ++i) {
    Expr column;
    column.kind = ExprKind::Column;
    column.type = result.columns[i].kind;
    column.qualifier = resultName();
    column.name = resultColumn(static_cast<int>(i));
    result.columns[i].expr = sql::makeExpr(std::move(column));
  }
  return sql::resolveCondition(parsed, result, catalog);
}

}  // namespace store
