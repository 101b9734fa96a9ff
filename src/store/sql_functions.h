#pragma once

#include "store/sql_ast.h"

namespace store::sql {

// A function that queries may call, and what it is called in SQLite's language.
struct Function {
  const char* name;
  int least;  // number of arguments
  int most;
  const char*
      text;  // "%1", "%2", ... stand for the arguments, "$1", ... for them as text, "%%" for "%"
  FieldKind kind;
  bool aggregate = false;
  int sameKindAs = -1;  // place of the argument that decides the kind
};

// Null if queries may not call it; without case.
const Function* findFunction(const QString& name);
bool hasAggregate(const Expr& expr);
// Kind of the values of a bound expression.
FieldKind kindOf(const Expr& expr);
// True if a bound expression says yes or no: its value is -1 or 0 here, 1 or 0 in SQLite.
bool isTest(const Expr& expr);

}  // namespace store::sql
