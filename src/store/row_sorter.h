#pragma once

#include <string>

#include "store/connection.h"
#include "store/query.h"

namespace store {

// Puts rows in order by several values each. A text is turned into a key once, then ranked; a text
// of a joined list is ranked once for each of the list's values in use. Equal rows keep the order
// in which they were added.
class RowSorter final {
 public:
  RowSorter(Connection& connection, const std::vector<Query::SortTerm>& terms);

  // Adds a row whose sort values stand in the statement's columns from `column` on.
  void add(quint64 key, const SQLite::Statement& row, int column);
  std::vector<quint64> sorted();

 private:
  // A value of one term: a number that orders as the value does, or the place of a text's key.
  struct Column {
    std::vector<quint64> values;
    std::string texts;
    std::vector<std::size_t> textEnds;
    bool ofList = false;
  };
  static void addValue(Column& target, const SQLite::Statement& row, int column);
  static void rankTexts(Column& column);
  void rankList(Column& column, const Query::SortTerm& term);

  Connection& connection_;
  const std::vector<Query::SortTerm>& terms_;
  std::vector<quint64> keys_;
  std::vector<Column> columns_;
};

}  // namespace store
