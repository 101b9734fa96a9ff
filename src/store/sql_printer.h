#pragma once

#include "store/sql_resolver.h"

namespace store::sql {

// A statement in SQLite's language with the values for its "?" in their order.
struct Statement {
  QByteArray text;
  QVariantList values;
};

// A name as SQLite reads it whatever it holds.
QByteArray quoteName(const QString& name);

// Prints resolved queries. Texts and numbers of the user never stand in the statement: they are
// handed over as values.
class Printer {
 public:
  Printer& text(const char* text) { return statement_.text += text, *this; }
  Printer& text(const QByteArray& text) { return statement_.text += text, *this; }
  Printer& expression(const Expr& expr);
  Printer& sources(const Resolved& query);
  Printer& where(const ExprPtr& first, const ExprPtr& second);
  // The value of an expression: that of a test is -1 or 0.
  Printer& value(const Expr& expr);
  // The whole query; `withOrder` false leaves out its own order.
  Printer& query(const Resolved& query, bool withOrder);
  Statement take() { return std::move(statement_); }

 private:
  void core(const Resolved& query);
  void binary(const Expr& expr);
  void call(const Expr& expr);
  void list(const std::vector<ExprPtr>& expressions);
  void test(const Expr& expr);
  Printer& ordered(const Expr& expr);
  Printer& asText(const Expr& expr);

  Statement statement_;
  qsizetype valuesSize_ = 0;  // characters of the texts among them
};

Statement printAction(const ResolvedAction& action);

}  // namespace store::sql
