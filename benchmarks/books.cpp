#include "books.h"

namespace bench {

Keys firstBooks(const RawFile& file, qint64 count) {
  RawStatement statement(file, "SELECT MAIN.ID, LIB.ID" + kBooksJoin + kBooksOrder + " LIMIT ?");
  statement.bind(1, count);
  Keys keys;
  while (statement.step()) keys.append({statement.number(0), statement.number(1)});
  return keys;
}

}  // namespace bench
