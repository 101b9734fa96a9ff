#pragma once

#include <cstdint>
#include <string>

namespace store {

// An ASCII character in either case: small letters differ from capitals in one bit. Made of a
// character outside ASCII, it is no byte at all.
class AnyCase final {
 public:
  AnyCase() = default;
  explicit AnyCase(char32_t folded)
      : small_(folded < 0x80 ? static_cast<std::uint8_t>(folded) : kNone),
        bit_(folded >= 'a' && folded <= 'z' ? 0x20 : 0) {}

  bool is(char byte) const {
    return small_ != kNone && (static_cast<std::uint8_t>(byte) | bit_) == small_;
  }
  // The bytes of a word compared with this one: those that are this character become 0.
  std::uint64_t differences(std::uint64_t word) const {
    return (word | (bit_ * kEach)) ^ (small_ * kEach);
  }

  static constexpr std::uint64_t kEach = 0x0101010101010101;

 private:
  static constexpr std::uint8_t kNone = 0xFF;
  std::uint8_t small_ = kNone;
  std::uint8_t bit_ = 0;
};

// Finds an ASCII text in any case. No character outside ASCII has a small letter inside, and marks
// only take letters away: this finds every place where the text can be.
class AsciiNeedle final {
 public:
  AsciiNeedle() = default;
  // The text in small letters, not empty.
  explicit AsciiNeedle(std::string folded);

  std::size_t size() const { return text_.size(); }
  // First occurrence, nullptr if there is none.
  const char* find(const char* at, const char* end) const;

 private:
  bool mayBeInWord(const char* at) const;
  const char* findEach(const char* at, const char* stop) const;
  bool isAt(const char* at) const;

  std::string text_;
  AnyCase first_;
  AnyCase last_;
};

}  // namespace store
