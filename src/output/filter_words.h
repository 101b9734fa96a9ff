#pragma once

#include "store/database.h"

namespace tavolix::report {

// What a stored query "Q_REP_" and the index of a collection narrows its list to, in words: "Genere
// uguale a Romanzo e Anno maggiore di 1980". Empty without a filter, and for other queries.
QString filterInWords(store::Database& database, const QString& query);

}  // namespace tavolix::report
