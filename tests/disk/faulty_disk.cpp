#include "disk/faulty_disk.h"

#include <cstring>
#include <new>

namespace {

FaultyDisk* disk = nullptr;

// SQLite gives the room for both: this, and the real file behind it.
struct File {
  sqlite3_file base;
  sqlite3_file* real;
  int flags;
};

File& own(sqlite3_file* file) {
  return *reinterpret_cast<File*>(file);
}

template <typename Work>
int attempt(sqlite3_file* file, DiskCall call, int usualCode, Work&& work) {
  const int code = disk->meet(call, own(file).flags, usualCode);
  return code == SQLITE_OK ? work(own(file).real) : code;
}

int close(sqlite3_file* file) {
  sqlite3_file* real = own(file).real;
  return real->pMethods == nullptr ? SQLITE_OK : real->pMethods->xClose(real);
}

// What is not there reads as zeros.
int read(sqlite3_file* file, void* to, int size, sqlite3_int64 from) {
  std::memset(to, 0, static_cast<std::size_t>(size));
  return attempt(file, DiskCall::Read, SQLITE_IOERR_READ,
                 [&](sqlite3_file* real) { return real->pMethods->xRead(real, to, size, from); });
}

// A write that fails has written half.
int write(sqlite3_file* file, const void* data, int size, sqlite3_int64 to) {
  sqlite3_file* real = own(file).real;
  const auto half = [&] { real->pMethods->xWrite(real, data, size / 2, to); };
  const int code = disk->meet(DiskCall::Write, own(file).flags, SQLITE_IOERR_WRITE, half);
  return code == SQLITE_OK ? real->pMethods->xWrite(real, data, size, to) : code;
}

int truncate(sqlite3_file* file, sqlite3_int64 size) {
  return attempt(file, DiskCall::Truncate, SQLITE_IOERR_TRUNCATE,
                 [&](sqlite3_file* real) { return real->pMethods->xTruncate(real, size); });
}

// The system does not go down during the tests: nothing has to reach the platters.
int sync(sqlite3_file* file, int) {
  return attempt(file, DiskCall::Sync, SQLITE_IOERR_FSYNC, [](sqlite3_file*) { return SQLITE_OK; });
}

int fileSize(sqlite3_file* file, sqlite3_int64* size) {
  return attempt(file, DiskCall::Size, SQLITE_IOERR_FSTAT,
                 [&](sqlite3_file* real) { return real->pMethods->xFileSize(real, size); });
}

int lock(sqlite3_file* file, int level) {
  return attempt(file, DiskCall::Lock, SQLITE_IOERR_LOCK,
                 [&](sqlite3_file* real) { return real->pMethods->xLock(real, level); });
}

int unlock(sqlite3_file* file, int level) {
  return attempt(file, DiskCall::Unlock, SQLITE_IOERR_UNLOCK,
                 [&](sqlite3_file* real) { return real->pMethods->xUnlock(real, level); });
}

int checkReservedLock(sqlite3_file* file, int* locked) {
  return own(file).real->pMethods->xCheckReservedLock(own(file).real, locked);
}
int fileControl(sqlite3_file* file, int operation, void* argument) {
  return own(file).real->pMethods->xFileControl(own(file).real, operation, argument);
}
int sectorSize(sqlite3_file* file) {
  return own(file).real->pMethods->xSectorSize(own(file).real);
}
int characteristics(sqlite3_file* file) {
  return own(file).real->pMethods->xDeviceCharacteristics(own(file).real);
}

const sqlite3_io_methods kMethods = {
    1,
    close,
    read,
    write,
    truncate,
    sync,
    fileSize,
    lock,
    unlock,
    checkReservedLock,
    fileControl,
    sectorSize,
    characteristics,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
};

// A file that may only be read opens, but for reading.
int open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* out) {
  auto* made = new (file) File{};
  made->flags = flags;
  made->real = reinterpret_cast<sqlite3_file*>(made + 1);
  int code = disk->meet(DiskCall::Open, flags, SQLITE_CANTOPEN);
  if (code == SQLITE_READONLY && (flags & SQLITE_OPEN_MAIN_DB) != 0) {
    flags = (flags & ~(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)) | SQLITE_OPEN_READONLY;
    code = SQLITE_OK;
  }
  if (code != SQLITE_OK) return code;
  code = disk->real()->xOpen(disk->real(), name, made->real, flags, out);
  if (code == SQLITE_OK) made->base.pMethods = &kMethods;
  return code;
}

int remove(sqlite3_vfs*, const char* name, int) {
  const int code = disk->meet(DiskCall::Delete, SQLITE_OPEN_MAIN_JOURNAL, SQLITE_IOERR_DELETE);
  return code == SQLITE_OK ? disk->real()->xDelete(disk->real(), name, 0) : code;
}

int access(sqlite3_vfs*, const char* name, int flags, int* out) {
  const int code = disk->meet(DiskCall::Access, SQLITE_OPEN_MAIN_JOURNAL, SQLITE_IOERR_ACCESS);
  return code == SQLITE_OK ? disk->real()->xAccess(disk->real(), name, flags, out) : code;
}

int fullPathname(sqlite3_vfs*, const char* name, int size, char* out) {
  return disk->real()->xFullPathname(disk->real(), name, size, out);
}

}  // namespace

FaultyDisk::FaultyDisk() : real_(sqlite3_vfs_find(nullptr)), own_(*real_) {
  own_.szOsFile = static_cast<int>(sizeof(File)) + real_->szOsFile;
  own_.zName = "faulty";
  own_.xOpen = open;
  own_.xDelete = remove;
  own_.xAccess = access;
  own_.xFullPathname = fullPathname;
  disk = this;
  sqlite3_vfs_register(&own_, 1);
}

FaultyDisk::~FaultyDisk() {
  sqlite3_vfs_unregister(&own_);
  sqlite3_vfs_register(real_, 1);
  disk = nullptr;
}

void FaultyDisk::order(const Trouble& trouble, int nth, bool lasts, std::function<void()> atFirst) {
  trouble_ = trouble;
  nth_ = nth;
  lasts_ = lasts;
  atFirst_ = std::move(atFirst);
  calls_ = 0;
}

int FaultyDisk::meet(DiskCall call, int file, int usualCode, const std::function<void()>& before) {
  const bool concerns = trouble_.call == DiskCall::Any || trouble_.call == call;
  if (nth_ == 0 || !concerns || (trouble_.files & file & 0xfff00) == 0) return SQLITE_OK;
  ++calls_;
  if (calls_ < nth_ || (calls_ > nth_ && !lasts_)) return SQLITE_OK;
  if (before) before();
  if (calls_ == nth_ && atFirst_) atFirst_();
  return trouble_.call == DiskCall::Any ? usualCode : trouble_.code;
}
