#include <gtest/gtest.h>

#include <algorithm>

#include "store/archive.h"
#include "store/text_order.h"

namespace store {
namespace {

// A row of TAB: its key and the values of index "2".
struct Row {
  qint64 id = 0;
  QVariantList keys;
};

// Compares as many keys as both have.
int compareKeys(const QVariantList& left, const QVariantList& right) {
  for (qsizetype i = 0; i < std::min(left.size(), right.size()); ++i) {
    if (const int order = compareValues(left[i], right[i]); order != 0) return order;
  }
  return 0;
}

// TAB filled with rows of few different keys, many of them equal or Null, and the same rows sorted.
class TableWalk : public testing::Test {
 protected:
  static constexpr int kRows = 400;

  TableWalk() {
    archive_.outside("DELETE FROM TAB");
    rows_ = archive_.open("TAB", RecordsetType::Table);
    Transaction transaction(*archive_);
    for (int i = 0; i < kRows; ++i) {
      const QVariantList keys = randomKeys();
      add(*rows_, {{"TipoTab", keys[0]}, {"TipoRac", keys[1]}, {"Desc", keys[2]}});
      rows_->SetBookmark(rows_->LastModified());
      sorted_.push_back({rows_->Value("ID").toLongLong(), keys});
    }
    transaction.Commit();
    std::stable_sort(sorted_.begin(), sorted_.end(),
                     [](const Row& a, const Row& b) { return compareKeys(a.keys, b.keys) < 0; });
    rows_->SetIndex("2");
  }

  QVariantList randomKeys() {
    const auto chance = [this](unsigned of) { return random_() % of == 0; };
    return {chance(5) ? QVariant() : QVariant(chance(2) ? "AUTORE" : "genere"),
            chance(4) ? QVariant() : QVariant(static_cast<int>(random_() % 3)),
            chance(6) ? QVariant() : QVariant(randomText(random_))};
  }

  // The row that a search should find, from the sorted rows.
  const Row* expected(const QString& comparison, const QVariantList& keys) const {
    const Row* found = nullptr;
    for (const Row& row : sorted_) {
      const int order = compareKeys(row.keys, keys);
      const bool fits = (order == 0 && comparison.endsWith(u'=')) ||
                        (order < 0 && comparison.startsWith(u'<')) ||
                        (order > 0 && comparison.startsWith(u'>'));
      const bool last = comparison.startsWith(u'<');
      if (fits && (last || found == nullptr)) found = &row;
    }
    return found;
  }

  void expectWalk(bool forward, std::vector<qint64> ids) {
    if (!forward) std::reverse(ids.begin(), ids.end());
    forward ? rows_->MoveFirst() : rows_->MoveLast();
    for (const qint64 id : ids) {
      ASSERT_EQ(rows_->Value("ID").toLongLong(), id);
      forward ? rows_->MoveNext() : rows_->MovePrevious();
    }
    EXPECT_TRUE(forward ? rows_->Eof() : rows_->Bof());
  }

