#pragma once

#include <string_view>

#include "store/connection.h"

struct sqlite3_stmt;

namespace store {

// A reading statement for loops over many rows: each look at a column is one call of the engine.
class HotStatement final {
 public:
  HotStatement(Connection& connection, const sql::Statement& statement);
  ~HotStatement();
  HotStatement(const HotStatement&) = delete;
  HotStatement& operator=(const HotStatement&) = delete;

  // Goes to the next row; false behind the last.
  bool step();
  qint64 integer(int column) const;
  double real(int column) const;
  bool isNull(int column) const;
  bool isNumber(int column) const;
  bool isInteger(int column) const;
  // Bytes of a text, valid until the next step.
  std::string_view text(int column) const;

 private:
  [[noreturn]] void fail() const;
  void bind(const QVariantList& values);

  Connection& connection_;
  sqlite3_stmt* statement_ = nullptr;
};

}  // namespace store
