#include "tools/italian_text.h"

#include "tools/italian_words.h"

namespace tavolix::builder {
namespace {

constexpr int kLeastWords = 2;
constexpr int kMostWords = 8;
constexpr int kLeastProse = 60;

// Spreads neighbouring numbers over all combinations: prime, and no factor of any list's size.
constexpr qint64 kSpread = 7919;

// The text with this number of all combinations of two lists, then of two lists and a third.
template <std::size_t n, std::size_t m, std::size_t k>
QString combination(qint64 number, const char* const (&first)[n], const char* const (&second)[m],
                    const char* const (&third)[k]) {
  constexpr auto pairs = static_cast<qint64>(n * m);
  static_assert(pairs * static_cast<qint64>(k + 1) >= kListTexts && pairs % kSpread != 0);
  const qint64 pair = number % pairs * kSpread % pairs;
  const qint64 round = number / pairs;
  QString text = QString::fromUtf8(first[pair % static_cast<qint64>(n)]) + u' ' +
                 QString::fromUtf8(second[pair / static_cast<qint64>(n)]);
  if (round > 0) text += u' ' + QString::fromUtf8(third[(round - 1) % static_cast<qint64>(k)]);
  return text;
}

qsizetype wordsOf(const QString& text) {
  return text.count(u' ') + 1;
}

// One or two more words, at most `most`.
QString furtherWords(Random& random, qsizetype most) {
  const bool two = most > 1 && random.chance(70);
  return u' ' + (two ? pick(random, words::kPairs) : pick(random, words::kSingles));
}

}  // namespace

QString personName(qint64 number) {
  return combination(number, words::kSurnames, words::kNames, words::kNames);
}

QString listText(qint64 number) {
  return combination(number, words::kStarts, words::kPairs, words::kSingles);
}

QString title(Random& random, int size) {
  const qint64 count = random.between(kLeastWords, kMostWords);
  QString text = pick(random, words::kStarts);
  while (wordsOf(text) < count) {
    const QString further = furtherWords(random, count - wordsOf(text));
    if (text.size() + further.size() > size) break;
    text += further;
  }
  return text;
}

QString prose(Random& random, int size) {
  const qint64 length = random.between(kLeastProse, size);
  QString text;
  while (true) {
    const QString sentence = title(random, size - 1) + u'.';
    if (!text.isEmpty() && text.size() + 1 + sentence.size() > length) return text;
    text += (text.isEmpty() ? QString() : QStringLiteral(" ")) + sentence;
  }
}

QString address(Random& random) {
  return pick(random, words::kStreets) + u' ' + QString::number(random.between(1, 220));
}

}  // namespace tavolix::builder
