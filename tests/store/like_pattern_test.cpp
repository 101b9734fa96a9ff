#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "store/text_order.h"

namespace {

using namespace std::string_literals;

bool like(std::string_view text, std::string_view pattern) {
  return store::LikePattern(pattern).matches(text);
}

TEST(LikePattern, MatchesAndMismatches) {
  struct Case {
    std::string pattern;
    std::vector<std::string> matching;
    std::vector<std::string> others;
  };
  const std::vector<Case> cases = {
      {"", {""}, {"a", " "}},
      {"*", {"", "a", "città\n\0x"s, "\xFF"}, {}},
      {"**", {"", "a"}, {}},
      {"rosa", {"rosa", "ROSA"}, {"rose", "rosa ", " rosa", "ros", ""}},
      {"rosa*", {"rosa", "Rosa e blu"}, {"la rosa", "ros", "rosà", "rosa\u0300"}},
      {"*rosa", {"rosa", "la Rosa", "rosarosa"}, {"rosa ", "osa"}},
      {"*rosa*", {"rosa", "Il nome della ROSA, 1980"}, {"", "rossa", "ros", "ROSÀ", "rosa\u0300"}},
      {"*rosa*", {"rosa\u0300 rosa", "rosax\u0302"}, {"rosa\u0300 rosa\u0300"}},
      {"*perché*", {"PERCHÉ", "e perche\u0301 no"}, {"perche", "perchè", "perchi"}},
      {"*è*", {"È vero", "e\u0300", "caffè"}, {"e", "é", "e\u0301"}},
      {"*e\u0300", {"caffè", "È"}, {"caffe"}},
      {"*e", {"e", "èe"}, {"è", "e\u0300"}},
      {"?", {"a", "è", "漢", "😀", "e\u0301", "\n", "\0"s, "\xFF"}, {"", "ab", "\xC3\x28"}},
      {"??", {"ab", "\xE2\x82", "x\u0302"}, {"a", "abc"}},
      // Each byte that is no UTF-8 is one character.
      {"???", {"abc", "\xED\xA0\x80", "\xE0\x80\x80"}, {"漢", "\xC0\x80"}},
      {"a?c", {"abc", "AÈC"}, {"ac", "abbc"}},
      {"*a?b*", {"aab", "xx a-b y"}, {"ab", "a--b"}},
      {"?*", {"a", "ab"}, {""}},
      {"#", {"0", "9"}, {"a", "", "12", "٣", "²"}},
      {"19##", {"1984"}, {"198", "19845", "19a4"}},
      {"[abc]", {"a", "B"}, {"d", "à", ""}},
      {"[a-c]x", {"ax", "Bx"}, {"dx", "x", "àx"}},
      {"[A-C]", {"b"}, {"d"}},
      {"[à-ü]", {"è", "Ù"}, {"e", "z"}},
      {"[c-a]", {}, {"a", "b", "c"}},
      {"[!a-c]", {"d", "è", "1", "\xFF"}, {"a", "C", ""}},
      {"[0-9a-f#]", {"7", "E", "#"}, {"g"}},
      {"[a-]", {"a", "-"}, {"b"}},
      {"[-a]", {"a", "-"}, {"b"}},
      {"[!-]", {"a"}, {"-"}},
      {"[!]", {"!"}, {"a", "[!]"}},
      {"!", {"!"}, {"a"}},
      {"[*]", {"*"}, {"", "a"}},
      {"[?][#]", {"?#"}, {"a1"}},
      {"[[]1]", {"[1]"}, {"1", "[1"}},
      {"*50[*]*", {"il 50* del", "50*"}, {"50"}},
      {"a[]b", {"ab"}, {"a[]b", "axb"}},
      {"[]", {""}, {"a", "[]"}},
      {"[abc", {"[abc", "[ABC"}, {"a"}},
      {"*[x*", {"[x", "a[Xb"}, {"x"}},
      {"]", {"]"}, {""}},
      {"*a*b*c", {"abc", "xaybzc", "abcbc"}, {"acb", "ab", "abcd"}},
      {"a*a", {"aa", "aba"}, {"a"}},
      {"straße", {"STRAßE", "straẞe"}, {"strasse"}},
      {"σοφό*", {"ΣΟΦΌΣ"}, {"σοφος"}},
      {"*\xC3*",
       {"a\xC3", "\xC3(",
        "\xC3"
        "a"},
       {"\xC3\xA8", "a"}},
      {"a\0b"s, {"A\0b"s}, {"a", "ab"}},
  };
  for (const Case& each : cases) {
    for (const auto& text : each.matching)
      EXPECT_TRUE(like(text, each.pattern)) << each.pattern << " <- " << text;
    for (const auto& text : each.others)
      EXPECT_FALSE(like(text, each.pattern)) << each.pattern << " <- " << text;
  }
}

// Matches by definition, one row of answers for each character of the pattern.
bool likeByDefinition(const std::string& text, const std::string& pattern) {
  std::vector<bool> reached(text.size() + 1, false);
  reached[0] = true;
  for (const char wanted : pattern) {
    std::vector<bool> next(text.size() + 1, false);
    next[0] = wanted == '*' && reached[0];
    for (std::size_t at = 1; at <= text.size(); ++at) {
      const bool same = wanted == '?' || wanted == text[at - 1];
      next[at] = wanted == '*' ? reached[at] || next[at - 1] : same && reached[at - 1];
    }
    reached = next;
  }
  return reached.back();
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
    const std::string sample = text("aaab", 24);
    const bool expected = likeByDefinition(sample, pattern);
    ASSERT_EQ(like(sample, pattern), expected) << pattern << " <- " << sample;
    if (expected) ++matched;
  }
  EXPECT_GT(matched, 3000);
}

TEST(LikePattern, FindsATextAtEveryPlace) {
  const std::vector<std::string> needles = {"x", "xy", "Xz1x", "un testo più lungo"};
  for (const auto& needle : needles) {
    const store::LikePattern pattern("*"s + needle + "*");
    for (std::size_t before = 0; before < 20; ++before) {
      for (std::size_t after = 0; after < 20; ++after) {
        const std::string head(before, '8');
        const std::string text = head + needle + std::string(after, '-');
        EXPECT_TRUE(pattern.matches(text)) << text;
        EXPECT_FALSE(pattern.matches(head + needle.substr(1) + std::string(after, '-'))) << text;
      }
    }
  }
}

// The number of steps is bounded: a search that tried every split of the text would not end.
TEST(LikePattern, ManyRunsOnALongText) {
  const std::string text(20000, 'a');
  EXPECT_FALSE(like(text, "*a*a*a*a*a*a*a*a*b"));
  EXPECT_FALSE(like(text + "b!", "*a*a*a*a*a*a*a*a*b"));
  EXPECT_FALSE(like(text + "è", "?*à*?*a?*a*?a*b?"));
  EXPECT_TRUE(like(text + "b", "*a*a*a*a*a*a*a*a*b"));
  EXPECT_TRUE(like(text, "*"s + text.substr(0, 10000) + "*"));
  EXPECT_FALSE(like(text, text + "a"));
}

TEST(LikePattern, MovesToAnotherOwner) {
  store::LikePattern first("*a*");
  const store::LikePattern second(std::move(first));
  EXPECT_TRUE(second.matches("BAB"));
}

}  // namespace
