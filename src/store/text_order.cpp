#include "store/text_order.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "store/letters.h"

namespace store {
namespace {

using letters::Letter;

// Bytes of a key. Its first level holds a byte from kFirstWeight on for each ASCII character and
// UTF-8 for the others, behind kOtherSign for those that are signs; the second level a kPlain for
// each character, then its marks. There is no byte 0, so that a caller may join the keys of
// several fields with it.
constexpr char kSecondLevel = 1;
constexpr char kPlain = 1;
constexpr std::uint8_t kFirstWeight = 2;
constexpr std::uint8_t kAsciiSigns = 128 - 10 - 2 * 26;
constexpr std::uint8_t kOtherSign = kFirstWeight + kAsciiSigns;

// First level of each byte: signs by code, place for other signs, digits, letters; 0 for a byte
// that is not ASCII.
constexpr auto kWeights = [] {
  constexpr std::string_view kInOrder = "0123456789abcdefghijklmnopqrstuvwxyz";
  std::array<std::uint8_t, 256> weights{};
  std::uint8_t next = kFirstWeight;
  const auto isLetter = [](unsigned code) {
    return (code | 0x20U) >= 'a' && (code | 0x20U) <= 'z';
  };
  for (unsigned code = 0; code < 0x80; ++code) {
    if (!isLetter(code) && !(code >= '0' && code <= '9')) weights[code] = next++;
  }
  ++next;  // kOtherSign
  for (const char each : kInOrder) weights[static_cast<std::uint8_t>(each)] = next++;
  for (unsigned code = 'A'; code <= 'Z'; ++code) weights[code] = weights[code | 0x20U];
  return weights;
}();

std::uint8_t weightOf(char byte) {
  return kWeights[static_cast<std::uint8_t>(byte)];
}

// The first level of a character outside ASCII: no weight for a mark, two for a double letter and
// for a sign.
struct Weighed {
  char32_t first = 0;
  char32_t second = 0;
  bool marked = false;
};

Weighed weigh(char32_t code) {
  if (letters::isMark(code)) return {.marked = true};
  const Letter* letter = letters::findLetter(code);
  const bool marked = letter != nullptr && letter->mark != 0;
  const char32_t base = letter == nullptr ? code : letter->base;
  if (letters::isSign(base)) return {.first = kOtherSign, .second = base, .marked = marked};
  Weighed weighed{.first = base, .marked = marked};
  if (base < 0x80) weighed.first = kWeights[base];
  if (letter != nullptr && letter->second != 0) weighed.second = kWeights[letter->second];
  return weighed;
}

// The first level of a text, weight by weight.
class Weights final {
 public:
  explicit Weights(std::string_view text) : at_(text.data()), end_(text.data() + text.size()) {}

  // Next weight, 0 at the end.
  char32_t next() {
    if (pending_ != 0) return std::exchange(pending_, 0);
    while (at_ != end_) {
      if (const std::uint8_t weight = weightOf(*at_); weight != 0) {
        ++at_;
        return weight;
      }
      const Weighed weighed = weigh(letters::decode(at_, end_));
      marked_ = marked_ || weighed.marked;
      pending_ = weighed.second;
      if (weighed.first != 0) return weighed.first;
    }
    return 0;
  }

  // True if a character returned so far has a mark.
  bool marked() const { return marked_; }

 private:
  const char* at_;
  const char* end_;
  char32_t pending_ = 0;
  bool marked_ = false;
};

// Writes the second level, without the plain characters at its end.
class SecondLevel final {
 public:
  explicit SecondLevel(std::string& key) : key_(key) {}
  ~SecondLevel() { flush(); }

  void addPlain(std::size_t count) {
    flush();
    plain_ += count;
  }

  // Adds a character outside ASCII; a mark belongs to the letter before it.
  void add(char32_t code) {
    if (letters::isMark(code)) {
      if (marks_.full()) flush();
      marks_.addCode(code);
      return;
    }
    const Letter* letter = letters::findLetter(code);
    addPlain(letter != nullptr && letter->second != 0 ? 2 : 1);
    if (letter != nullptr) marks_.addLetter(letter->folded);
  }

 private:
  void flush() {
    if (marks_.empty()) return;
    key_.append(std::exchange(plain_, 0), kPlain);
    for (const std::uint8_t mark : marks_) key_.push_back(static_cast<char>(mark));
    marks_.clear();
  }

  std::string& key_;
  letters::Marks marks_;
  std::size_t plain_ = 0;
};

const char* endOfAscii(const char* at, const char* end) {
  return std::find_if(at, end, [](char each) { return weightOf(each) == 0; });
}

void appendMarks(std::string_view text, std::string& key) {
  const char* at = text.data();
  const char* const end = at + text.size();
  SecondLevel level(key);
  while (at != end) {
    const char* const other = endOfAscii(at, end);
    if (other != at) level.addPlain(static_cast<std::size_t>(other - at));
    at = other;
    if (at != end) level.add(letters::decode(at, end));
  }
}

int compareMarks(std::string_view left, std::string_view right) {
  std::string leftMarks;
  std::string rightMarks;
  appendMarks(left, leftMarks);
  appendMarks(right, rightMarks);
  const int order = leftMarks.compare(rightMarks);
  return order < 0 ? -1 : order > 0 ? 1 : 0;
}

// Compares from a place on before which both texts are equal and without marks.
int compareLong(std::string_view left, std::string_view right) {
  if (left == right) return 0;
  Weights leftWeights(left);
  Weights rightWeights(right);
  while (true) {
    const char32_t leftWeight = leftWeights.next();
    const char32_t rightWeight = rightWeights.next();
    if (leftWeight != rightWeight) return leftWeight < rightWeight ? -1 : 1;
    if (leftWeight == 0) break;
  }
  if (!leftWeights.marked() && !rightWeights.marked()) return 0;
  return compareMarks(left, right);
}

// Appends the weights of the ASCII characters from a position on; returns where they end.
const char* appendAscii(const char* at, const char* end, std::string& key) {
  const char* const other = endOfAscii(at, end);
  const std::size_t start = key.size();
  key.resize(start + static_cast<std::size_t>(other - at));
  std::transform(at, other, key.data() + start,
                 [](char each) { return static_cast<char>(weightOf(each)); });
  return other;
}

}  // namespace

int compareText(std::string_view left, std::string_view right) {
  const std::size_t common = std::min(left.size(), right.size());
  for (std::size_t at = 0; at < common; ++at) {
    const std::uint8_t leftWeight = weightOf(left[at]);
    const std::uint8_t rightWeight = weightOf(right[at]);
    if (leftWeight == 0 || rightWeight == 0) {
      return compareLong(left.substr(at), right.substr(at));
    }
    if (leftWeight != rightWeight) return leftWeight < rightWeight ? -1 : 1;
  }
  return compareLong(left.substr(common), right.substr(common));
}

void appendSortKey(std::string_view text, std::string& key) {
  const char* const end = text.data() + text.size();
  bool marked = false;
  for (const char* at = appendAscii(text.data(), end, key); at != end;
       at = appendAscii(at, end, key)) {
    const Weighed weighed = weigh(letters::decode(at, end));
    if (weighed.first != 0) letters::appendCode(weighed.first, key);
    if (weighed.second != 0) letters::appendCode(weighed.second, key);
    marked = marked || weighed.marked;
  }
  if (!marked) return;
  key.push_back(kSecondLevel);
  appendMarks(text, key);
}

}  // namespace store