  std::mt19937 random_{11};  // NOLINT: the same rows each time
  Archive archive_;
  RecordsetPtr rows_;
  std::vector<Row> sorted_;
};

TEST_F(TableWalk, BothWaysAndToAndFroWhileOthersWrite) {
  std::vector<qint64> ids;
  for (const Row& row : sorted_) ids.push_back(row.id);
  expectWalk(true, ids);
  expectWalk(false, ids);
  const RecordsetPtr other = archive_.open("CFG");
  const Transaction transaction(*archive_);
  rows_->MoveFirst();
  qint64 place = 0;
  for (int step = 0; step < 1500; ++step) {
    const qint64 by = static_cast<qint64>(random_() % 150) - 70;
    if (place + by < 0 || place + by >= kRows) continue;
    place += by;
    rows_->Move(by);
    ASSERT_EQ(rows_->Value("ID").toLongLong(), ids[static_cast<std::size_t>(place)]) << step;
    if (step % 7 == 0) change(*other, {{"nVal", step}});
  }
  std::sort(ids.begin(), ids.end());
  rows_->SetIndex("1u");
  expectWalk(true, ids);
}

TEST_F(TableWalk, Seek) {
  int hits = 0;
  for (int round = 0; round < 600; ++round) {
    const QVariantList keys = randomKeys().mid(0, 1 + round % 3);
    for (const char* comparison : {"=", ">=", "<=", ">", "<"}) {
      const Row* row = expected(comparison, keys);
      const QVariant before = rows_->Value("ID");
      rows_->Seek(comparison, keys);
      ASSERT_EQ(rows_->NoMatch(), row == nullptr) << comparison;
      ASSERT_EQ(rows_->Value("ID"), row == nullptr ? before : QVariant(row->id)) << comparison;
      hits += row == nullptr ? 0 : 1;
      if (row == nullptr || row == &sorted_.back()) continue;
      rows_->MoveNext();
      ASSERT_EQ(rows_->Value("ID").toLongLong(), (row + 1)->id) << comparison;
    }
  }
  EXPECT_GT(hits, 2000);
}

TEST(Table, SeeksByKeysOfAnyKind) {
  const Archive archive;
  const struct {
    const char *table, *index, *comparison;
    QVariantList keys;
    const char* found;  // first column, "-" without a hit; or the failure
  } cases[] = {
      {"CFG", "1U", "=", {"UNO"}, "uno"},
      {"CFG", "1u", "=", {QString(100, u'x')}, "-"},
      {"TAB", "3", "=", {"AUTORE", 0, true}, "2"},
      {"TAB", "1u", "<=", {9999999}, "8"},
      {"TAB", "1u", "=", {"3"}, "3"},
      {"TAB", "9", "=", {1}, "3015"},
      {"TAB", "2", "=", {}, "3421"},
      {"TAB", "2", "=", {"a", 1, "b", 1}, "3421"},
      {"TAB", "2", "~", {"a"}, "3421"},
      {"TAB", "2", "=", {"a", "b"}, "3421"},
      {"TAB", nullptr, "=", {1}, "3015"},
      {"Q_LIB", nullptr, "", {}, "3078"},
      {"SELECT * FROM TAB", nullptr, "", {}, "3078"},
  };
  for (const auto& c : cases) {
    QString came;
    const int number = failureOf([&] {
      const RecordsetPtr rows = archive.open(c.table, RecordsetType::Table);
      if (c.index != nullptr) rows->SetIndex(c.index);
      rows->Seek(c.comparison, c.keys);
      came = rows->NoMatch() ? "-" : textOf(rows->Value(0));
    });
    EXPECT_EQ((number == 0 ? came : QString::number(number)).toStdString(), c.found) << c.table;
  }
}

// A table that others fill is not empty for ever, and rows read ahead are not old.
TEST(Table, SeesWhatOthersWrite) {
  const Archive archive;
  const RecordsetPtr counter = archive.open("CONT", RecordsetType::Table);
  EXPECT_TRUE(counter->Bof() && counter->Eof());
  EXPECT_EQ(failureOf([&] { counter->MoveFirst(); }), 3021);
  archive.outside("INSERT INTO CONT VALUES (5)");
  counter->MoveFirst();
  EXPECT_EQ(counter->Value("ID"), 5);
  const RecordsetPtr rows = archive.open("MAIN", RecordsetType::Table);
  rows->SetIndex("2");
  rows->MoveFirst();
  EXPECT_EQ(rows->Value("ID"), 7);
  const RecordsetPtr others = archive.open("SELECT * FROM MAIN WHERE ID = 6");
  others->Delete();
  rows->MoveNext();
  EXPECT_EQ(rows->Value("ID"), 5);
  add(*others, {{"RacID", 13}, {"TipoRac", 0}});
  rows->MoveNext();
  EXPECT_EQ(rows->Value("ID"), 10);
}

}  // namespace
}  // namespace store
