#include "store/letters.h"

#include <algorithm>

#include "store/letter_table.h"

namespace store::letters {
namespace {

constexpr std::uint8_t markNumber(int mark) {
  const int number =
      mark < kForms ? static_cast<int>(kMarkCodes) + mark : mark - static_cast<int>(kFirstMarkCode);
  return static_cast<std::uint8_t>(kFirstMark + number);
}

constexpr std::size_t slotOf(char16_t code) {
  return kPageSlots[code >> 8U] * std::size_t{256} + (code & 0xFFU);
}

using Table = std::array<Letter, kPages.size() * 256>;

constexpr void addMarkRows(Table& table) {
  for (const MarkRow& row : kMarkRows) {
    for (std::size_t at = 0; at < row.letters.size(); at += 4) {
      Letter& small = table[slotOf(row.letters[at + 2])];
      small.parent = row.letters[at];
      small.mark = markNumber(row.mark);
      table[slotOf(row.letters[at + 1])].folded = row.letters[at + 2];
    }
  }
}

constexpr void addPairs(Table& table, std::u16string_view pairs, std::u16string_view bases) {
  for (std::size_t at = 0; at < pairs.size(); at += 3) {
    table[slotOf(pairs[at])].folded = pairs[at + 1];
    if (bases.empty()) continue;
    table[slotOf(pairs[at + 1])].base = bases[0];
    table[slotOf(pairs[at + 1])].second = bases[1];
  }
}

// Each small letter takes the bases of its last parent, each capital all of its small letter.
constexpr void completeLetters(Table& table) {
  for (Letter& letter : table) {
    if (letter.parent == 0) continue;
    const Letter* root = &letter;
    while (root->parent != 0) root = &table[slotOf(root->parent)];
    letter.base = root->base;
    letter.second = root->second;
  }
  for (Letter& letter : table) letter = table[slotOf(letter.folded)];
}

constexpr Table makeTable() {
  Table table;
  for (std::size_t slot = 0; slot < table.size(); ++slot) {
    table[slot].folded = static_cast<char16_t>(std::size_t{kPages[slot / 256]} * 256 + slot % 256);
    table[slot].base = table[slot].folded;
  }
  addPairs(table, u"Aa Bb Cc Dd Ee Ff Gg Hh Ii Jj Kk Ll Mm Nn Oo Pp Qq Rr Ss Tt Uu Vv Ww Xx Yy Zz ",
           {});
  addPairs(table, kCasePairs, {});
  for (const DoubleRow& row : kDoubleRows) addPairs(table, row.letters, row.bases);
  addMarkRows(table);
  completeLetters(table);
  return table;
}

int placeOf(std::uint8_t mark) {
  const int code = mark - kFirstMark + static_cast<int>(kFirstMarkCode);
  const auto* run = std::find_if(std::begin(kClassRuns), std::end(kClassRuns),
                                 [code](const ClassRun& each) { return code <= each.last; });
  return run == std::end(kClassRuns) ? 0 : run->place;
}

// Payload of the byte that continues a character; 0x40 if it does not.
char32_t continuation(const char* at, const char* end) {
  if (at == end) return 0x40;
  const auto byte = static_cast<std::uint8_t>(*at);
  return (byte & 0xC0U) == 0x80U ? byte & 0x3FU : 0x40U;
}

bool isCharacter(char32_t code, int length) {
  constexpr std::array<char32_t, 5> kLeast = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = code >= 0xD800 && code < 0xE000;
  return code >= kLeast[static_cast<std::size_t>(length)] && code < kBadByte && !surrogate;
}

}  // namespace

constinit const Table kLetters = makeTable();

char32_t decodeLong(std::uint8_t lead, const char*& at, const char* end) {
  const int length = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF8 ? 4 : 1;
  if (length == 1) return kBadByte + lead;
  char32_t code = lead & (0x7FU >> static_cast<unsigned>(length));
  for (int index = 0; index + 1 < length; ++index) {
    const char32_t payload = continuation(at + index, end);
    if (payload == 0x40) return kBadByte + lead;
    code = (code << 6U) | payload;
  }
  if (!isCharacter(code, length)) return kBadByte + lead;
  at += length - 1;
  return code;
}

void appendCode(char32_t code, std::string& text) {
  const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (code < 0x80) {
    put(code);
    return;
  }
  if (code < 0x800) {
    put(0xC0 | (code >> 6U));
  } else {
    if (code < 0x10000) {
      put(0xE0 | (code >> 12U));
    } else {
      put(0xF0 | (code >> 18U));
      put(0x80 | ((code >> 12U) & 0x3FU));
    }
    put(0x80 | ((code >> 6U) & 0x3FU));
  }
  put(0x80 | (code & 0x3FU));
}

void Marks::add(std::uint8_t mark) {
  const int place = placeOf(mark);
  std::size_t at = count_++;
  for (; at > 0 && place > 0 && placeOf(marks_[at - 1]) > place; --at) marks_[at] = marks_[at - 1];
  marks_[at] = mark;
}

void Marks::addCode(char32_t code) {
  // Four marks are other names of marks.
  if (code == 0x344) add(markNumber(0x308));
  if (code == 0x340) code = 0x300;
  if (code == 0x341 || code == 0x344) code = 0x301;
  if (code == 0x343) code = 0x313;
  add(markNumber(static_cast<int>(code)));
}

char32_t Marks::addLetter(char32_t folded) {
  const Letter* letter = findLetter(folded);
  if (letter == nullptr || letter->parent == 0) return folded;
  const char32_t root = addLetter(letter->parent);
  add(letter->mark);
  return root;
}

char32_t composed(char32_t folded, std::uint8_t mark) {
  for (const MarkRow& row : kMarkRows) {
    if (markNumber(row.mark) != mark) continue;
    for (std::size_t at = 0; at < row.letters.size(); at += 4) {
      if (row.letters[at] == folded) return row.letters[at + 2];
    }
  }
  return 0;
}

}  // namespace store::letters
