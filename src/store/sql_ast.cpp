#include "store/sql_ast.h"

#include <algorithm>

#include "store/failure.h"

namespace store::sql {
namespace {

// Expressions are walked by recursion, and those of stored queries stand wherever they are used.
constexpr int kDeepest = 300;
constexpr int kLargest = 20000;

}  // namespace

ExprPtr makeExpr(Expr expr) {
  expr.depth = 1;
  expr.size = 1;
  for (const ExprPtr& arg : expr.args) {
    expr.depth = std::max(expr.depth, arg->depth + 1);
    expr.size += std::min(arg->size, kLargest);
    if (expr.depth > kDeepest || expr.size > kLargest) {
      throw Failure(failure::kTooComplex, QStringLiteral("Query troppo complessa"));
    }
  }
  return std::make_shared<const Expr>(std::move(expr));
}

ExprPtr makeBinary(const QString& op, ExprPtr left, ExprPtr right) {
  Expr e;
  e.kind = ExprKind::Binary;
  e.name = op;
  e.args = {std::move(left), std::move(right)};
  return makeExpr(std::move(e));
}

}  // namespace store::sql
