#include "store/ascii_needle.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace store {
namespace {

constexpr int kWord = sizeof(std::uint64_t);

std::uint64_t wordAt(const char* at) {
  std::uint64_t word = 0;
  std::memcpy(&word, at, kWord);
  return word;
}

AnyCase anyCase(char folded) {
  return AnyCase(static_cast<std::uint8_t>(folded));
}

}  // namespace

AsciiNeedle::AsciiNeedle(std::string folded)
    : text_(std::move(folded)), first_(anyCase(text_.front())), last_(anyCase(text_.back())) {}

const char* AsciiNeedle::find(const char* at, const char* end) const {
  if (static_cast<std::size_t>(end - at) < text_.size()) return nullptr;
  const char* const stop = end - text_.size() + 1;
  const bool overAWord = stop - at >= kWord;
  for (; stop - at >= kWord; at += kWord) {
    if (!mayBeInWord(at)) continue;
    if (const char* hit = findEach(at, at + kWord); hit != nullptr) return hit;
  }
  if (overAWord && !mayBeInWord(stop - kWord)) return nullptr;
  return findEach(at, stop);
}

// Tests eight places at once, for the first and the last character.
bool AsciiNeedle::mayBeInWord(const char* at) const {
  const std::uint64_t bytes =
      first_.differences(wordAt(at)) | last_.differences(wordAt(at + text_.size() - 1));
  return ((bytes - AnyCase::kEach) & ~bytes & (0x80 * AnyCase::kEach)) != 0;
}

const char* AsciiNeedle::findEach(const char* at, const char* stop) const {
  for (; at < stop; ++at) {
    if (first_.is(*at) && isAt(at)) return at;
  }
  return nullptr;
}

bool AsciiNeedle::isAt(const char* at) const {
  return std::equal(text_.begin(), text_.end(), at,
                    [](char folded, char byte) { return anyCase(folded).is(byte); });
}

}  // namespace store
