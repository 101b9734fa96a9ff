#include "store/text_order.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;
using store::compareText;
using store::foldCase;

std::string keyOf(std::string_view text) {
  std::string key;
  store::appendSortKey(text, key);
  return key;
}

int sign(int number) {
  return number < 0 ? -1 : number > 0 ? 1 : 0;
}

// What compareText and the keys both say; fails the test if they differ or depend on the side.
int orderOf(std::string_view left, std::string_view right) {
  const int order = compareText(left, right);
  EXPECT_EQ(order, -compareText(right, left)) << left << " | " << right;
  EXPECT_EQ(order, sign(keyOf(left).compare(keyOf(right)))) << left << " | " << right;
  return order;
}

TEST(TextOrder, ListsAscend) {
  const std::vector<std::vector<std::string>> lists = {
      {"", "\0"s, "\0\0"s, "\t", " ", "!", "'", "-", "@", "[", "_", "~", "0", "9", "a", "z"},
      {"e", "è", "é", "ê", "ë", "ee", "f"},
      {"perche", "perché", "perchi"},
      {"pero", "però", "perora"},
      {"10", "2", "2 a", "2a", "a 1", "a1", "aa"},
      {"l", "L'", "l'altra", "L'isola", "La", "Là", "lì"},
      {"cafè bianco", "cafe nero", "cafè nero", "caffe", "caffè", "caffè nero"},
      // The first accent decides, then how many there are and which.
      {"cote", "coté", "côte", "côté"},
      {"a", "â", "ấ", "ä"},
      {"o", "ò", "õ", "ø", "ǿ", "oe", "of"},
      {"d", "ď", "đ", "e"},
      {"strasa", "strasse", "straßen", "strast"},
      {"ad", "æ", "ǽ", "af"},
      {"z", "ž", "µ", "þ", "α", "ά", "β", "ω", "а", "я", "漢", "😀", "\xFF"},
      // Signs of any kind stand before digits and letters, by code; a mark on one counts later.
      {"~", "\u00A0", "¡", "¨", "¨\u0301", "«", "¿", "×", "÷", "–", "“", "”",
       "…", "€",      "™", "→", "★",       "0", "9", "a", "ª", "o", "º"},
      {"a ", "a!", "a’", "a“b", "a”", "a0", "aa"},
      {"a", "a\x80", "a\xC3", "a\xE2\x82", "a\xE2\x83", "a\xFF"},
      // A mark without a letter before it counts for little, but it counts.
      {"", "\u0301", "\u0301\u0301", " ", "a", "\u0301a"},
  };
  for (const auto& list : lists) {
    for (std::size_t low = 0; low < list.size(); ++low) {
      for (std::size_t high = low + 1; high < list.size(); ++high) {
        EXPECT_EQ(orderOf(list[low], list[high]), -1) << list[low] << " | " << list[high];
      }
    }
  }
}

TEST(TextOrder, EqualTexts) {
  const std::vector<std::pair<std::string, std::string>> pairs = {
      {"È", "è"},
      {"L'ISOLA DI ARTURO", "l'isola di arturo"},
      {"PERCHÉ NO", "Perché no"},
      {"perche\u0301", "PERCHÉ"},
      {"I\u0307", "İ"},
      {"Straße", "STRASSE"},
      {"ẞ", "ss"},
      {"Æ", "ae"},
      {"ǽ", "Ae\u0301"},
      {"Œuvre", "oeuvre"},
      {"ØRE", "øre"},
      {"ĐA", "đa"},
      {"Ǆ", "ǅ"},
      {"Ɓ", "ɓ"},
      {"Ⱥ", "ⱥ"},
      {"ΣΟΦΌΣ", "σοφός"},
      {"ЁЖИК", "ёжик"},
      {"И\u0306", "й"},
      // Marks above and below the letter have no order of their own.
      {"ậ", "a\u0302\u0323"},
      {"Ậ", "a\u0323\u0302"},
      {"â\u0323", "ạ\u0302"},
      {"ü\u0301", "u\u0344"},
      {"\u0385", "¨\u0301"},
  };
  for (const auto& [left, right] : pairs) {
    EXPECT_EQ(orderOf(left, right), 0) << left << " | " << right;
  }
}

