#pragma once

#include <limits>
#include <vector>

#include "store/page_rows.h"

namespace store {

// Keys above the first one, up to the second.
struct KeyRange {
  qint64 above = std::numeric_limits<qint64>::min();
  qint64 last = std::numeric_limits<qint64>::max();
  bool holds(qint64 key) const { return key > above && key <= last; }
};

// What is found of a table or an index below its root.
struct PageTree {
  struct Leaf {
    qint64 page = 0;
    KeyRange keys;
    bool isSure = true;  // that it is one of this tree
  };
  std::vector<Leaf> leaves;
  std::vector<qint64> interior;  // of an index, whose interior pages hold entries too
  std::vector<KeyRange> lost;    // where rows may be missing
  bool isWhole() const { return lost.empty(); }
};

// The pages of an archive by the tree that they are part of. Each belongs to one.
class PageTrees final {
 public:
  explicit PageTrees(const PageImage& image);

  // Where page 1 says that the free pages are; false if not all of them can be told.
  bool takeFreePages();
  enum class Root { Sure, Doubtful };
  PageTree takeTable(qint64 root, Root isSure);
  PageTree takeIndex(qint64 root);
  // The leaves of tables that no tree has led to.
  std::vector<qint64> orphans() const;
  void take(qint64 page) { taken_[static_cast<std::size_t>(page)] = true; }

 private:
  bool isFree(qint64 page) const;
  void walkTable(qint64 page, const PageTree::Leaf& place, int depth, PageTree& tree);
  void walkIndex(qint64 page, int depth, PageTree& tree);

  const PageImage& image_;
  PageReader reader_;
  std::vector<bool> taken_;
};

}  // namespace store
