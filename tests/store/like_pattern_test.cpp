#include <gtest/gtest.h>

#include <random>

#include "store/archive.h"
#include "store/text_order.h"

namespace store {
namespace {

using namespace std::string_literals;

bool like(std::string_view text, std::string_view pattern) {
  return LikePattern(pattern).matches(text) == LikeAnswer::Yes;
}

TEST(LikePattern, MatchesAndMismatches) {
  const auto none = "(none)"s;
  struct Case {
    std::string pattern;
    std::string matching;
    std::string others;
  };
  const std::vector<Case> cases = {
      {"", "", "a| "},
      {"*", "|a|città\n\0x|\xFF"s, none},
      {"rosa", "rosa|ROSA", "rose|rosa | rosa|ros|"},
      {"*rosa", "rosa|la Rosa|rosarosa", "rosa |osa|rosa\u0300"},
      {"*rosa*", "rosa|Il nome della ROSA, 1980", "|rossa|ros|ROSÀ|rosa\u0300"},
      {"*rosa*", "rosa\u0300 rosa|rosax\u0302", "rosa\u0300 rosa\u0300"},
      {"*è*", "È vero|e\u0300|caffè", "e|é|e\u0301"},
      {"?", "a|è|漢|😀|e\u0301|\n|\0|\xFF"s, "|ab|\xC3\x28"},
      // Each byte that is no UTF-8 is one character.
      {"??", "ab|\xE2\x82|x\u0302", "a|abc"},
      {"???", "abc|\xED\xA0\x80|\xE0\x80\x80", "漢|\xC0\x80"},
      {"#", "0|9", "a||12|٣|²"},
      {"19##", "1984", "198|19845|19a4"},
      {"[a-c]x", "ax|Bx", "dx|x|àx"},
      {"[c-a]", none, "a|b|c"},
      {"[!a-c]", "d|è|1|\xFF", "a|C|"},
      {"[0-9a-f#]", "7|E|#", "g"},
      {"[a-]", "a|-", "b"},
      {"[!-]", "a", "-"},
      {"[!]", "!", "a|[!]"},
      {"!", "!", "a"},
      {"[*]", "*", "|a"},
      {"[[]1]", "[1]", "1|[1"},
      {"a[]b", "ab", "a[]b|axb"},
      {"[abc", "[abc|[ABC", "a"},
      {"]a[x", "]a[x", "ax"},
      {"straße", "STRAßE|straẞe", "strasse"},
      {"*I*", "i|I|Ì I", "ı|İ"},
      {"σοφό*", "ΣΟΦΌΣ", "σοφος"},
      {"*\xC3*", "a\xC3|\xC3(", "\xC3\xA8|a"},
      {"a\0b"s, "A\0b"s, "a|ab"}};
  for (const auto& [pattern, matching, others] : cases) {
    for (const std::string& text : split(matching))
      EXPECT_TRUE(matching == none || like(text, pattern)) << pattern << " <- " << text;
    for (const std::string& text : split(others))
      EXPECT_FALSE(others != none && like(text, pattern)) << pattern << " <- " << text;
  }
}

bool likeByDefinition(std::string_view text, std::string_view pattern) {
  if (pattern.empty()) return text.empty();
  const std::string_view rest = pattern.substr(1);
  if (pattern[0] == '*' && likeByDefinition(text, rest)) return true;
  if (text.empty()) return false;
  if (pattern[0] == '*') return likeByDefinition(text.substr(1), pattern);
  return (pattern[0] == '?' || pattern[0] == text[0]) && likeByDefinition(text.substr(1), rest);
}

TEST(LikePattern, AgreesWithTheDefinition) {
  std::mt19937 random(7);  // NOLINT: the same texts each time
  const auto text = [&random](std::string_view letters, std::size_t longest) {
    std::string made(random() % (longest + 1), ' ');
    for (char& each : made) each = letters[random() % letters.size()];
    return made;
  };
  int matched = 0;
  for (int round = 0; round < 30000; ++round) {
    const std::string pattern = text("aab*?*", 8);
    const std::string sample = text("aaab", 16);
    const bool expected = likeByDefinition(sample, pattern);
    ASSERT_EQ(like(sample, pattern), expected) << pattern << " <- " << sample;
    if (expected) ++matched;
  }
  EXPECT_GT(matched, 3000);
}

TEST(LikePattern, FindsATextAtEveryPlace) {
  for (const std::string needle : {"x", "xy", "Xz1x", "un testo più lungo"}) {
    const LikePattern pattern("*"s + needle + "*");
    for (std::size_t place = 0; place < 400; ++place) {
      const std::string head(place % 20, '8');
      const std::string tail(place / 20, '-');
      EXPECT_EQ(pattern.matches(head + needle + tail), LikeAnswer::Yes) << place << needle;
      EXPECT_EQ(pattern.matches(head + needle.substr(1) + tail), LikeAnswer::No) << place << needle;
    }
  }
}

// The number of steps is bounded: a search that tried every split of the text would not end, nor
// one that began the pattern anew at each character of a long text.
TEST(LikePattern, LongPatternsAndTexts) {
  const std::string text(20000, 'a');
  const std::string gaps = "*a*a*a*a*a*a*a*a*b";
  EXPECT_FALSE(like(text + "b!", gaps));
  EXPECT_FALSE(like(text + "è", "?*à*?*a?*a?*a?*b?"));
  EXPECT_TRUE(like(text + "b", gaps));
  EXPECT_TRUE(like(text, std::string("*").append(text, 0, 10000).append("*")));
  EXPECT_FALSE(like(text, text + "a"));
  EXPECT_TRUE(like(std::string(1000000, '['), std::string(1000000, '[')));
  const std::string many(1000000, 'a');
  for (const char* frame : {"*?|b*", "*|b", "*[a-b|]?b"}) {
    std::string pattern = split(frame)[0];
    pattern.append(text).append(split(frame)[1]);
    EXPECT_EQ(LikePattern(pattern).matches(many + "b!"), LikeAnswer::TooComplex) << frame;
  }
}

}  // namespace
}  // namespace store
