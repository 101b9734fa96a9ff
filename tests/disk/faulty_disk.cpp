#include "disk/faulty_disk.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <string_view>

namespace {

FaultyDisk* disk = nullptr;

bool meets(unsigned call) {
  return disk != nullptr && disk->meets(call);
}

int openFile(const char* name, int flags, int mode) {
  const bool isJournal = std::string_view(name).ends_with("-journal");
  const bool writes = (flags & O_ACCMODE) != O_RDONLY;
  const unsigned call = isJournal ? kOpenJournal : writes ? kOpen | kOpenToWrite : kOpen;
  return meets(call) ? disk->fail() : ::open(name, flags, mode);
}

ssize_t readAt(int file, void* to, std::size_t size, off_t from) {
  return meets(kRead) ? disk->fail() : ::pread(file, to, size, from);
}

// A write that fails has written half.
ssize_t writeAt(int file, const void* data, std::size_t size, off_t to) {
  if (!meets(kWrite)) return ::pwrite(file, data, size, to);
  return ::pwrite(file, data, size / 2, to) < 0 ? -1 : disk->fail();
}

int truncateFile(int file, off_t size) {
  return meets(kTruncate) ? disk->fail() : ::ftruncate(file, size);
}

int removeFile(const char* name) {
  return meets(kDelete) ? disk->fail() : ::unlink(name);
}

int sizeOf(int file, struct stat* to) {
  return meets(kSize) ? disk->fail() : ::fstat(file, to);
}

int control(int file, int command, ...) {
  va_list arguments;
  va_start(arguments, command);
  void* argument = va_arg(arguments, void*);
  va_end(arguments);
  if (command == F_SETLK) {
    const bool gives = static_cast<struct flock*>(argument)->l_type == F_UNLCK;
    if (meets(gives ? kUnlock : kLock)) return disk->fail();
  }
  return ::fcntl(file, command, argument);
}

// SQLite lets tests take the place of its system calls.
template <typename Call>
void replace(const char* name, Call call) {
  sqlite3_vfs* system = sqlite3_vfs_find(nullptr);
  system->xSetSystemCall(system, name, reinterpret_cast<sqlite3_syscall_ptr>(call));
}

}  // namespace

// It asks for this one directly. The system does not go down during the tests: nothing has to reach
// the platters.
int fdatasync(int) {
  return meets(kSync) ? disk->fail() : 0;
}

FaultyDisk::FaultyDisk() {
  disk = this;
  replace("open", openFile);
  replace("pread64", readAt);
  replace("pwrite64", writeAt);
  replace("ftruncate", truncateFile);
  replace("unlink", removeFile);
  replace("fstat", sizeOf);
  replace("fcntl", control);
}

FaultyDisk::~FaultyDisk() {
  // No name: all of them are the system's own again.
  replace<sqlite3_syscall_ptr>(nullptr, nullptr);
  disk = nullptr;
}

void FaultyDisk::order(unsigned calls, int error, int nth, bool lasts,
                       std::function<void()> atFirst) {
  calls_ = calls;
  error_ = error;
  nth_ = nth;
  lasts_ = lasts;
  atFirst_ = std::move(atFirst);
  count_ = 0;
}

bool FaultyDisk::meets(unsigned call) {
  if (nth_ == 0 || (calls_ & call) == 0) return false;
  ++count_;
  return count_ == nth_ || (count_ > nth_ && lasts_);
}

int FaultyDisk::fail() {
  if (count_ == nth_ && atFirst_) atFirst_();
  errno = error_;
  return error_ == 0 ? 0 : -1;
}
