#include "store/page_healing.h"

#include <QtEndian>
#include <algorithm>
#include <bit>
#include <initializer_list>

#include "store/page_checksum.h"

namespace store {
namespace {

// A wrong page's checksum differs from the right one in half of its bits; in so few by chance once
// in some thousand millions of pages.
constexpr int kMostWrongBits = 8;

bool healChecksum(uchar* page, int size, qint64 number) {
  const quint64 wanted = pageChecksum(page, size, number);
  uchar* const at = page + size - kChecksumBytes;
  if (std::popcount(wanted ^ qFromLittleEndian<quint64>(at)) > kMostWrongBits) return false;
  qToLittleEndian(wanted, at);
  return true;
}

// All numbers of a field of four bytes from one on to another.
bool tryNumbers(uchar* page, int size, int field, quint32 from, quint32 to) {
  const quint32 kept = qFromBigEndian<quint32>(page + field);
  for (quint32 number = from; number <= to; ++number) {
    qToBigEndian(number, page + field);
    if (isWholePage(page, size, 1)) return true;
  }
  qToBigEndian(kept, page + field);
  return false;
}

bool tryOne(uchar* page, int size, int field, quint32 number) {
  return tryNumbers(page, size, field, number, number);
}

}  // namespace

bool healByte(uchar* page, int size, qint64 number) {
  if (healChecksum(page, size, number)) return true;
  // Nothing of what was written is left.
  if (std::all_of(page, page + size, [&](uchar byte) { return byte == *page; })) return false;
  for (int at = 0; at < size - kChecksumBytes; ++at) {
    const uchar kept = page[at];
    for (int value = 0; value < 256; ++value) {
      page[at] = static_cast<uchar>(value);
      if (value != kept && isWholePage(page, size, number)) return true;
    }
    page[at] = kept;
  }
  return false;
}

// The fields and what they may hold: https://www.sqlite.org/fileformat2.html#the_database_header
bool healHeader(uchar* page, int size, qint64 pages) {
  const auto count = static_cast<quint32>(pages);
  const auto pageSize = static_cast<quint32>(size == 65536 ? 1 : size) << 16;
  constexpr quint32 kFractions = 0x00402020;
  constexpr quint32 kMostCookies = 20000;
  // "SQLite format 3", page size and versions, reserved bytes and fractions.
  for (const auto& [field, number] :
       std::initializer_list<std::pair<int, quint32>>{{0, 0x53514c69},
                                                      {4, 0x74652066},
                                                      {8, 0x6f726d61},
                                                      {12, 0x74203300},
                                                      {16, pageSize | 0x0101},
                                                      {18, 0x01010840},
                                                      {16, pageSize | 0x0202},
                                                      {20, kChecksumBytes << 24 | kFractions},
                                                      {24, qFromBigEndian<quint32>(page + 92)},
                                                      {92, qFromBigEndian<quint32>(page + 24)},
                                                      {56, 1},
                                                      {68, kApplicationId}}) {
    if (tryOne(page, size, field, number)) return true;
  }
  if (tryNumbers(page, size, 28, 0, 2 * count + 1000)) return true;
  for (const int field : {32, 36}) {
    if (tryNumbers(page, size, field, 0, count)) return true;
  }
  for (const int field : {44, 48, 52, 60, 64}) {
    if (tryNumbers(page, size, field, 0, 8)) return true;
  }
  if (tryNumbers(page, size, 40, 0, kMostCookies)) return true;
  return tryNumbers(page, size, 96, 3'007'000, 3'060'000);
}

}  // namespace store
