#include "damage/damages.h"

#include <QByteArrayList>
#include <QtEndian>
#include <algorithm>

#include "harm/archive_file.h"
#include "harm/chance.h"
#include "store/archive.h"

namespace damage {
namespace {

constexpr qsizetype kPage = 4096;

using harm::after;
using harm::anyOf;
using harm::below;

qsizetype pagesOf(const QByteArray& file) {
  return file.size() / kPage;
}

void setNumber(QByteArray& file, qsizetype at, quint32 value) {
  qToBigEndian(value, file.data() + at);
}

// The lines of a file beside this one.
QByteArrayList linesOf(const QString& name) {
  return store::sourceFile("tests/damage/" + name).trimmed().split('\n');
}

void flipBits(QByteArray& file, std::mt19937& random, qsizetype from, qsizetype size) {
  for (auto count = 1 + below(random, 8); count > 0; --count) {
    char& byte = file.data()[from + below(random, size)];
    byte = static_cast<char>(byte ^ (1 << below(random, 8)));
  }
}

void flipIndex(QByteArray& file, std::mt19937& random) {
  std::vector<qsizetype> places;
  for (qsizetype page = kPage; page < file.size(); page += kPage) {
    if (file[page] == 2 || file[page] == 10) places.push_back(page);
  }
  flipBits(file, random, anyOf(random, places), kPage);
}

// Where the tables and indexes are described.
void flipSchema(QByteArray& file, std::mt19937& random) {
  static const QByteArray words[] = {"CREATE TABLE", "CREATE INDEX", "CREATE UNIQUE INDEX"};
  const QByteArray& word = anyOf(random, words);
  std::vector<qsizetype> places;
  for (auto at = file.indexOf(word); at >= 0; at = file.indexOf(word, at + 1)) places.push_back(at);
  flipBits(file, random, anyOf(random, places) - 30, 200);
}

void overwritePage(QByteArray& file, std::mt19937& random) {
  char* page = file.data() + below(random, pagesOf(file)) * kPage;
  const auto what = below(random, 3);
  std::generate(page, page + kPage, [&] {
    return what == 0 ? '\0' : what == 1 ? '\xff' : static_cast<char>(random());
  });
}

// One bit of each kind of byte: head of a page, cells, their ends, the checksum itself.
void flipOneBit(QByteArray& file, std::mt19937& random) {
  constexpr qsizetype ends[] = {0, 8, 32, kPage / 2, kPage - 9, kPage - 8, kPage - 1};
  const auto page = below(random, pagesOf(file)) * kPage;
  char& byte = file.data()[page + anyOf(random, ends)];
  byte = static_cast<char>(byte ^ (1 << below(random, 8)));
}

void takeForeignPage(QByteArray& file, std::mt19937& random) {
  static const QByteArray foreign = harm::smallArchive(500);
  const auto from = below(random, pagesOf(foreign)) * kPage;
  // The same number in both is the one case that a checksum cannot tell.
  auto page = from;
  while (page == from) page = below(random, pagesOf(file)) * kPage;
  std::copy_n(foreign.data() + from, kPage, file.data() + page);
}

// Page 1 stays: without it nothing opens.
void swapPages(QByteArray& file, std::mt19937& random) {
  char* first = file.data() + (1 + below(random, pagesOf(file) - 1)) * kPage;
  char* second = file.data() + (1 + below(random, pagesOf(file) - 1)) * kPage;
  if (random() % 2 == 0) {
    std::swap_ranges(first, first + kPage, second);
  } else {
    std::copy_n(first, kPage, second);
  }
}

void cutWhole(QByteArray& file, std::mt19937& random) {
  file.truncate((1 + below(random, pagesOf(file) - 1)) * kPage);
  setNumber(file, 28, static_cast<quint32>(pagesOf(file)));
}

void growWhole(QByteArray& file, std::mt19937& random) {
  const bool zeros = random() % 2 == 0;
  file += zeros ? QByteArray((1 + below(random, 20)) * kPage, '\0') : file.left(3 * kPage);
  setNumber(file, 28, static_cast<quint32>(pagesOf(file)));
}

void spoilHeader(QByteArray& file, std::mt19937& random) {
  // Page size, versions, change count, page count, free list, schema, encoding, application, ...
  constexpr qsizetype places[] = {0, 16, 18, 20, 24, 28, 32, 36, 40, 44, 52, 56, 64, 68, 92};
  const auto any = static_cast<quint32>(random());
  const quint32 values[] = {0, 1, 2, 3, 0x01000000, 0x02020000, 0xffffffff, any, any % 200};
  setNumber(file, anyOf(random, places), anyOf(random, values));
}

// An index that is not what the table is: the table was written while the schema did not know it.
void makeIndexLie(QByteArray& file, std::mt19937& random) {
  static const QByteArrayList lies = linesOf("lies.txt");
  const QByteArray& line = anyOf(random, lies);
  const auto end = line.indexOf(':');
  const QByteArray named = "name = '" + line.left(end) + "'";
  file =
      after(file,
            {"PRAGMA writable_schema = 1; CREATE TABLE kept AS SELECT * FROM sqlite_schema WHERE " +
                 named + "; DELETE FROM sqlite_schema WHERE " + named,
             line.mid(end + 1).replace("$n", QByteArray::number(below(random, 97))),
             "PRAGMA writable_schema = 1; INSERT INTO sqlite_schema SELECT * FROM kept; "
             "DELETE FROM sqlite_schema WHERE name = 'kept'"},
            harm::Checksums::Spoilt);
}

void changeQuery(QByteArray& file, std::mt19937& random) {
  const QByteArray queries[] = {"Q_LIB", "Q_AUD", "Q_PER", "Q_RIVSUB"};
  const QByteArray& name = anyOf(random, queries);
  const QByteArray texts[] = {
      "SELECT",
      "",
      QByteArray(100000, '('),
      "SELECT * FROM Q_REP_0",
      "SELECT * FROM " + name + " UNION ALL SELECT * FROM " + name,
      "SELECT * FROM MAIN WHERE " + QByteArray("ID = 1 OR ").repeated(20000) + "ID = 2",
      "SELECT " + QByteArray("Titolo, ").repeated(3000) + "ID FROM MAIN",
      "SELECT * FROM MAIN, MAIN AS B, MAIN AS C, MAIN AS D",
      "SELECT * FROM MAIN INNER JOIN TAB ON MAIN.TABAutoreID = TAB.ID",
      "UPDATE MAIN SET Titolo = 'x'",
      QByteArray("SELECT \0 * FROM \xff MAIN", 22)};
  const bool remove = random() % 10 == 0;
  file = after(file, {(remove ? QByteArray("DELETE FROM QUERYDEF")
                              : "UPDATE QUERYDEF SET Sql = CAST(x'" + anyOf(random, texts).toHex() +
                                    "' AS TEXT)") +
                      " WHERE Name = '" + name + "'"});
}

void changeSchema(QByteArray& file, std::mt19937& random) {
  static const QByteArrayList changes = linesOf("schema.sql");
  QByteArray change = anyOf(random, changes);
  change.replace("$page", QByteArray::number(2 + below(random, pagesOf(file) - 1)));
  file = after(file, {"PRAGMA writable_schema = 1; " + change});
}

}  // namespace

const std::vector<Kind>& kinds() {
  static const std::vector<Kind> all = {
      {"bits", [](QByteArray& f, std::mt19937& r) { flipBits(f, r, 0, f.size()); }},
      {"bits of an index", flipIndex},
      {"bits of the schema", flipSchema},
      {"page overwritten", overwritePage},
      {"pages swapped", swapPages},
      {"cut", [](QByteArray& f, std::mt19937& r) { f.truncate(below(r, f.size())); }, true},
      {"cut, count adapted", cutWhole},
      {"grown", [](QByteArray& f, std::mt19937& r) { f += f.right(1 + below(r, 2 * kPage)); },
       true},
      {"grown, count adapted", growWhole},
      {"header", spoilHeader},
      {"one bit", flipOneBit},
      {"page of another archive", takeForeignPage},
      {"index that lies", makeIndexLie},
      {"query changed", changeQuery},
      {"schema changed", changeSchema, false, true},
  };
  return all;
}

}  // namespace damage
