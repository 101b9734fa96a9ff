#include "store/page_checksum.h"

#include <sqlite3.h>
// Compiled here it takes half the time that the shared library takes for a page.
#define XXH_INLINE_ALL
#include <xxhash.h>

#include <QtEndian>
#include <vector>

namespace store {
namespace {

constexpr int kHeaderBytes = 100;
constexpr int kReservedAt = 20;
constexpr int kApplicationAt = 68;
constexpr int kSmallestPage = 512;
constexpr int kLargestPage = 65536;
// The engine keeps its locks there; the page that holds this byte is never written.
constexpr sqlite3_int64 kLockByte = 0x40000000;
#ifdef SQLITE_IOCAP_SUBPAGE_READ
constexpr int kPartsOfPages = SQLITE_IOCAP_SUBPAGE_READ;
#else
constexpr int kPartsOfPages = 0;
#endif

// The system's own file lies behind it in the room that the engine gives.
struct PageFile {
  sqlite3_file base;
  sqlite3_int64 hasChecksums;
};

PageFile& pageFile(sqlite3_file* file) {
  return *reinterpret_cast<PageFile*>(file);
}
sqlite3_file* systemFile(sqlite3_file* file) {
  return reinterpret_cast<sqlite3_file*>(&pageFile(file) + 1);
}

bool isPage(int size, sqlite3_int64 from) {
  return size >= kSmallestPage && size <= kLargestPage && (size & (size - 1)) == 0 &&
         from % size == 0;
}

void seal(uchar* page, int size, sqlite3_int64 from) {
  qToLittleEndian(pageChecksum(page, size, from / size + 1), page + size - kChecksumBytes);
}

template <auto method, typename... Arguments>
int onSystemFile(sqlite3_file* file, Arguments... arguments) {
  sqlite3_file* system = systemFile(file);
  return (system->pMethods->*method)(system, arguments...);
}

int closeFile(sqlite3_file* file) {
  const int code = onSystemFile<&sqlite3_io_methods::xClose>(file);
  file->pMethods = nullptr;
  return code;
}

int readFile(sqlite3_file* file, void* to, int size, sqlite3_int64 from) {
  const int code = onSystemFile<&sqlite3_io_methods::xRead>(file, to, size, from);
  const bool isShort = code == SQLITE_IOERR_SHORT_READ && from > 0;
  if (code != SQLITE_OK && !isShort) return code;
  const auto* page = static_cast<const uchar*>(to);
  // Once they are known to be there, a header that denies them is damaged.
  if (from == 0 && size >= kHeaderBytes && saysChecksums(page)) pageFile(file).hasChecksums = 1;
  if (pageFile(file).hasChecksums == 0 || !isPage(size, from)) return code;
  const bool isWhole = !isShort && isWholePage(page, size, from / size + 1);
  return isWhole ? SQLITE_OK : SQLITE_IOERR_DATA;
}

// Pages between the file's end and what is written behind it: the engine does not write those that
// are free, but a copy reads them.
int fillUpTo(sqlite3_file* file, int size, sqlite3_int64 end) {
  sqlite3_int64 from = 0;
  int code = onSystemFile<&sqlite3_io_methods::xFileSize>(file, &from);
  from += (size - from % size) % size;
  for (; code == SQLITE_OK && from < end; from += size) {
    if (from / size == kLockByte / size) continue;
    std::vector<uchar> page(static_cast<std::size_t>(size));
    seal(page.data(), size, from);
    code = onSystemFile<&sqlite3_io_methods::xWrite>(file, page.data(), size, from);
  }
  return code;
}

// The checksum is put into the engine's own page, so that its journal and its copies hold it too.
int writeFile(sqlite3_file* file, const void* data, int size, sqlite3_int64 to) {
  auto* page = static_cast<uchar*>(const_cast<void*>(data));
  if (to == 0 && size >= kHeaderBytes) pageFile(file).hasChecksums = saysChecksums(page) ? 1 : 0;
  if (pageFile(file).hasChecksums != 0 && isPage(size, to)) {
    if (const int code = fillUpTo(file, size, to); code != SQLITE_OK) return code;
    seal(page, size, to);
  }
  return onSystemFile<&sqlite3_io_methods::xWrite>(file, data, size, to);
}

int characteristicsOf(sqlite3_file* file) {
  return onSystemFile<&sqlite3_io_methods::xDeviceCharacteristics>(file) & ~kPartsOfPages;
}

void shareBarrier(sqlite3_file* file) {
  systemFile(file)->pMethods->xShmBarrier(systemFile(file));
}

// The third version of these methods would be memory mapping, which nobody verifies.
sqlite3_io_methods methods() {
  sqlite3_io_methods own{};
  own.iVersion = 2;
  own.xClose = closeFile;
  own.xRead = readFile;
  own.xWrite = writeFile;
  own.xTruncate = onSystemFile<&sqlite3_io_methods::xTruncate>;
  own.xSync = onSystemFile<&sqlite3_io_methods::xSync>;
  own.xFileSize = onSystemFile<&sqlite3_io_methods::xFileSize>;
  own.xLock = onSystemFile<&sqlite3_io_methods::xLock>;
  own.xUnlock = onSystemFile<&sqlite3_io_methods::xUnlock>;
  own.xCheckReservedLock = onSystemFile<&sqlite3_io_methods::xCheckReservedLock>;
  own.xFileControl = onSystemFile<&sqlite3_io_methods::xFileControl>;
  own.xSectorSize = onSystemFile<&sqlite3_io_methods::xSectorSize>;
  own.xDeviceCharacteristics = characteristicsOf;
  own.xShmMap = onSystemFile<&sqlite3_io_methods::xShmMap>;
  own.xShmLock = onSystemFile<&sqlite3_io_methods::xShmLock>;
  own.xShmBarrier = shareBarrier;
  own.xShmUnmap = onSystemFile<&sqlite3_io_methods::xShmUnmap>;
  return own;
}

sqlite3_vfs* systemLayer = nullptr;

int openFile(sqlite3_vfs*, sqlite3_filename name, sqlite3_file* file, int flags, int* outFlags) {
  if ((flags & SQLITE_OPEN_MAIN_DB) == 0) {
    return systemLayer->xOpen(systemLayer, name, file, flags, outFlags);
  }
  static const sqlite3_io_methods own = methods();
  pageFile(file) = {};
  const int code = systemLayer->xOpen(systemLayer, name, systemFile(file), flags, outFlags);
  if (systemFile(file)->pMethods != nullptr) file->pMethods = &own;
  if (name != nullptr) {
    pageFile(file).hasChecksums = sqlite3_uri_boolean(name, "checksums", 0);
  }
  return code;
}

}  // namespace

bool saysChecksums(const uchar* header) {
  return header[kReservedAt] == kChecksumBytes &&
         qFromBigEndian<quint32>(header + kApplicationAt) == kApplicationId;
}

quint64 pageChecksum(const uchar* page, qsizetype size, qint64 number) {
  return XXH3_64bits_withSeed(page, static_cast<std::size_t>(size - kChecksumBytes),
                              static_cast<XXH64_hash_t>(number));
}

bool isWholePage(const uchar* page, qsizetype size, qint64 number) {
  return pageChecksum(page, size, number) ==
         qFromLittleEndian<quint64>(page + size - kChecksumBytes);
}

void reserveChecksums(sqlite3* database) {
  int bytes = kChecksumBytes;
  sqlite3_file_control(database, "main", SQLITE_FCNTL_RESERVE_BYTES, &bytes);
}

bool hasChecksums(sqlite3* database) {
  int bytes = -1;  // asks only
  sqlite3_file_control(database, "main", SQLITE_FCNTL_RESERVE_BYTES, &bytes);
  return bytes == kChecksumBytes;
}

// All but opening a file is the system's: its functions find what they need in their layer's data,
// which the copy has too.
const char* checkedFileLayer() {
  static sqlite3_vfs layer = [] {
    systemLayer = sqlite3_vfs_find(nullptr);
    sqlite3_vfs own = *systemLayer;
    own.zName = "tavolix";
    own.szOsFile += static_cast<int>(sizeof(PageFile));
    own.xOpen = openFile;
    return own;
  }();
  static const int registered = sqlite3_vfs_register(&layer, 0);
  return registered == SQLITE_OK ? layer.zName : nullptr;
}

}  // namespace store
