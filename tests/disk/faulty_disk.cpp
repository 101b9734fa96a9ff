#include "disk/faulty_disk.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <string_view>

namespace faulty {
namespace {

Order current;
int count = 0;

bool meets(unsigned call) {
  if (current.nth == 0 || (current.calls & call) == 0) return false;
  ++count;
  return count == current.nth || (count > current.nth && current.lasts);
}

int fail() {
  if (count == current.nth && current.atFirst) current.atFirst();
  errno = current.error;
  return current.error == 0 ? 0 : -1;
}

int openFile(const char* name, int flags, int mode) {
  const bool isJournal = std::string_view(name).ends_with("-journal");
  const bool writes = (flags & O_ACCMODE) != O_RDONLY;
  const unsigned call = isJournal ? kOpenJournal : writes ? kOpen | kOpenToWrite : kOpen;
  return meets(call) ? fail() : ::open(name, flags, mode);
}

ssize_t readAt(int file, void* to, std::size_t size, off_t from) {
  return meets(kRead) ? fail() : ::syscall(SYS_pread64, file, to, size, from);
}

// A write that fails has written half.
ssize_t writeAt(int file, const void* data, std::size_t size, off_t to) {
  if (!meets(kWrite)) return ::pwrite(file, data, size, to);
  return ::pwrite(file, data, size / 2, to) < 0 ? -1 : fail();
}

int truncateFile(int file, off_t size) {
  return meets(kTruncate) ? fail() : ::ftruncate(file, size);
}

int removeFile(const char* name) {
  return meets(kDelete) ? fail() : ::unlink(name);
}

int sizeOf(int file, struct stat* to) {
  return meets(kSize) ? fail() : ::fstat(file, to);
}

int control(int file, int command, ...) {
  va_list arguments;
  va_start(arguments, command);
  void* argument = va_arg(arguments, void*);
  va_end(arguments);
  if (command == F_SETLK) {
    const bool gives = static_cast<struct flock*>(argument)->l_type == F_UNLCK;
    if (meets(gives ? kUnlock : kLock)) return fail();
  }
  return ::fcntl(file, command, argument);
}

// SQLite lets tests take the place of its system calls.
template <typename Call>
void replace(const char* name, Call call) {
  sqlite3_vfs* system = sqlite3_vfs_find(nullptr);
  system->xSetSystemCall(system, name, reinterpret_cast<sqlite3_syscall_ptr>(call));
}

const bool kReplaced = [] {
  replace("open", openFile);
  replace("pread64", readAt);
  replace("pwrite64", writeAt);
  replace("ftruncate", truncateFile);
  replace("unlink", removeFile);
  replace("fstat", sizeOf);
  replace("fcntl", control);
  return true;
}();

}  // namespace

void order(const Order& trouble) {
  current = trouble;
  if (trouble.nth > 0) count = 0;
}

int calls() {
  return count;
}

}  // namespace faulty

// What is asked for directly. The system does not go down during the tests: nothing has to reach
// the platters.
int fdatasync(int) {
  return faulty::meets(faulty::kSync) ? faulty::fail() : 0;
}
int fsync(int) {
  return faulty::meets(faulty::kSync) ? faulty::fail() : 0;
}
ssize_t pread(int file, void* to, std::size_t size, off_t from) {
  return faulty::readAt(file, to, size, from);
}
ssize_t write(int file, const void* data, std::size_t size) {
  const bool isFile = file > STDERR_FILENO;
  if (!isFile || !faulty::meets(faulty::kWrite)) return ::syscall(SYS_write, file, data, size);
  return ::syscall(SYS_write, file, data, size / 2) < 0 ? -1 : faulty::fail();
}
int rename(const char* from, const char* to) noexcept {
  if (faulty::meets(faulty::kRename)) return faulty::fail();
  return static_cast<int>(::syscall(SYS_rename, from, to));
}
