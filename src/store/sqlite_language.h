#pragma once

#include <QtGlobal>

struct sqlite3;

namespace store {

// Gives an open file the archive's own order of text (ITALIANO) and the functions that printed
// queries call: tvx_like(text, pattern), tvx_text(value), a value as text the way users see it, and
// tvx_sum(key), the sum of all keys' marks.
void addLanguage(sqlite3* handle);

// A number for a key such that sums of them, in any order, are the same for the same keys only.
quint64 keyMark(qint64 key);

}  // namespace store
