#pragma once

#include <vector>

#include "store/catalog.h"
#include "store/sql_ast.h"

namespace store::sql {

struct Resolved;
using ResolvedPtr = std::shared_ptr<const Resolved>;

// A table, or a query that cannot be folded into its tables, under a name of its own.
struct Source {
  QString alias;
  const TableInfo* table = nullptr;
  ResolvedPtr query;
  Join join = Join::Inner;
  ExprPtr on;
};

struct OutColumn {
  QString name;
  ExprPtr expr;
  QString table;  // base table and column, empty for an expression
  QString column;
  FieldKind kind = FieldKind::Text;
  int size = 0;
  bool aggregate = false;
};

// A query whose names are all bound to columns of its sources.
struct Resolved {
  std::vector<Source> from;
  ExprPtr where;
  std::vector<OutColumn> columns;
  std::vector<ExprPtr> groupBy;
  ExprPtr having;
  std::vector<OrderTerm> orderBy;
  bool distinct = false;
  std::vector<ResolvedPtr> unionWith;
  std::vector<bool> unionAll;

  // True if each row is a combination of rows of the sources: it can be folded into a query over
  // it, and its rows have keys.
  bool isPlain() const;
};

// Binds a SELECT to the tables of an archive. Stored queries in FROM are folded into their tables
// where they are plain. Fails with 3078 for an unknown table or query, with 3061 for an unknown
// or ambiguous column, with 3360 for queries that lead back to themselves.
ResolvedPtr resolve(const Select& select, const Catalog& catalog);

// A further condition, bound to the columns that a resolved query shows.
ExprPtr resolveCondition(const ExprPtr& condition, const Resolved& query, const Catalog& catalog);

// An action query whose table has the alias "t".
struct ResolvedAction {
  const TableInfo* table = nullptr;
  std::vector<Assignment> assignments;
  ExprPtr where;
};
ResolvedAction resolveAction(const UpdateAction& action, const Catalog& catalog);

}  // namespace store::sql
