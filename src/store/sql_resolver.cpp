#include "store/sql_resolver.h"

#include <algorithm>

#include "store/failure.h"
#include "store/sql_functions.h"
#include "store/sql_parser.h"

namespace store::sql {
namespace {

constexpr int kDeepestQuery = 20;
constexpr int kMostSelects = 200;
constexpr std::size_t kMostSources = 60;
constexpr std::size_t kMostColumns = 1000;
constexpr std::size_t kMostLooks = 20'000'000;  // at columns, to find names
constexpr int kDeepestBound = 1000;

[[noreturn]] void tooComplex() {
  throw Failure(failure::kTooComplex, QStringLiteral("Query troppo complessa"));
}

bool same(const QString& a, const QString& b) {
  return a.compare(b, Qt::CaseInsensitive) == 0;
}

ExprPtr columnOf(const QString& alias, const QString& column, FieldKind type) {
  Expr e;
  e.type = type;
  e.kind = ExprKind::Column;
  e.qualifier = alias;
  e.name = column;
  return makeExpr(std::move(e));
}

ExprPtr both(const ExprPtr& left, const ExprPtr& right) {
  if (!left) return right;
  if (!right) return left;
  return makeBinary(QStringLiteral("AND"), left, right);
}

// A column that names may refer to: the owner is the table's or query's name in FROM.
struct Visible {
  QString owner;
  OutColumn column;
};

// Columns in sight, with those of the enclosing query behind them.
struct Scope {
  std::vector<Visible> columns;
  const Scope* outer = nullptr;

  const OutColumn* find(const QString& qualifier, const QString& name) const {
    const OutColumn* found = findHere(qualifier, name);
    return found != nullptr || outer == nullptr ? found : outer->find(qualifier, name);
  }

 private:
  template <typename Test>
  const OutColumn* first(Test test) const {
    const auto it = std::find_if(columns.begin(), columns.end(), test);
    return it == columns.end() ? nullptr : &it->column;
  }

  const OutColumn* findHere(const QString& qualifier, const QString& name) const {
    if (qualifier.isEmpty()) return unqualified(name);
    if (const auto* column = first([&](const Visible& v) {
          return same(v.owner, qualifier) && same(v.column.name, name);
        })) {
      return column;
    }
    const QString dotted = qualifier + u'.' + name;
    if (const auto* column = first([&](const Visible& v) { return same(v.column.name, dotted); })) {
      return column;
    }
    return first([&](const Visible& v) {
      return same(v.column.table, qualifier) && same(v.column.column, name);
    });
  }

  const OutColumn* unqualified(const QString& name) const {
    const auto named = [&](const Visible& v) { return same(v.column.name, name); };
    const auto it = std::find_if(columns.begin(), columns.end(), named);
    if (it == columns.end()) return nullptr;
    if (std::find_if(it + 1, columns.end(), named) != columns.end()) {
      throw Failure(failure::kUnknownName,
                    QStringLiteral("Il campo '%1' esiste in piu' tabelle della query").arg(name));
    }
    return &it->column;
  }
};

class Resolver {
 public:
  // The prefix is that of the aliases it gives.
  Resolver(const Catalog& catalog, QChar prefix) : catalog_(catalog), prefix_(prefix) {}

  ResolvedPtr select(const Select& select, const Scope* outer) {
    auto result = std::make_shared<Resolved>();
    Scope scope;
    scope.outer = outer;
    core(select.cores.front(), *result, scope);
    for (std::size_t i = 1; i < select.cores.size(); ++i) {
      auto next = std::make_shared<Resolved>();
      Scope inner;
      inner.outer = outer;
      core(select.cores[i], *next, inner);
      if (next->columns.size() != result->columns.size()) {
        throw Failure(failure::kSyntax, QStringLiteral("Le parti di UNION hanno colonne diverse"));
      }
      result->unionWith.push_back(std::move(next));
      result->unionAll.push_back(select.unionAll[i - 1]);
    }
    order(select, *result, scope);
    return result;
  }

  ExprPtr bind(const ExprPtr& expr, const Scope& scope) {
    if (!expr) return nullptr;
    if (expr->kind == ExprKind::Name) return bindName(*expr, scope);
    if (++bound_ > kDeepestBound) tooComplex();
    Expr bound = *expr;
    if (bound.kind == ExprKind::Call) checkFunction(bound);
    if (bound.kind == ExprKind::Subquery) {
      bound.resolved = select(*bound.select, &scope);
      bound.type = bound.resolved->columns.front().kind;
    }
    for (ExprPtr& arg : bound.args) arg = bind(arg, scope);
    --bound_;
    return makeExpr(std::move(bound));
  }

 private:
  const OutColumn* find(const Expr& name, const Scope& scope) {
    for (const Scope* in = &scope; in != nullptr; in = in->outer) looks_ += in->columns.size();
    if (looks_ > kMostLooks) tooComplex();
    return scope.find(name.qualifier, name.name);
  }

