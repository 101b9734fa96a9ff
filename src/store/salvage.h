#pragma once

#include <QHash>
#include <optional>
#include <vector>

#include "store/archive_shape.h"
#include "store/page_trees.h"

namespace store {

// Sure: as it was written. Doubtful: from a page that does not prove itself, or one that may have
// been free.
enum class Trust { Sure, Doubtful };

struct FoundRow {
  qint64 key = 0;
  qint64 page = 0;  // 0 for a row that was put together from indexes
  int cell = 0;
  Trust trust = Trust::Sure;
};
struct FoundTable {
  TableShape shape;
  std::vector<FoundRow> rows;  // by key, each one once
  std::vector<StoredRow> restored;
  std::vector<KeyRange> gaps;   // where rows are missing or may be
  std::vector<StoredRow> lost;  // what an index tells of rows that are missing
  bool isLostKnown = true;      // that these are all
};

// The rows of a damaged archive's tables, as far as they can be read: no row is made up, none is
// taken against the word of an index that is whole.
class Salvage final {
 public:
  Salvage(const PageImage& image, const ArchiveShape& model);

  const std::vector<FoundTable>& tables() const { return tables_; }
  StoredRow row(const FoundTable& table, const FoundRow& found) const;

 private:
  using Entries = QHash<qint64, StoredValues>;
  enum class Word { Confirmed, Denied, Unknown };

  std::vector<StoredRow> readSchema();
  void readTrees();
  void readOrphans();
  std::optional<Trust> trustIn(int table, const PageTree::Leaf& leaf, qint64 previous,
                               StoredRow& row) const;
  void readLeaf(int table, const PageTree::Leaf& leaf);
  int tableOf(qint64 page) const;
  bool mayHold(int table, qint64 page) const;
  bool isIn(const std::vector<KeyRange>& gaps, qint64 key) const;
  Word word(int table, const StoredRow& row) const;
  const Entries& entries(std::size_t index) const;
  void close(int table);
  void fillGaps(int table);
  bool hasGaps(int table) const { return !tables_[static_cast<std::size_t>(table)].gaps.empty(); }

  const PageImage& image_;
  PageReader reader_;
  PageTrees trees_;
  ArchiveShape shape_;
  bool areFreePagesSure_ = false;
  std::vector<FoundTable> tables_;
  std::vector<PageTree> indexes_;
  mutable QHash<std::size_t, Entries> entries_;
};

// Texts of a row that may hold anything: false if one is no text at all. The last one of a row is
// cut where it stops being one.
bool cleanTexts(StoredRow& row);

}  // namespace store
