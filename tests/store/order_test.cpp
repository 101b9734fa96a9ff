#include <gtest/gtest.h>

#include <algorithm>

#include "store/archive.h"

namespace store {
namespace {

struct Term {
  QString field;
  bool descending = false;
};

QString listOf(const std::vector<Term>& terms) {
  QStringList text;
  for (const Term& term : terms) text.append(term.field + (term.descending ? " DESC" : ""));
  return text.join(", ");
}

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
      rows->AddNew();
      rows->SetValue("RacID", kBooks * 7 - i * 7 % (kBooks * 3));
      rows->SetValue("TipoRac", 0);
      rows->SetValue("Titolo", some(randomText(random_)));
      rows->SetValue("TABAutoreID", some(1 + number(9)));
      rows->SetValue("TabCollanaID", some(1 + number(3)));
      rows->SetValue("Anno", some(1990.0 + number(20) / 4.0));
      rows->SetValue("DtaAcq", some(number(60) - 30));
      rows->SetValue("Valore", some(number(2) == 0 ? 1e15 + number(3) : -0.01 * number(3)));
      rows->SetValue("SottoTitolo", some(QString(number(3), u'x')));
      rows->Update();
    }
    transaction.Commit();
  }

  // The rows as they are stored, with the values of some fields.
  std::vector<QVariantList> stored(const QString& source, const std::vector<Term>& terms) {
    std::vector<QVariantList> result;
    const RecordsetPtr rows = archive_.open(source);
    for (; !rows->Eof(); rows->MoveNext()) {
      QVariantList values{rows->Value("MAIN.ID")};
      for (const Term& term : terms) values.append(rows->Value(term.field));
      result.push_back(values);
    }
    return result;
  }

  QStringList expected(const QString& source, const std::vector<Term>& terms) {
    std::vector<QVariantList> rows = stored(source, terms);
    std::stable_sort(rows.begin(), rows.end(), [&](const QVariantList& a, const QVariantList& b) {
      for (std::size_t t = 0; t < terms.size(); ++t) {
        const auto field = static_cast<qsizetype>(t) + 1;
        const int order = compareValues(a[field], b[field]);
        if (order != 0) return terms[t].descending ? order > 0 : order < 0;
      }
      return false;
    });
    QStringList ids;
    for (const QVariantList& row : rows) ids.append(textOf(row[0]));
    return ids;
  }

  std::mt19937 random_{3};  // NOLINT: the same rows each time
  Archive archive_;
};

TEST_F(Order, IsThatOfAPlainSort) {
  const std::vector<std::vector<Term>> cases = {{{"Titolo"}},
                                                {{"Autore"}},
                                                {{"DtaAcq", true}},
                                                {{"Valore"}},
                                                {{"Collana"}, {"SottoTitolo", true}},
                                                {{"TABAutoreID"}, {"Autore"}},
                                                {{"Autore"}, {"Anno", true}, {"Titolo"}},
                                                {{"SottoTitolo"}, {"DtaAcq"}, {"Titolo"}},
                                                {{"SottoTitolo"}, {"MAIN.ID", true}},
                                                {{"MAIN.RacID", true}}};
  for (const QString source : {"Q_LIB", "SELECT * FROM Q_LIB WHERE Anno > 1991 OR Anno Is Null"}) {
    for (const std::vector<Term>& terms : cases) {
      const QString query = source + " ORDER BY " + listOf(terms);
      const QString full = source == "Q_LIB" ? "SELECT * FROM " + query : query;
      const QStringList ids = expected(source, terms);
      EXPECT_GT(ids.size(), 300);
      EXPECT_EQ(valuesOf(*archive_.open(full), "MAIN.ID"), ids.join(u' ')) << full.toStdString();
    }
  }
}

// Expressions, columns of joined tables that are no texts, and an order below the order.
TEST_F(Order, OfComputedValuesAndOfQueriesBelow) {
  archive_->CreateQueryDef("Q_X", "SELECT * FROM Q_LIB ORDER BY Titolo");
  EXPECT_EQ(valuesOf(*archive_.open("SELECT * FROM Q_X ORDER BY Autore"), "MAIN.ID"),
            expected("Q_LIB", {{"Autore"}, {"Titolo"}}).join(u' '));
  archive_->CreateQueryDef(
      "Q_Y",
      "SELECT MAIN.*, Left(Titolo, 1) AS Iniziale, Anno - Valore AS D, T.[Default] AS Y, T.ID AS N "
      "FROM MAIN LEFT JOIN TAB AS T ON T.ID = TABAutoreID");
  archive_.outside(
      "UPDATE TAB SET ID = -ID; UPDATE TAB SET ID = -7 * ID; "
      "UPDATE MAIN SET TABAutoreID = 7 * TABAutoreID");
  for (const QString field : {"Iniziale", "D", "Y", "N"}) {
    EXPECT_EQ(valuesOf(*archive_.open("SELECT * FROM Q_Y ORDER BY " + field + " DESC"), "MAIN.ID"),
              expected("Q_Y", {{field, true}}).join(u' '))
        << field.toStdString();
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
  const QString joined = archive_.outsideValues(
      "SELECT MAIN.ID FROM MAIN JOIN LIB ON RacID = LIB.ID WHERE TipoRac = 0 "
      "ORDER BY LIB.ID, MAIN.ID");
  EXPECT_GT(joined.count(u' '), 200);
  EXPECT_EQ(valuesOf(*archive_.open("Q_LIB"), "MAIN.ID"), joined);
  // A book's number does not decide where records share it.
  const std::vector<std::vector<Term>> cases = {
      {{"LIB.ID"}, {"Titolo", true}}, {{"Autore"}}, {{"Anno"}, {"Autore", true}}};
  for (const std::vector<Term>& terms : cases) {
    EXPECT_EQ(valuesOf(*archive_.open("SELECT * FROM Q_LIB ORDER BY " + listOf(terms)), "MAIN.ID"),
              expected("Q_LIB", terms).join(u' '));
  }
}

}  // namespace
}  // namespace store
