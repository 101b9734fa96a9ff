#include "store/sql_functions.h"

#include <algorithm>
#include <array>

namespace store::sql {
namespace {

constexpr std::array kFunctions = {
    Function{"Count", 1, 1, "count(%1)", FieldKind::Long, true},
    Function{"Sum", 1, 1, "sum(%1)", FieldKind::Number, true},
    Function{"Avg", 1, 1, "avg(%1)", FieldKind::Number, true},
    Function{"Min", 1, 1, "min(%1)", FieldKind::Number, true, 0},
    Function{"Max", 1, 1, "max(%1)", FieldKind::Number, true, 0},
    Function{"IIf", 3, 3, "iif(%1, %2, %3)", FieldKind::Text, false, 1},
    Function{"IsNull", 1, 1, "(%1 IS NULL)", FieldKind::YesNo},
    Function{"Nz", 2, 2, "ifnull(%1, %2)", FieldKind::Text, false, 0},
    Function{"CStr", 1, 1, "tvx_text(%1)", FieldKind::Text},
    Function{"DateText", 1, 1, "strftime('%%d-%%m-%%Y', %1 + 2415018.5)", FieldKind::Text},
    Function{"TimeText", 1, 1, "printf('%%d:%%02d:%%02d', %1 / 3600, %1 / 60 %% 60, %1 %% 60)",
             FieldKind::Text},
    Function{"Len", 1, 1, "length($1)", FieldKind::Long},
    Function{"Left", 2, 2, "substr($1, 1, max(0, %2))", FieldKind::Text},
    Function{"Mid", 2, 3, "substr($1, %2, %3)", FieldKind::Text},
    Function{"Trim", 1, 1, "trim($1)", FieldKind::Text},
    Function{"Abs", 1, 1, "abs(%1)", FieldKind::Number},
    Function{"Int", 1, 1, "floor(%1)", FieldKind::Number},
    Function{"Round", 1, 2, "round(%1, %2)", FieldKind::Number},
};

bool isTestOperator(const QString& op) {
  return op == QLatin1String("AND") || op == QLatin1String("OR") ||
         QStringLiteral("<>=").contains(op.at(0));
}

FieldKind kindOfBinary(const Expr& expr) {
  if (expr.name == QLatin1String("&")) return FieldKind::Text;
  if (isTestOperator(expr.name)) return FieldKind::YesNo;
  const bool texts =
      kindOf(*expr.args[0]) == FieldKind::Text && kindOf(*expr.args[1]) == FieldKind::Text;
  return texts && expr.name == QLatin1String("+") ? FieldKind::Text : FieldKind::Number;
}

FieldKind kindOfCall(const Expr& expr) {
  const Function* function = findFunction(expr.name);
  if (function == nullptr) return FieldKind::Text;
  if (function->sameKindAs < 0) return function->kind;
  return kindOf(*expr.args[static_cast<std::size_t>(function->sameKindAs)]);
}

}  // namespace

const Function* findFunction(const QString& name) {
  const auto* found = std::find_if(kFunctions.begin(), kFunctions.end(), [&](const Function& f) {
    return name.compare(QLatin1String(f.name), Qt::CaseInsensitive) == 0;
  });
  return found == kFunctions.end() ? nullptr : found;
}

bool hasAggregate(const Expr& expr) {
  if (expr.kind == ExprKind::Call) {
    const Function* function = findFunction(expr.name);
    if (function != nullptr && function->aggregate) return true;
  }
  return std::any_of(expr.args.begin(), expr.args.end(),
                     [](const ExprPtr& arg) { return hasAggregate(*arg); });
}

FieldKind kindOf(const Expr& expr) {
  switch (expr.kind) {
    case ExprKind::Column:
      return expr.type;
    case ExprKind::Literal:
      return expr.value.typeId() == QMetaType::QString ? FieldKind::Text : FieldKind::Number;
    case ExprKind::Binary:
      return kindOfBinary(expr);
    case ExprKind::Call:
      return kindOfCall(expr);
    case ExprKind::Unary:
      return isTest(expr) ? FieldKind::YesNo : FieldKind::Number;
    case ExprKind::Star:
      return FieldKind::Number;
    case ExprKind::Name:
    case ExprKind::Subquery:
      return expr.type;
    default:
      return FieldKind::YesNo;
  }
}

bool isTest(const Expr& expr) {
  switch (expr.kind) {
    case ExprKind::IsNull:
    case ExprKind::Like:
    case ExprKind::Between:
    case ExprKind::In:
      return true;
    case ExprKind::Unary:
      return expr.name == QLatin1String("NOT");
    case ExprKind::Binary:
      return isTestOperator(expr.name);
    case ExprKind::Call: {
      const Function* function = findFunction(expr.name);
      return function != nullptr && function->kind == FieldKind::YesNo;
    }
    default:
      return false;
  }
}

}  // namespace store::sql
