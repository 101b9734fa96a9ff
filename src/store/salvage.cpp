#include "store/salvage.h"

#include <QStringDecoder>
#include <algorithm>

namespace store {
namespace {

using Kind = StoredValue::Kind;

// Where UTF-8 without control characters ends.
qsizetype textEnd(const QByteArray& bytes) {
  qsizetype at = 0;
  while (at < bytes.size()) {
    const auto first = static_cast<uchar>(bytes[at]);
    if (first == 0x7f || (first < 0x20 && first != '\t' && first != '\n' && first != '\r')) break;
    const qsizetype length = first < 0x80   ? 1
                             : first < 0xc2 ? 0
                             : first < 0xe0 ? 2
                             : first < 0xf0 ? 3
                             : first < 0xf5 ? 4
                                            : 0;
    if (length == 0 || at + length > bytes.size()) break;
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString letter = decoder(QByteArrayView(bytes).sliced(at, length));
    if (decoder.hasError()) break;
    at += length;
  }
  return at;
}

bool isSame(const StoredValue& a, const StoredValue& b) {
  if (a.isNumber() && b.isNumber()) return a.number() == b.number();
  return a.kind == b.kind && a.bytes == b.bytes;
}

StoredValue valueAt(const TableShape& shape, const StoredRow& row, int column) {
  if (column == shape.keyColumn) return {Kind::Integer, row.key, 0, {}};
  const auto place = static_cast<std::size_t>(column);
  return place < row.values.size() ? row.values[place] : StoredValue{};
}

// An entry's key stands behind its columns.
bool isEntry(const StoredRow& entry, const IndexShape& index) {
  return entry.values.size() == index.columns.size() + 1 &&
         entry.values.back().kind == Kind::Integer;
}

}  // namespace

bool cleanTexts(StoredRow& row) {
  for (std::size_t i = 0; i < row.values.size(); ++i) {
    StoredValue& value = row.values[i];
    if (value.kind != Kind::Text) continue;
    const qsizetype end = textEnd(value.bytes);
    if (end == value.bytes.size()) continue;
    constexpr qsizetype kLongText = 1000;
    if (end < kLongText && !row.isCut) return false;
    value.bytes.truncate(end);
    row.isCut = true;
  }
  return true;
}

Salvage::Salvage(const PageImage& image, const ArchiveShape& model)
    : image_(image), reader_(image), trees_(image) {
  areFreePagesSure_ = trees_.takeFreePages();
  shape_ = shapeOf(readSchema(), model);
  readTrees();
  readOrphans();
  for (int table = 0; table < std::ssize(tables_); ++table) close(table);
}

std::vector<StoredRow> Salvage::readSchema() {
  const TableShape shape = shapeOfSchema();
  std::vector<StoredRow> rows;
  const auto read = [&](qint64 page) {
    for (const int cell : reader_.cells(page)) {
      const auto row = reader_.row(page, cell);
      if (row && shape.fits(*row)) rows.push_back(*row);
    }
  };
  const PageTree tree = trees_.takeTable(1, PageTrees::Root::Sure);
  for (const PageTree::Leaf& leaf : tree.leaves) read(leaf.page);
  if (tree.isWhole()) return rows;
  for (const qint64 page : trees_.orphans()) {
    const std::vector<int> cells = reader_.cells(page);
    const auto isOne = [&](int cell) {
      const auto row = reader_.row(page, cell);
      return row && shape.fits(*row);
    };
    if (cells.empty() || !std::all_of(cells.begin(), cells.end(), isOne)) continue;
    trees_.take(page);
    read(page);
  }
  return rows;
}

void Salvage::readTrees() {
  for (const IndexShape& index : shape_.indexes) {
    indexes_.push_back(trees_.takeIndex(index.root));
  }
  std::vector<PageTree> trees;
  for (const TableShape& table : shape_.tables) {
    trees.push_back(trees_.takeTable(table.root, PageTrees::Root::Sure));
    tables_.push_back({table, {}, {}, trees.back().lost, {}, true});
  }
  for (int table = 0; table < std::ssize(trees); ++table) {
    for (const PageTree::Leaf& leaf : trees[static_cast<std::size_t>(table)].leaves) {
      readLeaf(table, leaf);
    }
  }
}

bool Salvage::isIn(const std::vector<KeyRange>& gaps, qint64 key) const {
  return std::any_of(gaps.begin(), gaps.end(), [&](const KeyRange& gap) { return gap.holds(key); });
}

bool Salvage::mayHold(int table, qint64 page) const {
  const FoundTable& found = tables_[static_cast<std::size_t>(table)];
  const std::vector<int> cells = reader_.cells(page);
  return !found.gaps.empty() && !cells.empty() &&
         std::all_of(cells.begin(), cells.end(), [&](int cell) {
           const auto row = reader_.row(page, cell);
           return row && found.shape.fits(*row) && isIn(found.gaps, row->key) &&
                  word(table, *row) != Word::Denied;
         });
}

// The one table with gaps that its rows can be of; -1 if that is not told.
int Salvage::tableOf(qint64 page) const {
  std::vector<int> possible;
  std::vector<int> answering;
  for (int table = 0; table < std::ssize(tables_); ++table) {
    if (!mayHold(table, page)) continue;
    possible.push_back(table);
    const TableShape& shape = tables_[static_cast<std::size_t>(table)].shape;
    const std::vector<int> cells = reader_.cells(page);
    const bool answers = std::all_of(cells.begin(), cells.end(), [&](int cell) {
      return shape.answers(reader_.row(page, cell).value_or(StoredRow{}));
    });
    if (answers) answering.push_back(table);
  }
  if (answering.size() == 1) return answering.front();
  return possible.size() == 1 ? possible.front() : -1;
}

void Salvage::readOrphans() {
  for (const qint64 page : trees_.orphans()) {
    const int table = tableOf(page);
    if (table < 0) continue;
    trees_.take(page);
    readLeaf(table, {page, {}, areFreePagesSure_ && image_.hasChecksums()});
  }
}

// A page that does not prove itself holds keys in their order, as far as it can be read. Where no
// page can, an index has no more right than the table.
std::optional<Trust> Salvage::trustIn(int table, const PageTree::Leaf& leaf, qint64 previous,
                                      StoredRow& row) const {
  const TableShape& shape = tables_[static_cast<std::size_t>(table)].shape;
  const bool isKnown = row.isSure && leaf.isSure;
  if (!shape.hasRoomFor(row)) return {};
  if (isKnown && image_.hasChecksums()) return Trust::Sure;
  if (!leaf.keys.holds(row.key) || row.key <= previous) return {};
  const Word said = word(table, row);
  if (isKnown) return said != Word::Denied && cleanTexts(row) ? Trust::Sure : Trust::Doubtful;
  if (said == Word::Denied || !shape.fits(row) || !cleanTexts(row)) return {};
  return row.isSure && said == Word::Confirmed ? Trust::Sure : Trust::Doubtful;
}

void Salvage::readLeaf(int table, const PageTree::Leaf& leaf) {
  FoundTable& found = tables_[static_cast<std::size_t>(table)];
  qint64 previous = leaf.keys.above;
  for (const int cell : reader_.cells(leaf.page)) {
    auto row = reader_.row(leaf.page, cell);
    if (!row) continue;
    const auto trust = trustIn(table, leaf, previous, *row);
    if (!trust) continue;
    previous = row->key;
    found.rows.push_back({row->key, leaf.page, cell, *trust});
  }
}

const Salvage::Entries& Salvage::entries(std::size_t index) const {
  const auto known = entries_.constFind(index);
  if (known != entries_.constEnd()) return *known;
  Entries& entries = entries_[index];
  const PageTree& tree = indexes_[index];
  const auto read = [&](qint64 page) {
    for (const int cell : reader_.cells(page)) {
      auto entry = reader_.row(page, cell);
      if (entry && isEntry(*entry, shape_.indexes[index])) {
        const qint64 key = entry->values.back().integer;
        entries[key] = std::move(entry->values);
      }
    }
  };
  for (const qint64 page : tree.interior) read(page);
  for (const PageTree::Leaf& leaf : tree.leaves) read(leaf.page);
  return entries;
}

// What the indexes that are whole say of a row.
Salvage::Word Salvage::word(int table, const StoredRow& row) const {
  Word said = Word::Unknown;
  for (std::size_t i = 0; i < indexes_.size(); ++i) {
    const IndexShape& index = shape_.indexes[i];
    if (index.table != table || !indexes_[i].isWhole()) continue;
    const auto entry = entries(i).constFind(row.key);
    if (entry == entries(i).constEnd()) return Word::Denied;
    for (std::size_t column = 0; column < index.columns.size(); ++column) {
      const StoredValue value =
          valueAt(shape_.tables[static_cast<std::size_t>(table)], row, index.columns[column]);
      if (!isSame(value, (*entry)[column])) return Word::Denied;
    }
    said = Word::Confirmed;
  }
  return said;
}

void Salvage::close(int table) {
  FoundTable& found = tables_[static_cast<std::size_t>(table)];
  std::sort(found.rows.begin(), found.rows.end(), [](const FoundRow& a, const FoundRow& b) {
    return std::pair(a.key, a.trust) < std::pair(b.key, b.trust);
  });
  const auto isSameKey = [](const FoundRow& a, const FoundRow& b) { return a.key == b.key; };
  found.rows.erase(std::unique(found.rows.begin(), found.rows.end(), isSameKey), found.rows.end());
  if (!found.gaps.empty()) fillGaps(table);
}

// The rows that are missing, as the indexes know them: put together where these hold every column.
void Salvage::fillGaps(int table) {
  FoundTable& found = tables_[static_cast<std::size_t>(table)];
  QHash<qint64, StoredRow> missing;
  std::vector<bool> covered(found.shape.columns.size());
  if (found.shape.keyColumn >= 0) covered[static_cast<std::size_t>(found.shape.keyColumn)] = true;
  found.isLostKnown = false;
  for (std::size_t i = 0; i < indexes_.size(); ++i) {
    const IndexShape& index = shape_.indexes[i];
    if (index.table != table || !indexes_[i].isWhole()) continue;
    found.isLostKnown = true;
    for (const int column : index.columns)
      covered[static_cast<std::size_t>(std::max(column, 0))] = true;
    for (auto entry = entries(i).constBegin(); entry != entries(i).constEnd(); ++entry) {
      const auto place =
          std::lower_bound(found.rows.begin(), found.rows.end(), entry.key(),
                           [](const FoundRow& row, qint64 key) { return row.key < key; });
      if (place != found.rows.end() && place->key == entry.key()) continue;
      if (!isIn(found.gaps, entry.key())) continue;
      StoredRow& row = missing[entry.key()];
      row.key = entry.key();
      row.values.resize(found.shape.columns.size());
      for (std::size_t column = 0; column < index.columns.size(); ++column) {
        if (index.columns[column] == found.shape.keyColumn || index.columns[column] < 0) continue;
        row.values[static_cast<std::size_t>(index.columns[column])] = entry.value()[column];
      }
    }
  }
  const bool isAll = std::all_of(covered.begin(), covered.end(), [](bool known) { return known; });
  std::vector<StoredRow>& rows = isAll ? found.restored : found.lost;
  for (StoredRow& row : missing) rows.push_back(std::move(row));
  std::sort(rows.begin(), rows.end(),
            [](const StoredRow& a, const StoredRow& b) { return a.key < b.key; });
}

StoredRow Salvage::row(const FoundTable&, const FoundRow& found) const {
  StoredRow row = reader_.row(found.page, found.cell).value_or(StoredRow{});
  if (!row.isSure) cleanTexts(row);
  return row;
}

}  // namespace store
