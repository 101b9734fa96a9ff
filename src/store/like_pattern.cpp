#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "store/ascii_needle.h"
#include "store/letters.h"
#include "store/text_order.h"

namespace store {
namespace {

enum class Kind : std::uint8_t { kLiteral, kAny, kDigit, kSet, kRun };

constexpr std::size_t kLongestNeedle = 64;
constexpr std::size_t kStepsACharacter = 64;
constexpr std::size_t kLeastSteps = 100000;

struct Range {
  char32_t first;
  char32_t last;
};

struct Token {
  Kind kind = Kind::kLiteral;
  bool negated = false;
  char32_t code = 0;
  std::vector<Range> ranges = {};

  bool accepts(char32_t character) const {
    if (kind == Kind::kLiteral) return character == code;
    if (kind == Kind::kDigit) return character >= '0' && character <= '9';
    if (kind != Kind::kSet) return kind == Kind::kAny;
    const bool inside = std::any_of(ranges.begin(), ranges.end(), [character](const Range& each) {
      return character >= each.first && character <= each.last;
    });
    return inside != negated;
  }
};

std::u32string codesOf(std::string_view text) {
  std::u32string codes;
  const char* at = text.data();
  while (at != text.data() + text.size()) {
    codes.push_back(letters::decode(at, text.data() + text.size()));
  }
  return codes;
}

// The token of what stands between the brackets of a set; none for "[]", which is no character.
// "-" at either end stands for itself, and so does "!" alone. A range from a higher to a lower
// code is empty.
std::optional<Token> parseSet(std::u32string_view content) {
  if (content.empty()) return std::nullopt;
  if (content.size() == 1) return Token{.code = content[0]};
  Token set{.kind = Kind::kSet, .negated = content[0] == '!'};
  for (std::size_t at = set.negated ? 1 : 0; at < content.size(); ++at) {
    const bool range = at + 2 < content.size() && content[at + 1] == '-';
    set.ranges.push_back({content[at], content[range ? at + 2 : at]});
    if (range) at += 2;
  }
  return set;
}

Token parseCharacter(char32_t code) {
  if (code == '*') return Token{.kind = Kind::kRun};
  if (code == '?') return Token{.kind = Kind::kAny};
  if (code == '#') return Token{.kind = Kind::kDigit};
  return Token{.code = code};
}

std::vector<Token> parse(std::u32string_view pattern) {
  std::vector<Token> tokens;
  const std::size_t lastClose = pattern.rfind(']');
  for (std::size_t at = 0; at < pattern.size(); ++at) {
    const bool opens = pattern[at] == '[' && lastClose != pattern.npos && lastClose > at;
    const std::size_t close = opens ? pattern.find(']', at) : pattern.npos;
    if (close != pattern.npos) {
      auto set = parseSet(pattern.substr(at + 1, close - at - 1));
      if (set) tokens.push_back(*std::move(set));
      at = close;
    } else if (pattern[at] != '*' || tokens.empty() || tokens.back().kind != Kind::kRun) {
      tokens.push_back(parseCharacter(pattern[at]));
    }
  }
  return tokens;
}

// The first place where the token after a run can match, as far as ASCII characters tell.
const char* skipTo(const Token& token, const char* at, const char* end) {
  if (token.kind != Kind::kLiteral) return at;
  const AnyCase literal(token.code);
  while (at != end && static_cast<std::uint8_t>(*at) < 0x80 && !literal.is(*at)) ++at;
  return at;
}

// The longest ASCII text that every match contains, or enough of it; empty if there is none.
std::string longestAscii(const std::vector<Token>& tokens) {
  std::string longest;
  std::string current;
  for (const Token& token : tokens) {
    if (token.kind == Kind::kLiteral && token.code < 0x80) {
      current.push_back(static_cast<char>(token.code));
      if (current.size() > longest.size()) longest = current;
      if (longest.size() == kLongestNeedle) break;
    } else {
      current.clear();
    }
  }
  return longest;
}

}  // namespace

struct LikePattern::Impl {
  explicit Impl(std::string_view pattern) : tokens(parse(codesOf(foldCase(pattern)))) {
    if (tokens.empty() || tokens.front().kind != Kind::kRun) return;
    std::string ascii = longestAscii(tokens);
    if (ascii.empty()) return;
    needleIsAll = tokens.size() == ascii.size() + 2 && tokens.back().kind == Kind::kRun;
    needle = AsciiNeedle(std::move(ascii));
  }

  LikeAnswer matches(std::string_view text) const;
  LikeAnswer match(std::string_view text, bool& metMark) const;

  std::vector<Token> tokens;
  // Of a pattern that begins with "*": what a text must contain, and whether that is enough.
  AsciiNeedle needle;
  bool needleIsAll = false;
};

// A run takes as little as possible; on a mismatch only the last run takes one character more. A
// long pattern of little variety would still take its length at each character: it is given up.
LikeAnswer LikePattern::Impl::match(std::string_view text, bool& metMark) const {
  const std::size_t mostSteps = kLeastSteps + kStepsACharacter * (text.size() + tokens.size());
  std::size_t steps = 0;
  const char* at = text.data();
  const char* const end = at + text.size();
  auto token = tokens.begin();
  auto afterRun = tokens.end();
  const char* runEnd = nullptr;
  metMark = letters::mayBeMark(at, end);
  while (true) {
    if (token != tokens.end() && token->kind == Kind::kRun) {
      if (++token == tokens.end()) return LikeAnswer::Yes;
      afterRun = token;
      runEnd = at = skipTo(*token, at, end);
      metMark = metMark || letters::mayBeMark(at, end);
    }
    if (at == end) return token == tokens.end() ? LikeAnswer::Yes : LikeAnswer::No;
    steps += token == tokens.end() ? 1 : 1 + token->ranges.size();
    if (steps > mostSteps) return LikeAnswer::TooComplex;
    const char32_t code = letters::foldedCode(letters::decode(at, end));
    metMark = metMark || letters::mayBeMark(at, end);
    if (token != tokens.end() && token->accepts(code)) {
      ++token;
    } else if (runEnd != nullptr) {
      letters::decode(runEnd, end);
      runEnd = at = skipTo(*afterRun, runEnd, end);
      metMark = metMark || letters::mayBeMark(at, end);
      token = afterRun;
    } else {
      return LikeAnswer::No;
    }
  }
}

// Combining marks change the letter before them: such a text is composed first.
LikeAnswer LikePattern::Impl::matches(std::string_view text) const {
  if (needle.size() != 0) {
    const char* const end = text.data() + text.size();
    const char* const hit = needle.find(text.data(), end);
    if (hit == nullptr) return LikeAnswer::No;
    if (needleIsAll && !letters::mayBeMark(hit + needle.size(), end)) return LikeAnswer::Yes;
  }
  bool metMark = false;
  const LikeAnswer answer = match(text, metMark);
  return metMark ? match(foldCase(text), metMark) : answer;
}

LikePattern::LikePattern(std::string_view pattern) : impl_(std::make_unique<Impl>(pattern)) {}
LikePattern::~LikePattern() = default;
LikePattern::LikePattern(LikePattern&&) noexcept = default;

LikeAnswer LikePattern::matches(std::string_view text) const {
  return impl_->matches(text);
}

}  // namespace store
