#pragma once

#include <QString>

#include "tools/random.h"

// Made-up Italian texts, with accents and apostrophes.
namespace tavolix::builder {

// Numbers below this give different texts in each of listText and personName.
inline constexpr qint64 kListTexts = 70000;

// Names of persons below this number have no second name: they fit into 30 characters.
inline constexpr qint64 kPlainNames = 8000;

// "Cognome Nome", or "Cognome Nome Nome".
QString personName(qint64 number);
// A short text for a lookup list.
QString listText(qint64 number);

// A title of 2 to 8 words, at most `size` characters (at least 40).
QString title(Random& random, int size);
// Sentences of at most `size` characters (at least 100).
QString prose(Random& random, int size);
// Street and number.
QString address(Random& random);

// An entry of a word list.
template <std::size_t n>
QString pick(Random& random, const char* const (&list)[n]) {
  return QString::fromUtf8(list[random.below(static_cast<qint64>(n))]);
}

}  // namespace tavolix::builder
