#pragma once

#include <QtGlobal>
#include <vector>

struct sqlite3;

namespace store {

// Gives an open file the archive's own order of text (ITALIANO) and the functions that printed
// queries call: tvx_like(text, pattern) and tvx_text(value), a value as text the way users see it.
void addLanguage(sqlite3* handle);

// Adds tvx_take(numbers ...), which appends its whole numbers to `sink` and is false: a scan with
// it as its condition is one call of the engine, whatever the number of rows. A row with anything
// else than whole numbers is passed over.
void addTake(sqlite3* handle, std::vector<qint64>* sink);

}  // namespace store
