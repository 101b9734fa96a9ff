#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace store {

// The order and equality of text in an archive, on UTF-8. Capital and small letters are equal,
// accented ones too (È equals è); accents differ at the second level only (e, è, é, f), so that
// "perche" < "perché" < "perchi". Blanks and signs (“, €, ×) come before digits, digits before
// letters, other scripts after the Latin letters by code. Composed and decomposed spellings are
// equal, "ß" is "ss", "æ" is "ae". Any bytes are accepted: one that is no UTF-8 comes after all
// others. The tables are this program's own: indexes on text must not change with a system upgrade.
int compareText(std::string_view left, std::string_view right);

// Appends the key of a text: two keys compare bytewise (memcmp, then length) as compareText
// compares. A key has no byte 0, so that keys of several fields can be joined with one.
void appendSortKey(std::string_view text, std::string& key);

enum class LikeAnswer { No, Yes, TooComplex };

// A pattern of Like: "*" any run, "?" one character, "#" one digit, "[a-z]" and "[!a-z]" sets;
// without case in the sense of compareText, accents count. In a set "*", "?", "#" and "[" stand for
// themselves, so do "-" at either end and "!" alone; ranges go by the codes of small letters. "[]"
// is no character at all, an unclosed "[" stands for itself.
class LikePattern final {
 public:
  explicit LikePattern(std::string_view pattern);
  ~LikePattern();
  LikePattern(LikePattern&&) noexcept;
  // Takes time by the length of pattern and text, not by their product.
  LikeAnswer matches(std::string_view text) const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

// The text with every capital letter made small, as compareText and LikePattern see it;
// letters and combining marks are composed.
std::string foldCase(std::string_view text);

}  // namespace store
