#pragma once

#include <QByteArray>
#include <vector>

namespace store {

struct PageReport {
  bool hasChecksums = false;
  bool isComplete = true;       // false if it was broken off
  std::vector<qint64> damaged;  // numbers of pages from 1
};

// What a header says: bytes of a page, 0 if that is no size of pages.
qint64 pageSizeIn(const char* header);

// Verifies the pages of a file that passes by from its beginning, in pieces whose length is a
// multiple of every page's (kPiece) but for the last one.
class PageScan final {
 public:
  static constexpr qint64 kPiece = 1 << 20;

  void take(const char* bytes, qint64 size);
  const PageReport& report() const { return report_; }

 private:
  PageReport report_;
  qint64 pageSize_ = 0;
  qint64 taken_ = 0;
};

}  // namespace store
