#include "store/text_order.h"

#include <gtest/gtest.h>

#include <QLocale>
#include <clocale>
#include <random>

#include "store/archive.h"

namespace store {
namespace {

using namespace std::string_literals;

std::string keyOf(std::string_view text) {
  std::string key = "x";  // keys are appended
  appendSortKey(text, key);
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

// Each line ascends.
constexpr const char* kAscending[] = {
    "e|è|é|ê|ë|ee|f",
    "pero|però|perora",
    "10|2|2 a|2a|a 1|a1|aa",
    "l|L'|l'altra|L'isola|La|Là|lì",
    "l isola|l'isola|l`isola|l´isola|l‘isola|l’isola|l1|la",
    "cafè bianco|cafe nero|cafè nero|caffe|caffè|caffè nero",
    "hi|i|I\u0307|ı|ij|k",
    // The first accent decides, then how many there are and which.
    "cote|coté|côte|côté",
    "a|â|ấ|ä",
    "o|ò|õ|ø|ǿ|oe|of",
    "d|ď|đ|e",
    "strasa|strasse|straßen|strast",
    "ad|æ|ǽ|af",
    "z|ž|µ|þ|α|ά|β|ω|а|я|漢|😀|\xFF",
    // Signs of any kind stand before digits and letters, by code; a mark on one counts later.
    "|\t| |!|'|-|@|[|_|~|\u00A0|¡|¨|¨\u0301|«|¿|×|÷|–|“|”|…|€|™|→|★|0|9|a|ª|o|º",
    "a |a!|a’|a“b|a”|a0|aa",
    "a|a\x80|a\xC3|a\xE2\x82|a\xE2\x83|a\xFF",
    // A mark without a letter before it counts for little, but it counts.
    "|\u0301|\u0301\u0301| |a|\u0301a",
};
// Groups of equal texts; marks above and below a letter have no order of their own.
const std::string kEqual =
    "È|è|e\u0300|E\u0300;İ|I\u0307;ẞ|ss|ß|SS;Æ|ae;ǽ|Ae\u0301;Ǆ|ǅ;Ɓ|ɓ;Ⱥ|ⱥ;ΣΟΦΌΣ|σοφός;ЁЖИК|ёжик;"
    "И\u0306|й;ậ|Ậ|a\u0302\u0323|a\u0323\u0302|â\u0323|ạ\u0302;ü\u0301|u\u0344;\u0385|¨\u0301";
// Pairs of unlike texts; bytes that are no short way to write a character stand for themselves.
const std::string kUnlike =
    "a\u0302\u0301|a\u0301\u0302;ø|o\u0338;\xC0\x80|;ŋ|n;\xED\xA0\x80|\xED\xA0\x81;"
    "\xF4\x90\x80\x80|\xF4\x90\x80\x81";
// Texts and what they are in small letters.
const std::string kFolded =
    "PERCHE\u0301|perché;ŽŁØÆẞþÞΆЁЙ漢I|žłøæßþþάёй漢i;X\u0302|x\u0302;O\u0302\u0323|ộ;\u0301A|"
    "\u0301a;"
    "E\u0331\u0301|e\u0331\u0301;\xFF\xE2\x82|\xFF\xE2\x82";

void expectOrders() {
  for (const std::string line : kAscending) {
    const std::vector<std::string> list = split(line);
    for (std::size_t high = 1; high < list.size(); ++high) {
      for (std::size_t low = 0; low < high; ++low) {
        EXPECT_EQ(orderOf(list[low], list[high]), -1) << list[low] << " | " << list[high];
      }
    }
  }
  for (const std::string& group : split(kEqual, ';')) {
    for (const std::string& text : split(group)) {
      EXPECT_EQ(orderOf(split(group)[0], text), 0) << group;
      EXPECT_EQ(orderOf(foldCase(text), text), 0) << group;
    }
  }
  for (const std::string& pair : split(kUnlike, ';')) {
    EXPECT_NE(orderOf(split(pair)[0], split(pair)[1]), 0) << pair;
  }
  for (const std::string& pair : split(kFolded, ';')) {
    EXPECT_EQ(foldCase(split(pair)[0]), split(pair)[1]);
  }
  // The code 0 is a character like others.
  for (const std::string& text : {"\0"s, "\0B"s}) {
    EXPECT_EQ(orderOf("", text), -1);
    EXPECT_EQ(orderOf(text + '\0', text), 1);
    EXPECT_EQ(foldCase(text).size(), text.size());
  }
}

TEST(TextOrder, IsTheSameUnderEveryLocale) {
  for (const char* name : {"C", "it_IT", "tr_TR", "sv_SE"}) {
    std::setlocale(LC_ALL, (name + ".UTF-8"s).c_str());  // where the system has it
    QLocale::setDefault(QLocale(name));
    SCOPED_TRACE(name);
    expectOrders();
  }
  std::setlocale(LC_ALL, "C");
  QLocale::setDefault(QLocale::c());
}

// The order of keys is total, so that agreement with it makes compareText a total order as well.
TEST(TextOrder, KeysAgreeWithComparisonOnAnyBytes) {
  const std::vector<std::string> pieces = split(
      "a|A|b|E|s|ss|ß|è|È|é|æ|ae|ø|ậ| |7|'|\0|α|Ά|й|漢|😀|“|¨|×|€|\u0301|\u0302|\u0323|\u0344|"
      "\xC3|\xA8|\xE2\x82|\xF0\x9F|\xFF|\xED\xA0\x80|\xCC"s);
  std::mt19937 random(20240229);  // NOLINT: the same texts each time
  const auto any = [&] {
    std::string text;
    for (auto count = random() % 4; count > 0; --count) text += pieces[random() % pieces.size()];
    return text;
  };
  int equal = 0;
  for (int round = 0; round < 40000 && !testing::Test::HasFailure(); ++round) {
    const std::string left = any();
    const std::string right = any();
    if (orderOf(left, right) == 0 && left != right) ++equal;
    EXPECT_EQ(orderOf(left, foldCase(left)), 0) << left;
    EXPECT_EQ(keyOf(left).find('\0'), std::string::npos) << left;
    // Cut anywhere, it is read to its end only.
    const std::vector<char> exact(left.begin(), left.end() - (left.empty() ? 0 : 1));
    const std::string_view cut(exact.data(), exact.size());
    EXPECT_EQ(orderOf(cut, std::string(cut)), 0);
    EXPECT_EQ(foldCase(cut), foldCase(std::string(cut)));
  }
  EXPECT_GT(equal, 10);
  std::string text = "A";
  for (int count = 0; count < 50; ++count) {
    const std::string longer = text + "\u0301";
    EXPECT_EQ(orderOf(text, longer), -1) << count;
    text = longer;
  }
}

}  // namespace
}  // namespace store
