#include "store/page_trees.h"

#include <QtEndian>

namespace store {
namespace {

constexpr int kDeepest = 40;
constexpr int kFirstTrunkAt = 32;
constexpr int kFreePagesAt = 36;

}  // namespace

PageTrees::PageTrees(const PageImage& image)
    : image_(image), reader_(image), taken_(static_cast<std::size_t>(image.count()) + 1) {}

bool PageTrees::isFree(qint64 page) const {
  return page >= 1 && page <= image_.count() && !taken_[static_cast<std::size_t>(page)];
}

// A chain of pages, each with the next one's number, how many it names, and those.
bool PageTrees::takeFreePages() {
  const uchar* const first = image_.page(1);
  if (first == nullptr || !image_.isSure(1)) return false;
  const auto wanted = qFromBigEndian<quint32>(first + kFreePagesAt);
  quint32 found = 0;
  for (auto trunk = qFromBigEndian<quint32>(first + kFirstTrunkAt); trunk != 0;) {
    if (trunk == 1 || !isFree(trunk) || !image_.isSure(trunk)) return false;
    const uchar* const page = image_.page(trunk);
    take(trunk);
    ++found;
    const auto count = qFromBigEndian<quint32>(page + 4);
    if (count > static_cast<quint32>(image_.usableSize()) / 4 - 2) return false;
    for (std::size_t i = 0; i < count; ++i, ++found) {
      const auto leaf = qFromBigEndian<quint32>(page + 8 + 4 * i);
      if (leaf == 1 || !isFree(leaf)) return false;
      take(leaf);
    }
    trunk = qFromBigEndian<quint32>(page);
  }
  return found == wanted;
}

PageTree PageTrees::takeTable(qint64 root, Root isSure) {
  PageTree tree;
  walkTable(root, {root, {}, isSure == Root::Sure}, 0, tree);
  return tree;
}

// A page that does not prove itself leads on only to tables' pages that do, and does not tell
// which keys lie there.
void PageTrees::walkTable(qint64 page, const PageTree::Leaf& place, int depth, PageTree& tree) {
  const auto kind = isFree(page) ? reader_.kind(page) : std::nullopt;
  const bool isTable = kind == PageKind::TableLeaf || kind == PageKind::TableInterior;
  const bool isSure = image_.isSure(page);
  if (!isTable || depth > kDeepest) {
    tree.lost.push_back(place.keys);
    return;
  }
  take(page);
  if (!isSure) tree.lost.push_back(place.keys);
  if (kind == PageKind::TableLeaf) {
    tree.leaves.push_back({page, place.keys, place.isSure});
    return;
  }
  KeyRange keys = place.keys;
  for (const Child& child : reader_.children(page)) {
    if (!isSure) {
      if (isFree(child.page) && image_.isSure(child.page)) {
        walkTable(child.page, {child.page, place.keys, false}, depth + 1, tree);
      }
      continue;
    }
    keys.last = child.last.value_or(place.keys.last);
    walkTable(child.page, {child.page, keys, place.isSure}, depth + 1, tree);
    keys.above = keys.last;
  }
}

PageTree PageTrees::takeIndex(qint64 root) {
  PageTree tree;
  walkIndex(root, 0, tree);
  return tree;
}

void PageTrees::walkIndex(qint64 page, int depth, PageTree& tree) {
  const auto kind = isFree(page) ? reader_.kind(page) : std::nullopt;
  const bool isIndex = kind == PageKind::IndexLeaf || kind == PageKind::IndexInterior;
  if (!isIndex || !image_.isSure(page) || depth > kDeepest) {
    tree.lost.emplace_back();
    return;
  }
  take(page);
  if (kind == PageKind::IndexLeaf) {
    tree.leaves.push_back({page, {}, true});
    return;
  }
  tree.interior.push_back(page);
  for (const Child& child : reader_.children(page)) walkIndex(child.page, depth + 1, tree);
}

std::vector<qint64> PageTrees::orphans() const {
  std::vector<qint64> pages;
  for (qint64 page = 1; page <= image_.count(); ++page) {
    if (isFree(page) && reader_.kind(page) == PageKind::TableLeaf) pages.push_back(page);
  }
  return pages;
}

}  // namespace store
