#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Characters of UTF-8 text as the order of text and the patterns of Like see them.
namespace store::letters {

// A byte that is no UTF-8 is a character of its own: this code plus the byte.
inline constexpr char32_t kBadByte = 0x110000;

// What is known of one letter. Its marks are its own mark, after those of its parent.
struct Letter {
  char16_t folded = 0;  // code of the small letter
  char16_t parent = 0;  // the small letter without its last mark; 0: it has no mark
  char16_t base = 0;    // without any mark: what the first level of the order compares
  char16_t second = 0;  // second base letter, as the "e" of "æ"; 0: none
  std::uint8_t mark = 0;
};

// Numbers of marks: from kFirstMark on the combining marks by code, then the forms of letters.
inline constexpr std::uint8_t kFirstMark = 2;
inline constexpr char32_t kFirstMarkCode = 0x300;
inline constexpr char32_t kMarkCodes = 0x70;

inline constexpr std::array<std::uint8_t, 7> kPages = {0x00, 0x01, 0x02, 0x03, 0x04, 0x1E, 0x2C};
inline constexpr std::uint8_t kNoPage = 0xFF;
inline constexpr auto kPageSlots = [] {
  std::array<std::uint8_t, 0x2D> slots{};
  slots.fill(kNoPage);
  std::uint8_t slot = 0;
  for (const std::uint8_t page : kPages) slots[page] = slot++;
  return slots;
}();
extern const std::array<Letter, kPages.size() * 256> kLetters;

// The letter of a code; nullptr for a character outside the table, which stands for itself.
inline const Letter* findLetter(char32_t code) {
  const std::size_t page = code >> 8U;
  if (page >= kPageSlots.size() || kPageSlots[page] == kNoPage) return nullptr;
  return &kLetters[kPageSlots[page] * std::size_t{256} + (code & 0xFFU)];
}

inline char32_t foldedCode(char32_t code) {
  const Letter* letter = findLetter(code);
  return letter == nullptr ? code : letter->folded;
}

inline bool isMark(char32_t code) {
  return code - kFirstMarkCode < kMarkCodes;
}

// A sign outside ASCII: the Latin ones, punctuation, currencies, and the symbols from the
// letterlike ones to arrows. Letters and their forms (ª, µ, º) are none.
constexpr bool isSign(char32_t code) {
  if (code < 0xA0) return false;
  if (code < 0xC0) return code != 0xAA && code != 0xB5 && code != 0xBA;
  return code == 0xD7 || code == 0xF7 || (code >= 0x2000 && code <= 0x206F) ||
         (code >= 0x20A0 && code <= 0x20CF) || (code >= 0x2100 && code <= 0x2BFF);
}

// A character of more than one byte, or a bad byte; lead is the byte before at.
char32_t decodeLong(std::uint8_t lead, const char*& at, const char* end);

// The character at a position before end; moves the position behind it.
inline char32_t decode(const char*& at, const char* end) {
  const auto lead = static_cast<std::uint8_t>(*at++);
  return lead < 0x80 ? lead : decodeLong(lead, at, end);
}

// True if a combining mark may begin here; never false if one does.
inline bool mayBeMark(const char* at, const char* end) {
  return at != end && (static_cast<std::uint8_t>(*at) | 1U) == 0xCDU;
}

// Appends UTF-8, with the same scheme for codes above the last character.
void appendCode(char32_t code, std::string& text);

// The marks of one letter, in an order that does not depend on the order they were typed in.
class Marks final {
 public:
  bool full() const { return count_ + 2 > marks_.size(); }
  bool empty() const { return count_ == 0; }
  const std::uint8_t* begin() const { return marks_.data(); }
  const std::uint8_t* end() const { return marks_.data() + count_; }
  void clear() { count_ = 0; }
  // Adds a combining mark; not to be called when full.
  void addCode(char32_t code);
  // Adds the marks a letter has in itself, to no others; returns the letter without them.
  char32_t addLetter(char32_t folded);

 private:
  void add(std::uint8_t mark);

  std::array<std::uint8_t, 12> marks_{};
  std::size_t count_ = 0;
};

// The small letter that a small letter and a mark make up; 0 if there is none.
char32_t composed(char32_t folded, std::uint8_t mark);

}  // namespace store::letters
