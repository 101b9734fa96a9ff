#pragma once

#include <QtGlobal>

struct sqlite3;

namespace store {

// Gives an open file the archive's own order of text (ITALIANO) and the functions that printed
// queries call: tvx_like(text, pattern), tvx_text(value), a value as text the way users see it, and
// tvx_sum(key), the sum of all keys' marks.
void addLanguage(sqlite3* handle);

// A number for a key such that sums of them, in any order, are the same for the same keys only.
inline quint64 keyMark(qint64 key) {
  quint64 value = static_cast<quint64>(key) + 0x9e3779b97f4a7c15;
  value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9;
  value = (value ^ (value >> 27)) * 0x94d049bb133111eb;
  return value ^ (value >> 31);
}

}  // namespace store
