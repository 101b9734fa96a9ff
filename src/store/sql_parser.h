#pragma once

#include <memory>

#include "store/sql_ast.h"

namespace store::sql {

// Reads a SELECT. Fails with 3075 where the text is none, with 3360 where it nests too deep.
std::shared_ptr<const Select> parseSelect(const QString& text);
// Reads a condition as it stands behind WHERE.
ExprPtr parseCondition(const QString& text);
// Reads an action query.
UpdateAction parseAction(const QString& text);
// True if a text is a SELECT and not the name of a table or stored query.
bool looksLikeSelect(const QString& text);

}  // namespace store::sql
