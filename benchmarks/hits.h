#pragma once

#include "ground.h"
#include "raw_file.h"

namespace bench {

// A copy of the archive whose books are known: each hundredth of them, numbered from 0, has its
// own author, year and mark in the title, and the first and the last have words of their own.
class Hits final {
 public:
  static constexpr int kParts = 100;
  // Makes the copies: one for the program, one for the plain engine, which has the best index for
  // any question.
  static QStringList archives(const Ground& ground);

  static QString mark(int part) { return QStringLiteral("nr%1.").arg(part); }
  static int year(int part) { return 1800 + part; }
  static qint64 author(const RawFile& file, int part);
  // Words that only the first, and only the last of the books has; a number for each.
  static QString firstWord(int number) { return QStringLiteral("inizio%1.").arg(number); }
  static QString lastWord(int number) { return QStringLiteral("termine%1.").arg(number); }
  static constexpr int kWords = 10;
};

}  // namespace bench
