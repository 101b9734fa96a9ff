#pragma once

#include <functional>

#include "store/sql_resolver.h"

namespace store::sql {

// Goes through all that a query or an expression is made of, queries within it too.
class Walk {
 public:
  std::function<void(const Source&)> source = [](const Source&) {};
  std::function<void(const Expr&)> expression = [](const Expr&) {};

  void through(const ExprPtr& expr) const {
    if (expr == nullptr) return;
    expression(*expr);
    if (expr->resolved != nullptr) through(*expr->resolved);
    for (const ExprPtr& part : expr->args) through(part);
  }

  void through(const Resolved& query) const {
    for (const Source& from : query.from) {
      source(from);
      if (from.query != nullptr) through(*from.query);
      through(from.on);
    }
    through(query.where);
    through(query.having);
    for (const OutColumn& column : query.columns) through(column.expr);
    for (const OrderTerm& term : query.orderBy) through(term.expr);
    for (const ResolvedPtr& other : query.unionWith) through(*other);
  }
};

}  // namespace store::sql
