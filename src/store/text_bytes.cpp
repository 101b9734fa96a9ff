#include "store/text_bytes.h"

#include <string_view>

#include "store/letters.h"

namespace store {
namespace {

// The half of a surrogate pair whose three bytes begin here, 0 if there is none.
char16_t halfAt(const char* at, const char* end) {
  const auto byte = [at](int place) { return static_cast<unsigned char>(at[place]); };
  const bool half = end - at >= 3 && byte(0) == 0xED && byte(1) >= 0xA0 && byte(1) <= 0xBF &&
                    (byte(2) & 0xC0U) == 0x80;
  return half ? static_cast<char16_t>(0xD000U | (byte(1) & 0x3FU) << 6U | (byte(2) & 0x3FU)) : 0;
}

QString textByEach(const char* at, const char* end) {
  QString text;
  while (at != end) {
    if (const char16_t half = halfAt(at, end); half != 0) {
      text += QChar(half);
      at += 3;
      continue;
    }
    const char32_t code = letters::decode(at, end);
    text += QChar::fromUcs4(code < letters::kBadByte ? code : char32_t{u'\uFFFD'});
  }
  return text;
}

}  // namespace

QByteArray bytesOf(const QString& text) {
  if (text.isValidUtf16()) return text.toUtf8();
  std::string bytes;
  for (qsizetype i = 0; i < text.size(); ++i) {
    char32_t code = text.at(i).unicode();
    if (QChar::isHighSurrogate(code) && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
      code = QChar::surrogateToUcs4(text.at(i), text.at(i + 1));
      ++i;
    }
    letters::appendCode(code, bytes);
  }
  return QByteArray::fromStdString(bytes);
}

QString textOf(const char* bytes, qsizetype size) {
  const QString text = QString::fromUtf8(bytes, size);
  // Qt takes a mark of byte order at the beginning for none of the text.
  const bool marked = size >= 3 && std::string_view(bytes, 3) == "\xEF\xBB\xBF";
  const bool whole = !marked && !text.contains(QChar::ReplacementCharacter);
  return whole ? text : textByEach(bytes, bytes + size);
}

}  // namespace store
