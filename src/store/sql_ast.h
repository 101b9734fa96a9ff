#pragma once

#include <QString>
#include <QVariant>
#include <memory>
#include <vector>

#include "store/field_info.h"

namespace store::sql {

struct Select;
struct Resolved;

enum class ExprKind {
  Literal,   // value
  Name,      // qualifier, name: as written
  Column,    // qualifier is the source's alias, name its column: resolved
  Unary,     // name is the operator, args[0]
  Binary,    // name is the operator, args[0], args[1]
  Call,      // name is the function, args
  Star,      // the "*" of Count(*)
  IsNull,    // args[0]; negated
  Like,      // args[0] like args[1]; negated
  Between,   // args[0] between args[1] and args[2]; negated
  In,        // args[0] in args[1...]; negated
  Subquery,  // select
};

// An expression; shared, since a stored query's column stands wherever it is used.
struct Expr {
  ExprKind kind = ExprKind::Literal;
  QString qualifier;
  QString name;
  QVariant value;
  bool negated = false;
  std::vector<std::shared_ptr<const Expr>> args;
  std::shared_ptr<const Select> select;      // of a subquery
  std::shared_ptr<const Resolved> resolved;  // the same, bound
  FieldKind type = FieldKind::Text;          // of a column
  int depth = 1;                             // of the tree, and the number of its nodes
  int size = 1;
};
using ExprPtr = std::shared_ptr<const Expr>;

// Finishes an expression. Fails with 3360 where it grows too deep or too large.
ExprPtr makeExpr(Expr expr);
ExprPtr makeBinary(const QString& op, ExprPtr left, ExprPtr right);

enum class Join { Inner, Left };

struct TableRef {
  QString name;
  QString alias;
  Join join = Join::Inner;
  ExprPtr on;
};

struct SelectItem {
  ExprPtr expr;    // null for a star
  QString alias;   // of an expression
  QString starOf;  // qualifier of a star, empty for all sources
};

struct OrderTerm {
  ExprPtr expr;
  bool descending = false;
};

struct SelectCore {
  bool distinct = false;
  std::vector<SelectItem> items;
  std::vector<TableRef> from;
  ExprPtr where;
  std::vector<ExprPtr> groupBy;
  ExprPtr having;
};

// One or more SELECTs joined by UNION, and their order.
struct Select {
  std::vector<SelectCore> cores;
  std::vector<bool> unionAll;  // between a core and the next
  std::vector<OrderTerm> orderBy;
};

struct Assignment {
  QString column;
  ExprPtr value;
};

// An action query: UPDATE table SET column = expression, ... WHERE condition.
struct UpdateAction {
  QString table;
  std::vector<Assignment> assignments;
  ExprPtr where;
};

}  // namespace store::sql
