#include <gtest/gtest.h>

#include "store/archive.h"

namespace store {
namespace {

// Books of few different values, many of them Null, as SQLite's own sort would list them.
class Order : public testing::Test {
 protected:
  static constexpr int kBooks = 500;

  Order() {
    archive_.outside("DELETE FROM MAIN; DELETE FROM LIB");
    const auto some = [this](const QVariant& value) {
      return random_() % 8 == 0 ? QVariant() : value;
    };
    const auto number = [this](unsigned below) { return static_cast<int>(random_() % below); };
    Transaction transaction(*archive_);
    const RecordsetPtr rows = archive_.open("Q_LIB");
    for (int i = 0; i < kBooks; ++i) {
      add(*rows, {{"RacID", kBooks * 7 - i * 7 % (kBooks * 3)},
                  {"TipoRac", 0},
                  {"Titolo", some(randomText(random_))},
                  {"TABAutoreID", some(1 + number(9))},
                  {"TabCollanaID", some(1 + number(3))},
                  {"Anno", some(1990.0 + number(20) / 4.0)},
                  {"DtaAcq", some(number(60) - 30)},
                  {"Valore", some(number(2) == 0 ? 1e15 + number(3) : -0.01 * number(3))},
                  {"SottoTitolo", some(QString(number(3), u'x'))}});
    }
    transaction.Commit();
  }

  // `sorted` is the order in SQLite's language, where that differs.
  void expectSame(const QString& list, const QString& order, const QString& where = {},
                  const QString& sorted = {}) {
    const QString query = "SELECT * FROM " + list + where + " ORDER BY " + order;
    const QString plain =
        R"(SELECT MAIN.ID FROM (SELECT MAIN.*, LIB.ID AS Libro, SottoTitolo, A."Desc" AS Autore,
           C."Desc" AS Collana, substr(Titolo, 1, 1) COLLATE ITALIANO AS Iniziale,
           Anno - Valore AS D, A."Default" AS Y, A.ID AS N FROM MAIN JOIN LIB ON RacID = LIB.ID
           LEFT JOIN TAB AS A ON A.ID = TABAutoreID LEFT JOIN TAB AS C ON C.ID = TabCollanaID
           WHERE MAIN.TipoRac = 0) AS MAIN )" +
        where + " ORDER BY " + (sorted.isEmpty() ? order : sorted) + ", Libro, MAIN.ID";
    const QString expected = archive_.outsideValues(plain.toUtf8());
    EXPECT_GT(expected.count(u' '), 200);
    EXPECT_EQ(valuesOf(*archive_.open(query), "MAIN.ID"), expected) << query.toStdString();
  }

  std::mt19937 random_{3};  // NOLINT: the same rows each time
  Archive archive_;
};

TEST_F(Order, IsThatOfAPlainSort) {
  for (const char* order :
       {"Titolo", "Autore", "DtaAcq DESC", "Valore", "Collana, SottoTitolo DESC",
        "TABAutoreID, Autore", "Autore, Anno DESC, Titolo", "SottoTitolo, DtaAcq, Titolo",
        "SottoTitolo, MAIN.ID DESC", "RacID DESC"}) {
    expectSame("Q_LIB", order);
    expectSame("Q_LIB", order, " WHERE (Anno > 1991 OR Anno Is Null)");
  }
}

// Expressions, columns of joined tables that are no texts, and an order below the order.
TEST_F(Order, OfComputedValuesAndOfQueriesBelow) {
  archive_->CreateQueryDef("Q_X", "SELECT * FROM Q_LIB ORDER BY Titolo");
  expectSame("Q_X", "Autore", {}, "Autore, Titolo");
  archive_->CreateQueryDef("Q_Y",
                           "SELECT Q_LIB.*, Left(Titolo, 1) AS Iniziale, Anno - Valore AS D, "
                           "T.[Default] AS Y, T.ID AS N "
                           "FROM Q_LIB LEFT JOIN TAB AS T ON T.ID = TABAutoreID");
  archive_.outside(
      "UPDATE TAB SET ID = -ID; UPDATE TAB SET ID = -7 * ID; "
      "UPDATE MAIN SET TABAutoreID = 7 * TABAutoreID");
  for (const char* order : {"Iniziale DESC", "D DESC", "Y DESC", "N DESC"}) {
    expectSame("Q_Y", order);
  }
}

// Rows that point nowhere, at the same row or at what is no number: the join decides.
TEST_F(Order, StoredOrderIsThatOfTheFirstTable) {
  archive_.outside(
      "UPDATE MAIN SET TABAutoreID = 'testo' || ID WHERE ID % 3 = 0; "
      "UPDATE MAIN SET TABAutoreID = 9223372036854775807, Anno = x'00' WHERE ID % 3 = 1; "
      "INSERT INTO LIB (ID) VALUES (-5), (0), (1), (2);"
      "UPDATE MAIN SET RacID = CASE ID % 9 WHEN 0 THEN NULL WHEN 1 THEN 'testo' WHEN 2 THEN 1.5 "
      "WHEN 3 THEN -5 WHEN 4 THEN 0 WHEN 5 THEN ID % 4 WHEN 6 THEN 999999 ELSE RacID END");
  // A book's number does not decide where records share it.
  expectSame("Q_LIB", "LIB.ID, Titolo DESC", {}, "Libro, Titolo DESC");
  expectSame("Q_LIB", "Autore");
  expectSame("Q_LIB", "Anno, Autore DESC");
  EXPECT_EQ(valuesOf(*archive_.open("Q_LIB"), "MAIN.ID"),
            archive_.outsideValues("SELECT MAIN.ID FROM MAIN JOIN LIB ON RacID = LIB.ID WHERE "
                                   "TipoRac = 0 ORDER BY LIB.ID, MAIN.ID"));
}

// What ANALYZE leaves changes the engine's ways to the rows, not their order.
TEST(Statistics, DoNotDecideTheOrder) {
  const Archive archive;
  const QString list = "SELECT * FROM TAB WHERE TipoTab = 'AUTORE' AND TipoRac = 0 ORDER BY Desc";
  archive.outside(
      "ANALYZE; DELETE FROM sqlite_stat1; INSERT INTO sqlite_stat1 VALUES "
      "('TAB', 'TAB_2', '1000000 1000000 1000000 1000000'), ('TAB', 'TAB_3', '1000000 2 1 1')");
  archive->Close();
  const DatabasePtr database = OpenDatabase(archive.path());
  EXPECT_EQ(valuesOf(*database->OpenRecordset(list, RecordsetType::Dynaset), "ID"), "2 4 1 3");
}

}  // namespace
}  // namespace store
