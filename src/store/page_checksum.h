#pragma once

#include <QtGlobal>

struct sqlite3;

namespace store {

// A page of an archive proves itself: its last eight bytes hold the xxHash (XXH3, 64 bits, low byte
// first) of the bytes before them, seeded with the page's number from 1.
inline constexpr int kChecksumBytes = 8;
// Marks a file as an archive of this program ("TVLX").
inline constexpr quint32 kApplicationId = 0x54564c58;

// What a file's first 100 bytes say: an archive whose pages have checksums.
bool saysChecksums(const uchar* header);
quint64 pageChecksum(const uchar* page, qsizetype size, qint64 number);
bool isWholePage(const uchar* page, qsizetype size, qint64 number);

// Name of the engine's file layer that sets the checksum of a page when an archive writes it, and
// fails with SQLITE_IOERR_DATA where a page that is read does not have it. Other files, journals
// and temporary files too, pass through it as they are. Parameter of a URI for a file that is made
// under it: "checksums=1" gives them to pages that are written before the first one.
const char* checkedFileLayer();
// Leaves the room in a database that has no page yet, or in what VACUUM makes of it.
void reserveChecksums(sqlite3* database);
// Of an archive of which something has been read.
bool hasChecksums(sqlite3* database);

}  // namespace store
