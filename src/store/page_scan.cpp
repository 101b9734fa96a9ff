#include "store/page_scan.h"

#include <algorithm>

#include "store/page_checksum.h"

namespace store {
namespace {

constexpr qint64 kHeader = 100;
constexpr int kPageSizeAt = 16;
// The engine keeps its locks there; the page that holds this byte is never written.
constexpr qint64 kLockByte = 0x40000000;

const uchar* bytesOf(const char* data) {
  return reinterpret_cast<const uchar*>(data);
}

}  // namespace

// The header's 1 stands for 65,536 bytes.
qint64 pageSizeIn(const char* header) {
  const uchar* at = bytesOf(header) + kPageSizeAt;
  const qint64 size = at[0] << 8 | at[1];
  if (size == 1) return 65536;
  return size >= 512 && (size & (size - 1)) == 0 ? size : 0;
}

void PageScan::take(const char* bytes, qint64 size) {
  if (taken_ == 0 && size >= kHeader) {
    pageSize_ = pageSizeIn(bytes);
    report_.hasChecksums = pageSize_ > 0 && saysChecksums(bytesOf(bytes));
  }
  const qint64 begin = taken_;
  taken_ += size;
  if (!report_.hasChecksums) return;
  for (qint64 at = 0; at < size; at += pageSize_) {
    const qint64 number = (begin + at) / pageSize_ + 1;
    if (number == kLockByte / pageSize_ + 1) continue;
    const bool isWhole =
        size - at >= pageSize_ && isWholePage(bytesOf(bytes + at), pageSize_, number);
    if (!isWhole) report_.damaged.push_back(number);
  }
}

}  // namespace store
