#pragma once

#include <QString>
#include <functional>

#include "store/database.h"

namespace tavolix::builder {

// Makes an archive file without records: tables, stored queries, lookup lists, the columns of the
// lists and the archive's own settings, all from the sources in `dataFolder`; then `fill` adds to
// it. A file at `out` is replaced, but only once the new one is complete. Fails with what the
// sources are refused for, or with the store's failures.
void buildArchive(const QString& dataFolder, const QString& out,
                  const std::function<void(store::Database&)>& fill = {});

// Makes a database of the store at `out` from a file of schema statements; `fill` puts in what it
// holds. The same holds for a file at `out` as above.
void buildDatabase(const QString& schema, const QString& out,
                   const std::function<void(store::Database&)>& fill);

}  // namespace tavolix::builder