  ExprPtr bindName(const Expr& name, const Scope& scope) {
    const OutColumn* column = find(name, scope);
    if (column == nullptr) {
      const QString full = name.qualifier.isEmpty() ? name.name : name.qualifier + u'.' + name.name;
      throw Failure(failure::kUnknownName, QStringLiteral("Campo sconosciuto: '%1'").arg(full));
    }
    return column->expr;
  }

  static void checkFunction(const Expr& call) {
    const Function* function = findFunction(call.name);
    const int count = static_cast<int>(call.args.size());
    if (function == nullptr || count < function->least || count > function->most) {
      throw Failure(failure::kSyntax, QStringLiteral("Funzione non ammessa: %1").arg(call.name));
    }
  }

  void core(const SelectCore& core, Resolved& result, Scope& scope) {
    if (++selects_ > kMostSelects) tooComplex();
    for (const TableRef& ref : core.from) addSource(ref, result, scope);
    result.where = both(result.where, bind(core.where, scope));
    for (const SelectItem& item : core.items) {
      addItem(item, result, scope);
      if (result.columns.size() > kMostColumns) tooComplex();
    }
    nameColumns(result);
    for (const ExprPtr& expr : core.groupBy) result.groupBy.push_back(bind(expr, scope));
    result.having = bind(core.having, scope);
    result.distinct = core.distinct;
  }

  void addSource(const TableRef& ref, Resolved& result, Scope& scope) {
    if (result.from.size() >= kMostSources) tooComplex();
    const QString owner = ref.alias.isEmpty() ? ref.name : ref.alias;
    if (const TableInfo* table = catalog_.table(ref.name)) {
      addTable(*table, owner, ref, result, scope);
      return;
    }
    const std::optional<QString> sql = catalog_.querySql(ref.name);
    if (!sql) {
      throw Failure(failure::kTableNotFound,
                    QStringLiteral("Tabella o query '%1' inesistente").arg(ref.name));
    }
    if (++depth_ > kDeepestQuery) {
      throw Failure(failure::kTooComplex,
                    QStringLiteral("La query '%1' richiama se stessa").arg(ref.name));
    }
    const ResolvedPtr query = select(*parseSelect(*sql), nullptr);
    --depth_;
    if (query->isPlain() && (ref.join == Join::Inner || isOneTable(*query))) {
      foldQuery(*query, owner, ref, result, scope);
    } else {
      addQuery(query, owner, ref, result, scope);
    }
  }

  // Joined by LEFT JOIN, its columns are Null where it has no row; an expression might not be.
  static bool isOneTable(const Resolved& query) {
    return query.from.size() == 1 &&
           std::all_of(query.columns.begin(), query.columns.end(), [](const OutColumn& column) {
             return column.expr->kind == ExprKind::Column;
           });
  }

  QString nextAlias() { return prefix_ + QString::number(++aliases_); }

  void addTable(const TableInfo& table, const QString& owner, const TableRef& ref, Resolved& result,
                Scope& scope) {
    Source source;
    source.alias = nextAlias();
    source.table = &table;
    source.join = ref.join;
    for (const ColumnInfo& column : table.columns) {
      OutColumn out;
      out.name = column.name;
      out.expr = columnOf(source.alias, column.name, column.kind);
      out.table = table.name;
      out.column = column.name;
      out.kind = column.kind;
      out.size = column.size;
      scope.columns.push_back({owner, std::move(out)});
    }
    source.on = bind(ref.on, scope);
    result.from.push_back(std::move(source));
  }

  void foldQuery(const Resolved& query, const QString& owner, const TableRef& ref, Resolved& result,
                 Scope& scope) {
    for (const OutColumn& column : query.columns) scope.columns.push_back({owner, column});
    std::vector<Source> sources = query.from;
    ExprPtr on = bind(ref.on, scope);
    if (ref.join == Join::Left) {
      on = both(on, query.where);
    } else {
      result.where = both(result.where, both(on, query.where));
      on = nullptr;
    }
    sources.front().join = ref.join;
    sources.front().on = both(sources.front().on, on);
    if (result.from.empty()) result.orderBy = query.orderBy;
    result.from.insert(result.from.end(), sources.begin(), sources.end());
  }

  void addQuery(const ResolvedPtr& query, const QString& owner, const TableRef& ref,
                Resolved& result, Scope& scope) {
    Source source;
    source.alias = nextAlias();
    source.query = query;
    source.join = ref.join;
    for (OutColumn column : query->columns) {
      column.expr = columnOf(source.alias, column.name, column.kind);
      column.aggregate = false;
      scope.columns.push_back({owner, std::move(column)});
    }
    source.on = bind(ref.on, scope);
    result.from.push_back(std::move(source));
  }

