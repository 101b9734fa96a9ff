#pragma once

#include "store/connection.h"
#include "store/query.h"

namespace store {

// The rows of a query without keys (groups, unions), kept as they were computed. They lie in
// memory, outside the archive: its transactions do not touch them.
class ResultTable final {
 public:
  ResultTable(Connection& archive, const Query& query);

  qint64 count() const { return count_; }
  // The connection that Query::rowByKeys() and Query::keysWhere() are meant for.
  Connection& connection() { return memory_; }

 private:
  void create(const Query& query);
  void fill(Connection& archive, const Query& query);

  Connection memory_;
  qint64 count_ = 0;
};

}  // namespace store
