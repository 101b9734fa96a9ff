#pragma once

struct sqlite3;

namespace store {

// Gives an open file the archive's own order of text (ITALIANO) and the functions that printed
// queries call: tvx_like(text, pattern) and tvx_text(value), a value as text the way users see it.
void addLanguage(sqlite3* handle);

}  // namespace store