TEST(TextOrder, UnlikeTexts) {
  const std::vector<std::pair<std::string, std::string>> pairs = {
      {"a\u0302\u0301", "a\u0301\u0302"},
      {"ø", "o\u0338"},
      {"ı", "i"},
      {"ŋ", "n"},
      {"\xC0\x80", "\0"s},  // not the short way to write a character
      {"\xED\xA0\x80", "\xED\xA0\x81"},
      {"\xF4\x90\x80\x80", "\xF4\x90\x80\x81"},
  };
  for (const auto& [left, right] : pairs) {
    EXPECT_NE(orderOf(left, right), 0) << left << " | " << right;
  }
}

TEST(TextOrder, FoldCase) {
  const std::vector<std::pair<std::string, std::string>> pairs = {
      {"", ""},
      {"L'Isola È QUI, n. 5", "l'isola è qui, n. 5"},
      {"PERCHE\u0301", "perché"},
      {"ŽŁØÆẞþÞΆЁЙ漢", "žłøæßþþάёй漢"},
      {"X\u0302", "x\u0302"},
      {"E\u0331\u0301", "e\u0331\u0301"},
      {"O\u0302\u0323", "ộ"},
      {"\u0301A", "\u0301a"},
      {"\xC3"
       "A\xFF\xE2\x82",
       "\xC3"
       "a\xFF\xE2\x82"},
      {"\0B"s, "\0b"s},
  };
  for (const auto& [text, folded] : pairs) EXPECT_EQ(foldCase(text), folded) << text;
}

std::string randomText(std::mt19937& random) {
  const std::vector<std::string> pieces = {"a",        "A",
                                           "b",        "E",
                                           "s",        "ss",
                                           "ß",        "è",
                                           "È",        "é",
                                           "æ",        "ae",
                                           "ø",        "ậ",
                                           "ß",        " ",
                                           "7",        "'",
                                           "\0"s,      "α",
                                           "Ά",        "й",
                                           "漢",       "😀",
                                           "“",        "¨",
                                           "×",        "€",
                                           "\u0301",   "\u0302",
                                           "\u0323",   "\u0344",
                                           "\xC3",     "\xA8",
                                           "\xE2\x82", "\xF0\x9F",
                                           "\xFF",     "\xED\xA0\x80",
                                           "\xCC"};
  std::string text;
  for (auto count = random() % 5; count > 0; --count) text += pieces[random() % pieces.size()];
  return text;
}

// The order of keys is total, so that agreement with it makes compareText a total order as well.
TEST(TextOrder, KeysAgreeWithComparisonOnAnyBytes) {
  std::mt19937 random(20240229);  // NOLINT: the same texts each time
  int equal = 0;
  for (int round = 0; round < 40000; ++round) {
    const std::string left = randomText(random);
    const std::string right = randomText(random);
    if (orderOf(left, right) == 0 && left != right) ++equal;
    EXPECT_EQ(orderOf(left, foldCase(left)), 0) << left;
    EXPECT_EQ(keyOf(left).find('\0'), std::string::npos) << left;
    if (HasFailure()) return;
  }
  EXPECT_GT(equal, 10);
}

TEST(TextOrder, CutTextsAreReadOnlyToTheirEnd) {
  const std::string text = "è漢😀e\u0301ß";
  for (std::size_t length = 0; length <= text.size(); ++length) {
    const std::vector<char> exact(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length));
    const std::string_view cut(exact.data(), exact.size());
    EXPECT_EQ(orderOf(cut, text.substr(0, length)), 0);
    EXPECT_EQ(foldCase(cut), foldCase(text.substr(0, length)));
    EXPECT_EQ(orderOf(cut, text) == 0, length == text.size());
  }
}

TEST(TextOrder, AnyNumberOfMarks) {
  std::string text = "A";
  for (int count = 0; count < 50; ++count) {
    const std::string longer = text + "\u0301";
    EXPECT_EQ(orderOf(text, longer), -1) << count;
    EXPECT_EQ(orderOf(longer, foldCase(longer)), 0) << count;
    text = longer;
  }
}

TEST(TextOrder, KeysAreAppended) {
  std::string key = "x";
  store::appendSortKey("è", key);
  EXPECT_EQ(key.substr(0, 1), "x");
  EXPECT_EQ(key.substr(1), keyOf("è"));
}

}  // namespace
