#pragma once

#include <QByteArray>
#include <optional>
#include <vector>

#include "store/page_image.h"

namespace store {

// Reads the engine's pages as they are, without the tree above them, and whatever bytes they hold.
// The format: https://www.sqlite.org/fileformat2.html#b_tree_pages

enum class PageKind : quint8 {
  IndexInterior = 2,
  TableInterior = 5,
  IndexLeaf = 10,
  TableLeaf = 13
};

struct StoredValue {
  enum class Kind : quint8 { Null, Integer, Real, Text, Blob };
  Kind kind = Kind::Null;
  qint64 integer = 0;
  double real = 0;
  QByteArray bytes;

  bool isNumber() const { return kind == Kind::Integer || kind == Kind::Real; }
  double number() const { return kind == Kind::Integer ? static_cast<double>(integer) : real; }
};
using StoredValues = std::vector<StoredValue>;

struct StoredRow {
  qint64 key = 0;
  StoredValues values;
  bool isSure = true;  // every page that holds some of it proves itself
  bool isCut = false;  // the last texts are not whole
};

// A reference of a page to one below it, and the largest key there.
struct Child {
  qint64 page = 0;
  std::optional<qint64> last;  // none for the last child
};

class PageReader final {
 public:
  explicit PageReader(const PageImage& image) : image_(image) {}

  // None for a page that is not one of the four kinds, or has no room for what it says.
  std::optional<PageKind> kind(qint64 page) const;
  // Places of the cells that lie within the page.
  std::vector<int> cells(qint64 page) const;
  // Of an interior page.
  std::vector<Child> children(qint64 page) const;
  // The row in a cell of a table's leaf, or the entry in one of an index. None for what is none.
  std::optional<StoredRow> row(qint64 page, int cell) const;
  // Its key alone.
  std::optional<qint64> key(qint64 page, int cell) const;

 private:
  struct Bytes {
    QByteArray data;
    bool isSure = true;
    bool isCut = false;
  };

  std::optional<Bytes> payload(qint64 page, int at, qint64 size, bool isTable) const;
  void follow(Bytes& bytes, quint32 next, qint64 size) const;
  void toUtf8(StoredRow& row) const;
  static bool decode(const Bytes& bytes, qint64 size, StoredRow& row);

  const PageImage& image_;
};

}  // namespace store
