#include "store/page_image.h"

#include <algorithm>
#include <utility>

#include "store/page_checksum.h"
#include "store/page_healing.h"
#include "store/page_scan.h"

namespace store {
namespace {

constexpr int kHeader = 100;
constexpr int kReservedAt = 20;
constexpr int kMostReserved = 64;
constexpr qint64 kLockByte = 0x40000000;
// How much is tried before pages are given up.
constexpr qint64 kMostPlacesTried = 10'000'000;
constexpr int kMostPagesHealed = 24;
constexpr qint64 kSampled = 200;

}  // namespace

PageImage::PageImage(QByteArray file, const Progress& progress) : file_(std::move(file)) {
  file_.detach();
  detectFormat();
  const qint64 pages = (file_.size() + pageSize_ - 1) / pageSize_;
  places_.resize(static_cast<std::size_t>(pages) + 1);
  verify(progress);
  if (hasChecksums_ && !isSound()) heal(progress);
}

bool PageImage::isSound() const {
  return std::all_of(places_.begin() + 1, places_.end(), [](const Place& place) {
    return place.verdict == Verdict::Whole || place.verdict == Verdict::Unproven;
  });
}

Verdict PageImage::verdict(qint64 number) const {
  const bool isThere = number >= 1 && number <= count();
  return isThere ? places_[static_cast<std::size_t>(number)].verdict : Verdict::Missing;
}

const uchar* PageImage::page(qint64 number) const {
  if (verdict(number) == Verdict::Missing) return nullptr;
  const qint64 at = places_[static_cast<std::size_t>(number)].at;
  return reinterpret_cast<const uchar*>(file_.constData()) + at;
}

int PageImage::encoding() const {
  constexpr int kEncodingAt = 59;
  const int said = isSure(1) ? *(page(1) + kEncodingAt) : 1;
  return said == 2 || said == 3 ? said : 1;
}

bool PageImage::isAt(qint64 number, qint64 place) const {
  return place >= 0 && place + pageSize_ <= file_.size() &&
         isWholePage(reinterpret_cast<const uchar*>(file_.constData()) + place, pageSize_, number);
}

int PageImage::provenPages(int size) const {
  int proven = 0;
  const qint64 pages = std::min<qint64>(file_.size() / size, kSampled);
  for (qint64 number = 1; number <= pages; ++number) {
    const auto* page = reinterpret_cast<const uchar*>(file_.constData()) + (number - 1) * size;
    if (isWholePage(page, size, number)) ++proven;
  }
  return proven;
}

// The header may be what is damaged: pages tell their size and their checksums themselves.
void PageImage::detectFormat() {
  if (file_.size() < kHeader) return;
  if (const auto size = static_cast<int>(pageSizeIn(file_.constData())); size > 0) pageSize_ = size;
  int most = provenPages(pageSize_);
  for (int size = 512; size <= 65536; size *= 2) {
    const int proven = provenPages(size);
    if (proven > most) std::tie(most, pageSize_) = std::pair(proven, size);
  }
  hasChecksums_ = most > 0 || saysChecksums(bytes(0));
  const int said = *bytes(kReservedAt);
  reserved_ = hasChecksums_ ? kChecksumBytes : said <= kMostReserved ? said : 0;
}

void PageImage::verify(const Progress& progress) {
  for (qint64 number = 1; number <= count(); ++number) {
    Place& place = places_[static_cast<std::size_t>(number)];
    place.at = (number - 1) * pageSize_;
    if (number % 1024 == 1) tell(progress, place.at, file_.size());
    if (place.at + pageSize_ > file_.size()) continue;
    const bool isOfLocks = number == kLockByte / pageSize_ + 1;
    place.verdict = !hasChecksums_                        ? Verdict::Unproven
                    : isOfLocks || isAt(number, place.at) ? Verdict::Whole
                                                          : Verdict::Damaged;
  }
}

std::vector<qint64> PageImage::damaged() const {
  std::vector<qint64> numbers;
  for (qint64 number = 1; number <= count(); ++number) {
    if (!isSure(number)) numbers.push_back(number);
  }
  return numbers;
}

// Among the places of the other damaged ones, that of the last one's distance first: what has been
// moved was so together with others.
void PageImage::findElsewhere(const Progress& progress) {
  const std::vector<qint64> places = damaged();
  std::vector<qint64> wanted = places;
  // A file that was cut within may hold pages beyond its own number of them.
  qint64 tried = 0;
  qint64 distance = 0;
  for (const qint64 number : wanted) {
    const auto take = [&](qint64 at) {
      ++tried;
      if (!isAt(number, at)) return false;
      distance = at - (number - 1) * pageSize_;
      places_[static_cast<std::size_t>(number)] = {at, Verdict::Healed};
      return true;
    };
    if (take((number - 1) * pageSize_ + distance)) continue;
    if (tried % 1024 == 0) tell(progress, 0, file_.size());
    for (const qint64 other : places) {
      if (tried > kMostPlacesTried || take((other - 1) * pageSize_)) break;
    }
  }
}

void PageImage::heal(const Progress& progress) {
  findElsewhere(progress);
  int tried = 0;
  for (const qint64 number : damaged()) {
    Place& place = places_[static_cast<std::size_t>(number)];
    if (place.verdict == Verdict::Missing || tried == kMostPagesHealed) continue;
    tell(progress, place.at, file_.size());
    ++tried;
    const bool isHealed = (number == 1 && healHeader(bytes(0), pageSize_, count())) ||
                          healByte(bytes(place.at), pageSize_, number);
    if (isHealed) place.verdict = Verdict::Healed;
  }
}

}  // namespace store
