#pragma once

#include <QScopeGuard>

#include "store/recordset.h"

namespace store {

// As its scope is left, gives up an added or edited row that has not been written by then: values
// read and rows deleted afterwards are those of the current row again.
[[nodiscard]] inline auto givingUpUnwritten(RecordsetPtr rows) {
  return qScopeGuard([rows = std::move(rows)] {
    if (rows->IsOpen()) rows->CancelUpdate();
  });
}

}  // namespace store
