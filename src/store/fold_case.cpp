#include <cstdint>

#include "store/letters.h"
#include "store/text_order.h"

namespace store {
namespace {

using letters::Marks;

// Appends a small letter and marks in their order, composed as far as there are letters for it.
void appendComposed(char32_t letter, const std::uint8_t*& mark, const std::uint8_t* end,
                    std::string& folded) {
  for (; mark != end; ++mark) {
    const char32_t more = letters::composed(letter, *mark);
    if (more == 0) break;
    letter = more;
  }
  letters::appendCode(letter, folded);
}

// Appends a small letter with the combining marks that follow it; code may be such a mark itself.
void appendMarked(char32_t code, const char*& at, const char* end, std::string& folded) {
  Marks marks;
  const bool alone = letters::isMark(code);
  const char32_t letter = alone ? 0 : marks.addLetter(code);
  if (alone) marks.addCode(code);
  while (!marks.full() && letters::mayBeMark(at, end)) {
    const char* next = at;
    const char32_t mark = letters::decode(next, end);
    if (!letters::isMark(mark)) break;
    marks.addCode(mark);
    at = next;
  }
  const std::uint8_t* rest = marks.begin();
  if (!alone) appendComposed(letter, rest, marks.end(), folded);
  for (; rest != marks.end(); ++rest) {
    letters::appendCode(letters::kFirstMarkCode + *rest - letters::kFirstMark, folded);
  }
}

}  // namespace

std::string foldCase(std::string_view text) {
  std::string folded;
  folded.reserve(text.size());
  const char* at = text.data();
  const char* const end = at + text.size();
  while (at != end) {
    const char32_t code = letters::foldedCode(letters::decode(at, end));
    if (code >= letters::kBadByte) {
      folded.push_back(static_cast<char>(code - letters::kBadByte));
    } else if (letters::isMark(code) || letters::mayBeMark(at, end)) {
      appendMarked(code, at, end, folded);
    } else {
      letters::appendCode(code, folded);
    }
  }
  return folded;
}

}  // namespace store
