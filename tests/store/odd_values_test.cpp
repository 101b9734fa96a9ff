#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "store/archive.h"

namespace store {
namespace {

using Limits = std::numeric_limits<double>;

// Written to a book's row, each value is found in the file as the column's kind has it, or refused.
TEST(OddValues, BecomeTheColumnsKindOrAreRefused) {
  const struct {
    const char* field;
    QVariant value;
    const char* stored;  // as SQLite shows it
    int number = 0;
  } cases[] = {
      {"Titolo", "", ""},
      {"Titolo", 1e300, "1e+300"},
      {"Titolo", QVariant(), "-"},
      {"Cod", QString(15, u'è'), "èèèèèèèèèèèèèèè"},
      {"Cod", QString(16, u'x'), nullptr, 3163},
      {"Anno", " ", "-"},
      {"Anno", "12.25", "12.25"},
      {"Anno", 1.5F, "1.5"},
      {"Anno", 9223372036854775807LL, "9.22337203685478e+18"},
      {"Anno", "1,5", nullptr, 3421},
      {"Anno", Limits::quiet_NaN(), nullptr, 3421},
      {"Anno", Limits::infinity(), nullptr, 6},
      {"TipoRac", 32767, "32767"},
      {"TipoRac", -3.6, "-4"},
      {"TipoRac", 32768, nullptr, 6},
      {"TipoRac", -32769, nullptr, 6},
      {"TABAutoreID", "-2147483648", "-2147483648"},
      {"TABAutoreID", true, "-1"},
      {"TABAutoreID", 2147483648.0, nullptr, 6},
      {"DtaAcq", 2958465.5, "2958465.5"},  // noon of 31 December 9999
      {"DtaAcq", -657434, "-657434"},      // 1 January 100
      {"DtaAcq", 2958466, nullptr, 6},
      {"DtaAcq", -657435, nullptr, 6},
      {"Autore", "Eco", nullptr, 3164},
      {"LIB.ID", 99, nullptr, 3164},
      {"Nessuno", 1, nullptr, 3265},
  };
  const Archive archive;
  const RecordsetPtr rows = archive.open("SELECT * FROM Q_LIB WHERE MAIN.ID = 1");
  for (const auto& c : cases) {
    EXPECT_EQ(failureOf([&] {
                change(*rows, {{c.field, c.value}});
              }),
              c.number)
        << c.field << textOf(c.value).toStdString();
    rows->CancelUpdate();
    if (c.stored == nullptr) continue;
    const QByteArray read = "SELECT " + QByteArray(c.field) + " FROM MAIN WHERE ID = 1";
    EXPECT_EQ(archive.outsideValues(read).toStdString(), c.stored) << c.field;
  }
  const std::pair<QVariant, int> answers[] = {{true, -1}, {false, 0}, {7, -1}, {"0", 0}};
  const RecordsetPtr list = archive.open("SELECT * FROM TAB WHERE ID = 1");
  for (const auto& [value, stored] : answers) {
    change(*list, {{"Default", value}});
    EXPECT_EQ(list->Value("Default"), stored);
  }
}

// Numbers that a table gives its rows itself end with a failure; no row is written over.
TEST(OddValues, KeysAtTheirEnd) {
  const Archive archive;
  for (const QByteArray source : {"MAIN", "TAB"}) {
    archive.outside("UPDATE sqlite_sequence SET seq = 2147483646 WHERE name = '" + source + "'");
    const RecordsetPtr rows =
        archive.open(source, source == "TAB" ? RecordsetType::Table : RecordsetType::Dynaset);
    const qint64 count = rows->RecordCount();
    add(*rows);
    for (int attempt = 0; attempt < 3; ++attempt) EXPECT_EQ(failureOf([&] { add(*rows); }), 6);
    rows->SetBookmark(rows->LastModified());
    EXPECT_EQ(rows->Value("ID"), 2147483647);
    EXPECT_EQ(archive.open(source)->RecordCount(), count + 1);
  }
  // What no key of the program can name is told, not cut.
  archive.outside("INSERT INTO MAIN (ID) VALUES (2147483648)");
  EXPECT_EQ(failureOf([&] { archive.open("MAIN"); }), 6);
}

// What another program left in a column: the value as it stands there, a blob as text. All ways of
// reading agree, and it can be written over.
TEST(OddValues, OfAForeignKind) {
  const struct {
    const char *column, *literal, *value;
  } cases[] = {
      {"Titolo", "x'41C3A842'", "AèB"},
      {"Titolo", "x'FF00'", "\uFFFD"},
      {"Titolo", "x''", ""},
      {"Titolo", "1.5", "1.5"},
      {"Anno", "'mille'", "mille"},
      {"Anno", "9e999", "inf"},
      {"DtaAcq", "'ieri'", "ieri"},
      {"DtaAcq", "1e20", "1e+20"},
      {"TipoRac", "99999", "99999"},
      {"TABAutoreID", "'2x'", "2x"},
      {"RacID", "x'00'", ""},
      {"RacID", "9223372036854775807", "9223372036854775807"},
  };
  const Archive archive;
  for (const auto& c : cases) {
    const QString name(c.column);
    archive.outside(QByteArray("UPDATE MAIN SET ") + c.column + " = " + c.literal +
                    " WHERE ID = 5");
    const RecordsetPtr table = archive.open("MAIN", RecordsetType::Table);
    for (const RecordsetPtr& rows :
         {table, archive.open("MAIN"), archive.open("SELECT * FROM MAIN ORDER BY " + name + ", ID"),
          archive.open(
              "SELECT DISTINCT ID, RacID, TipoRac, Titolo, Anno, DtaAcq, TABAutoreID FROM MAIN")}) {
      while (rows->Value("ID") != 5) rows->MoveNext();
      const QString read = rows->Value(name).toString().remove(QChar(0));
      EXPECT_EQ(read.toStdString(), c.value) << c.column << c.literal;
      if (rows == table) continue;
      EXPECT_EQ(rows->ValueAt(rows->AbsolutePosition(), rows->FieldIndex(name)), rows->Value(name));
      rows->FindFirst(name + " Like '*' AND NOT " + name + " + 1 = 0 AND ID = 5");
      EXPECT_FALSE(rows->NoMatch()) << c.column << c.literal;
    }
    change(*table, {{name, 7}});
    EXPECT_EQ(textOf(table->Value(name)), "7");
  }
}

}  // namespace
}  // namespace store