  void addItem(const SelectItem& item, Resolved& result, const Scope& scope) {
    if (!item.expr) {
      const std::size_t before = result.columns.size();
      for (const Visible& visible : scope.columns) {
        if (item.starOf.isEmpty() || same(visible.owner, item.starOf)) {
          result.columns.push_back(visible.column);
        }
      }
      if (result.columns.size() == before) {
        throw Failure(failure::kTableNotFound,
                      QStringLiteral("Tabella '%1' assente dalla query").arg(item.starOf));
      }
      return;
    }
    result.columns.push_back(outColumn(item, scope, result.columns.size()));
  }

  OutColumn outColumn(const SelectItem& item, const Scope& scope, std::size_t place) {
    OutColumn column;
    if (item.expr->kind == ExprKind::Name) {
      const OutColumn* source = find(*item.expr, scope);
      if (source != nullptr) column = *source;
    }
    column.expr = bind(item.expr, scope);
    if (item.expr->kind != ExprKind::Name) {
      column.kind = kindOf(*column.expr);
      column.aggregate = hasAggregate(*column.expr);
      column.name = QStringLiteral("Expr%1").arg(place);
    }
    if (!item.alias.isEmpty()) column.name = item.alias;
    return column;
  }

  // Where two columns share a name, those of tables are named with their table.
  static void nameColumns(Resolved& result) {
    std::vector<bool> shared(result.columns.size(), false);
    for (std::size_t i = 0; i < result.columns.size(); ++i) {
      for (std::size_t j = 0; j < i; ++j) {
        if (same(result.columns[i].name, result.columns[j].name)) shared[i] = shared[j] = true;
      }
    }
    for (std::size_t i = 0; i < shared.size(); ++i) {
      OutColumn& column = result.columns[i];
      if (shared[i] && !column.table.isEmpty() && !column.name.contains(u'.')) {
        column.name = column.table + u'.' + column.name;
      }
    }
  }

  void order(const Select& select, Resolved& result, const Scope& scope) {
    if (!result.isPlain()) result.orderBy.clear();
    if (select.orderBy.empty()) return;
    if (!result.unionWith.empty()) {
      throw Failure(failure::kSyntax, QStringLiteral("ORDER BY non e' ammesso dopo UNION"));
    }
    // What the query below was ordered by decides between equal rows.
    std::vector<OrderTerm> below = std::move(result.orderBy);
    result.orderBy.clear();
    Scope outputs;
    for (const OutColumn& column : result.columns) outputs.columns.push_back({QString(), column});
    for (const OrderTerm& term : select.orderBy) {
      OrderTerm bound = term;
      const Expr& expr = *term.expr;
      const bool isOutput = expr.kind == ExprKind::Name && find(expr, outputs) != nullptr;
      bound.expr = bind(term.expr, isOutput ? outputs : scope);
      result.orderBy.push_back(std::move(bound));
    }
    result.orderBy.insert(result.orderBy.end(), below.begin(), below.end());
  }

  const Catalog& catalog_;
  QChar prefix_;
  int aliases_ = 0;
  int depth_ = 0;
  int selects_ = 0;
  int bound_ = 0;
  std::size_t looks_ = 0;
};

}  // namespace

bool Resolved::isPlain() const {
  return !distinct && groupBy.empty() && !having && unionWith.empty() &&
         std::none_of(columns.begin(), columns.end(),
                      [](const OutColumn& column) { return column.aggregate; });
}

ResolvedPtr resolve(const Select& select, const Catalog& catalog) {
  return Resolver(catalog, u't').select(select, nullptr);
}

ExprPtr resolveCondition(const ExprPtr& condition, const Resolved& query, const Catalog& catalog) {
  Scope scope;
  for (const OutColumn& column : query.columns) scope.columns.push_back({QString(), column});
  return Resolver(catalog, u'c').bind(condition, scope);
}

ResolvedAction resolveAction(const UpdateAction& action, const Catalog& catalog) {
  const TableInfo* table = catalog.table(action.table);
  if (table == nullptr) {
    throw Failure(failure::kTableNotFound,
                  QStringLiteral("Tabella '%1' inesistente").arg(action.table));
  }
  Scope scope;
  for (const ColumnInfo& column : table->columns) {
    OutColumn out;
    out.name = column.name;
    out.expr = columnOf(QStringLiteral("t"), column.name, column.kind);
    out.table = table->name;
    out.column = column.name;
    scope.columns.push_back({action.table, std::move(out)});
  }
  Resolver resolver(catalog, u't');
  ResolvedAction result{table, {}, resolver.bind(action.where, scope)};
  for (const Assignment& assignment : action.assignments) {
    if (table->findColumn(assignment.column) < 0) {
      throw Failure(failure::kUnknownName,
                    QStringLiteral("Campo sconosciuto: '%1'").arg(assignment.column));
    }
    result.assignments.push_back({assignment.column, resolver.bind(assignment.value, scope)});
  }
  return result;
}

}  // namespace store::sql
