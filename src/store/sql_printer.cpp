#include "store/sql_printer.h"

#include "store/failure.h"
#include "store/sql_functions.h"

namespace store::sql {
namespace {

constexpr qsizetype kLongest = 1 << 22;

}  // namespace

QByteArray quoteName(const QString& name) {
  QString quoted = name;
  quoted.replace(u'"', QLatin1String("\"\""));
  return '"' + quoted.toUtf8() + '"';
}

Printer& Printer::expression(const Expr& expr) {
  if (statement_.text.size() + valuesSize_ > kLongest) {
    throw Failure(failure::kTooComplex, QStringLiteral("Query troppo complessa"));
  }
  switch (expr.kind) {
    case ExprKind::Literal:
      if (!expr.value.isValid()) return text("NULL");
      statement_.values.append(expr.value);
      if (kindOf(expr) == FieldKind::Text) valuesSize_ += expr.value.toString().size();
      return text("?");
    case ExprKind::Column:
      return text(quoteName(expr.qualifier)).text(".").text(quoteName(expr.name));
    case ExprKind::Star:
      return text("*");
    case ExprKind::Unary:
      text("(").text(expr.name.toUtf8()).text(" ");
      return isTest(expr) ? expression(*expr.args[0]).text(")") : value(*expr.args[0]).text(")");
    case ExprKind::Binary:
      binary(expr);
      return *this;
    case ExprKind::Call:
      call(expr);
      return *this;
    case ExprKind::Subquery:
      return text("(").query(*expr.resolved, true).text(")");
    default:
      test(expr);
      return *this;
  }
}

Printer& Printer::value(const Expr& expr) {
  return isTest(expr) ? text("(-").expression(expr).text(")") : expression(expr);
}

// A value that is compared: a column brings its own order, a text made by an expression gets the
// archive's.
Printer& Printer::ordered(const Expr& expr) {
  value(expr);
  const bool made = expr.kind != ExprKind::Column && kindOf(expr) == FieldKind::Text;
  return made ? text(" COLLATE ITALIANO") : *this;
}

Printer& Printer::asText(const Expr& expr) {
  if (kindOf(expr) == FieldKind::Text) return value(expr);
  return text("tvx_text(").value(expr).text(")");
}

void Printer::binary(const Expr& expr) {
  const Expr& left = *expr.args[0];
  const Expr& right = *expr.args[1];
  const QByteArray name = expr.name.toUtf8();
  text("(");
  if (name == "&") {
    text("ifnull(").asText(left).text(", '') || ifnull(").asText(right).text(", '')");
  } else if (name == "+" && kindOf(expr) == FieldKind::Text) {
    value(left).text(" || ").value(right);
  } else if (name == "/") {
    text("CAST(").value(left).text(" AS REAL) / ").value(right);
  } else if (name == "AND" || name == "OR") {
    expression(left).text(" ").text(name).text(" ").expression(right);
  } else {
    ordered(left).text(" ").text(name).text(" ").ordered(right);
  }
  text(")");
}

void Printer::call(const Expr& expr) {
  // The template's arguments are printed in their places, so that values keep their order.
  const Function* function = findFunction(expr.name);
  for (const char* at = function->text; *at != '\0'; ++at) {
    const bool argument = (*at == '%' && at[1] != '%') || *at == '$';
    if (!argument) {
      if (*at == '%') ++at;  // the sign itself stands twice
      statement_.text += *at;
      continue;
    }
    const bool wantsText = *at == '$';
    const auto index = static_cast<std::size_t>(*++at - '1');
    if (index >= expr.args.size()) {
      // A last argument left out goes with the comma before it.
      statement_.text.truncate(statement_.text.lastIndexOf(','));
    } else if (wantsText) {
      asText(*expr.args[index]);
    } else {
      ordered(*expr.args[index]);
    }
  }
}

void Printer::list(const std::vector<ExprPtr>& expressions) {
  bool first = true;
  for (const ExprPtr& expr : expressions) {
    if (!first) text(", ");
    first = false;
    ordered(*expr);
  }
}

void Printer::test(const Expr& expr) {
  const char* negation = expr.negated ? " NOT" : "";
  text("(");
  if (expr.kind == ExprKind::IsNull) {
    value(*expr.args[0]).text(" IS").text(negation).text(" NULL");
  } else if (expr.kind == ExprKind::Like) {
    text(expr.negated ? "NOT " : "").text("tvx_like(").asText(*expr.args[0]).text(", ");
    asText(*expr.args[1]).text(")");
  } else if (expr.kind == ExprKind::Between) {
    ordered(*expr.args[0]).text(negation).text(" BETWEEN ").value(*expr.args[1]);
    text(" AND ").value(*expr.args[2]);
  } else {
    ordered(*expr.args[0]).text(negation).text(" IN (");
    list({expr.args.begin() + 1, expr.args.end()});
    text(")");
  }
  text(")");
}

Printer& Printer::sources(const Resolved& query) {
  bool first = true;
  for (const Source& source : query.from) {
    if (!first) text(source.join == Join::Left ? " LEFT JOIN " : " JOIN ");
    if (source.query) {
      text("(").query(*source.query, false).text(")");
    } else {
      text(quoteName(source.table->name));
    }
    text(" AS ").text(quoteName(source.alias));
    if (source.on && !first) text(" ON ").expression(*source.on);
    first = false;
  }
  return *this;
}

Printer& Printer::where(const ExprPtr& first, const ExprPtr& second) {
  if (first) text(" WHERE ").expression(*first);
  if (second) text(first ? " AND " : " WHERE ").expression(*second);
  return *this;
}

void Printer::core(const Resolved& query) {
  text(query.distinct ? "SELECT DISTINCT " : "SELECT ");
  bool first = true;
  for (const OutColumn& column : query.columns) {
    if (!first) text(", ");
    first = false;
    ordered(*column.expr).text(" AS ").text(quoteName(column.name));
  }
  text(" FROM ").sources(query);
  where(query.where, nullptr);
  if (!query.groupBy.empty()) {
    text(" GROUP BY ");
    list(query.groupBy);
  }
  if (query.having) text(" HAVING ").expression(*query.having);
}

Printer& Printer::query(const Resolved& query, bool withOrder) {
  core(query);
  for (std::size_t i = 0; i < query.unionWith.size(); ++i) {
    text(query.unionAll[i] ? " UNION ALL " : " UNION ");
    core(*query.unionWith[i]);
  }
  bool first = true;
  for (const OrderTerm& term : query.orderBy) {
    if (!withOrder) break;
    text(first ? " ORDER BY " : ", ").ordered(*term.expr);
    if (term.descending) text(" DESC");
    first = false;
  }
  return *this;
}

Statement printAction(const ResolvedAction& action) {
  Printer printer;
  printer.text("UPDATE ").text(quoteName(action.table->name)).text(" AS t SET ");
  bool first = true;
  for (const Assignment& assignment : action.assignments) {
    if (!first) printer.text(", ");
    first = false;
    printer.text(quoteName(assignment.column)).text(" = ").value(*assignment.value);
  }
  printer.where(action.where, nullptr);
  return printer.take();
}

}  // namespace store::sql
