#pragma once

#include <QByteArray>
#include <vector>

#include "store/progress.h"

namespace store {

// Whole: the page proves itself. Healed: it does once a fault is undone. Damaged: it does not.
// Missing: the file has no such page. Unproven: pages of this file have no checksums.
enum class Verdict : quint8 { Whole, Healed, Damaged, Missing, Unproven };

// An archive's pages as they lie in its file, whatever that has become. Faults that a checksum can
// prove are undone: pages that stand in another's place or behind bytes that do not belong there,
// a single wrong byte, a wrong field of the header.
class PageImage final {
 public:
  // Fails with 3059.
  PageImage(QByteArray file, const Progress& progress);

  bool hasChecksums() const { return hasChecksums_; }
  bool isSound() const;  // as it lies in the file
  int pageSize() const { return pageSize_; }
  // Of texts: 1 is UTF-8, 2 and 3 are UTF-16 with the low and with the high byte first.
  int encoding() const;
  int usableSize() const { return pageSize_ - reserved_; }
  // Pages have the numbers from 1 on to this.
  qint64 count() const { return static_cast<qint64>(places_.size()) - 1; }
  Verdict verdict(qint64 number) const;
  // As it was written, as far as that is known.
  bool isSure(qint64 number) const {
    const Verdict found = verdict(number);
    return found != Verdict::Damaged && found != Verdict::Missing;
  }
  // Null for a page that is missing.
  const uchar* page(qint64 number) const;

 private:
  struct Place {
    qint64 at = 0;  // in the file
    Verdict verdict = Verdict::Missing;
  };

  void detectFormat();
  int provenPages(int size) const;
  void verify(const Progress& progress);
  void heal(const Progress& progress);
  void findElsewhere(const Progress& progress);
  bool isAt(qint64 number, qint64 place) const;
  std::vector<qint64> damaged() const;
  uchar* bytes(qint64 at) { return reinterpret_cast<uchar*>(file_.data()) + at; }

  QByteArray file_;
  bool hasChecksums_ = false;
  int pageSize_ = 4096;
  int reserved_ = 0;
  std::vector<Place> places_;
};

}  // namespace store
