#include <gtest/gtest.h>

#include <algorithm>

#include "store/archive.h"

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
      rows_->AddNew();
      const QVariantList keys = randomKeys();
      for (int k = 0; k < 3; ++k) rows_->SetValue(kFields[k], keys[k]);
      rows_->Update();
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
    const auto fits = [&](const Row& row) {
      const int order = compareKeys(row.keys, keys);
      return (order == 0 && comparison.endsWith(u'=')) ||
             (order < 0 && comparison.startsWith(u'<')) ||
             (order > 0 && comparison.startsWith(u'>'));
    };
    if (comparison.startsWith(u'<')) {
      const auto last = std::find_if(sorted_.rbegin(), sorted_.rend(), fits);
      return last == sorted_.rend() ? nullptr : &*last;
    }
    const auto first = std::find_if(sorted_.begin(), sorted_.end(), fits);
    return first == sorted_.end() ? nullptr : &*first;
  }

  std::vector<qint64> walk(bool forward) {
    std::vector<qint64> ids;
    forward ? rows_->MoveFirst() : rows_->MoveLast();
    while (!rows_->Eof() && !rows_->Bof()) {
      ids.push_back(rows_->Value("ID").toLongLong());
      forward ? rows_->MoveNext() : rows_->MovePrevious();
    }
    return ids;
  }

  std::vector<qint64> sortedIds() const {
    std::vector<qint64> ids;
    for (const Row& row : sorted_) ids.push_back(row.id);
    return ids;
  }

  static constexpr const char* kFields[] = {"TipoTab", "TipoRac", "Desc"};
  std::mt19937 random_{11};  // NOLINT: the same rows each time
  Archive archive_;
  RecordsetPtr rows_;
  std::vector<Row> sorted_;
};

TEST_F(TableWalk, BothWays) {
  std::vector<qint64> ids = sortedIds();
  EXPECT_EQ(walk(true), ids);
  std::reverse(ids.begin(), ids.end());
  EXPECT_EQ(walk(false), ids);
  std::sort(ids.begin(), ids.end());
  rows_->SetIndex("1u");
  EXPECT_EQ(walk(true), ids);
  EXPECT_EQ(rows_->Index(), "1u");
}

// Turns at any row, and goes on after what others write, as with one row read at a time.
TEST_F(TableWalk, ToAndFroWhileOthersWrite) {
  const std::vector<qint64> ids = sortedIds();
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
    if (step % 7 != 0) continue;
    other->Edit();
    other->SetValue("nVal", step);
    other->Update();
  }
}

TEST_F(TableWalk, AfterDeletes) {
  std::vector<qint64> ids = sortedIds();
  const Transaction transaction(*archive_);
  for (int i = 0; i < 300; ++i) {
    const std::size_t place = random_() % ids.size();
    rows_->MoveFirst();
    rows_->Move(static_cast<qint64>(place));
    rows_->Delete();
    ids.erase(ids.begin() + static_cast<std::ptrdiff_t>(place));
    if (place == ids.size()) continue;
    rows_->MoveNext();
    ASSERT_EQ(rows_->Value("ID").toLongLong(), ids[place]);
  }
  EXPECT_EQ(walk(true), ids);
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

TEST(Table, SeekByOneKeyAndByText) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("CFG", RecordsetType::Table);
  rows->SetIndex("1U");
  for (const auto& [key, value] : std::vector<std::pair<QString, double>>{{"UNO", 1}, {"due", 2}}) {
    rows->Seek("=", {key});
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value("nVal"), value);
  }
  rows->Seek("=", {QString(100, u'x')});
  EXPECT_TRUE(rows->NoMatch());
  EXPECT_EQ(rows->Value("dsc"), "due");
  const RecordsetPtr list = archive.open("TAB", RecordsetType::Table);
  list->SetIndex("3");
  list->Seek("=", {"AUTORE", 0, true});
  EXPECT_EQ(list->Value("ID"), 2);
  list->SetIndex("1u");
  list->Seek("<=", {9999999});
  EXPECT_EQ(list->Value("ID"), 8);
  list->Seek("=", {"3"});
  EXPECT_EQ(list->Value("ID"), 3);
}

TEST(Table, Failures) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("TAB", RecordsetType::Table);
  EXPECT_EQ(failureOf([&] { rows->Seek("=", {1}); }), 3015);
  EXPECT_EQ(failureOf([&] { rows->SetIndex("9"); }), 3015);
  EXPECT_EQ(failureOf([&] { rows->SetIndex("TAB_2"); }), 3015);
  rows->SetIndex("2");
  EXPECT_EQ(failureOf([&] { rows->Seek("=", {}); }), 3421);
  EXPECT_EQ(failureOf([&] { rows->Seek("=", {"a", 1, "b", 1}); }), 3421);
  EXPECT_EQ(failureOf([&] { rows->Seek("~", {"a"}); }), 3421);
  EXPECT_EQ(failureOf([&] { rows->Seek("=", {"a", "b"}); }), 3421);
  EXPECT_EQ(rows->Value("ID"), 1);
  for (const char* source : {"Q_LIB", "SELECT * FROM TAB", "NESSUNA"}) {
    EXPECT_EQ(failureOf([&] { archive.open(source, RecordsetType::Table); }), 3078) << source;
  }
}

// A table that others fill is not empty for ever.
TEST(Table, EmptyAndThenNot) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("CONT", RecordsetType::Table);
  EXPECT_TRUE(rows->Bof() && rows->Eof());
  EXPECT_EQ(failureOf([&] { rows->MoveFirst(); }), 3021);
  archive.outside("INSERT INTO CONT VALUES (5)");
  rows->MoveFirst();
  EXPECT_EQ(rows->Value("ID"), 5);
  rows->AddNew();
  rows->SetValue("ID", 6);
  rows->Update();
  EXPECT_EQ(rows->RecordCount(), 2);
  rows->SetBookmark(rows->LastModified());
  EXPECT_EQ(rows->Value("ID"), 6);
}

TEST(Table, RowsReadAheadAreNotOld) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("MAIN", RecordsetType::Table);
  rows->SetIndex("2");
  rows->MoveFirst();
  EXPECT_EQ(rows->Value("ID"), 7);
  const RecordsetPtr others = archive.open("SELECT * FROM MAIN WHERE ID = 6");
  others->Delete();
  rows->MoveNext();
  EXPECT_EQ(rows->Value("ID"), 5);
  others->AddNew();
  others->SetValue("RacID", 13);
  others->SetValue("TipoRac", 0);
  others->Update();
  rows->MoveNext();
  EXPECT_EQ(rows->Value("ID"), 10);
}

}  // namespace
}  // namespace store
