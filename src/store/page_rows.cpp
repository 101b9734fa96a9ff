#include "store/page_rows.h"

#include <QStringDecoder>
#include <QtEndian>
#include <algorithm>
#include <bit>

namespace store {
namespace {

constexpr int kFirstHeader = 100;  // before the header of page 1
constexpr int kLeafHeader = 8;
constexpr int kInteriorHeader = 12;
constexpr int kNumberBytes = 4;
constexpr qint64 kLongestRow = 1 << 26;
constexpr qint64 kMostColumns = 2000;

int headerAt(qint64 page) {
  return page == 1 ? kFirstHeader : 0;
}
bool isInterior(PageKind kind) {
  return kind == PageKind::TableInterior || kind == PageKind::IndexInterior;
}

// Reads numbers one after the other, up to an end; what goes beyond is told by ok().
class Stream final {
 public:
  Stream(const uchar* from, const uchar* end) : at_(from), end_(end) {}
  bool ok() const { return ok_; }
  qint64 left() const { return end_ - at_; }
  const uchar* at() const { return at_; }

  // One to nine bytes, seven bits in each but the ninth.
  qint64 varint() {
    quint64 number = 0;
    for (int i = 0; i < 9; ++i) {
      const uchar byte = next();
      if (i == 8) return static_cast<qint64>(number << 8 | byte);
      number = number << 7 | (byte & 0x7f);
      if (byte < 0x80) break;
    }
    return static_cast<qint64>(number);
  }
  // Of `size` bytes, with its sign.
  qint64 integer(int size) {
    if (size < 1 || size > 8) return 0;
    quint64 number = 0;
    for (int i = 0; i < size; ++i) number = number << 8 | next();
    const int free = 64 - 8 * size;
    return static_cast<qint64>(number << free) >> free;
  }
  QByteArray bytes(qint64 size) {
    const qint64 some = std::min(size, left());
    QByteArray found(reinterpret_cast<const char*>(at_), some);
    at_ += some;
    return found;
  }

 private:
  uchar next() {
    if (at_ < end_) return *at_++;
    ok_ = false;
    return 0;
  }

  const uchar* at_;
  const uchar* end_;
  bool ok_ = true;
};

// Bytes of a value by its type in a row's header; below 0 for a type that does not exist.
qint64 sizeOf(qint64 type) {
  constexpr qint64 sizes[] = {0, 1, 2, 3, 4, 6, 8, 8, 0, 0, -1, -1};
  if (type < 0) return -1;
  return type < 12 ? sizes[type] : (type - 12) / 2;
}

StoredValue valueOf(qint64 type, Stream& body) {
  StoredValue value;
  using Kind = StoredValue::Kind;
  if (type >= 12) {
    value.kind = type % 2 == 0 ? Kind::Blob : Kind::Text;
    value.bytes = body.bytes(sizeOf(type));
  } else if (type == 7) {
    value.kind = Kind::Real;
    value.real = std::bit_cast<double>(body.integer(8));
  } else if (type != 0) {
    value.kind = Kind::Integer;
    value.integer = type >= 8 ? type - 8 : body.integer(static_cast<int>(sizeOf(type)));
  }
  return value;
}

}  // namespace

std::optional<PageKind> PageReader::kind(qint64 page) const {
  const uchar* const bytes = image_.page(page);
  if (bytes == nullptr) return {};
  const uchar* const header = bytes + headerAt(page);
  const auto kind = static_cast<PageKind>(*header);
  if (kind != PageKind::IndexInterior && kind != PageKind::TableInterior &&
      kind != PageKind::IndexLeaf && kind != PageKind::TableLeaf) {
    return {};
  }
  const qint64 count = qFromBigEndian<quint16>(header + 3);
  const qint64 begin =
      headerAt(page) + (isInterior(kind) ? kInteriorHeader : kLeafHeader) + 2 * count;
  return begin <= image_.usableSize() ? std::optional(kind) : std::nullopt;
}

std::vector<int> PageReader::cells(qint64 page) const {
  const auto found = kind(page);
  if (!found) return {};
  const uchar* const header = image_.page(page) + headerAt(page);
  const int count = qFromBigEndian<quint16>(header + 3);
  const int pointers = isInterior(*found) ? kInteriorHeader : kLeafHeader;
  const int begin = headerAt(page) + pointers + 2 * count;
  std::vector<int> places;
  for (std::ptrdiff_t i = 0; i < count; ++i) {
    const int place = qFromBigEndian<quint16>(header + pointers + 2 * i);
    if (place >= begin && place < image_.usableSize()) places.push_back(place);
  }
  return places;
}

std::vector<Child> PageReader::children(qint64 page) const {
  const auto found = kind(page);
  if (!found || !isInterior(*found)) return {};
  const uchar* const bytes = image_.page(page);
  std::vector<Child> all;
  for (const int cell : cells(page)) {
    Stream stream(bytes + cell, bytes + image_.usableSize());
    Child child;
    child.page = static_cast<quint32>(stream.integer(kNumberBytes));
    if (*found == PageKind::TableInterior) child.last = stream.varint();
    if (stream.ok()) all.push_back(child);
  }
  all.push_back({qFromBigEndian<quint32>(bytes + headerAt(page) + kLeafHeader), {}});
  return all;
}

std::optional<qint64> PageReader::key(qint64 page, int cell) const {
  const uchar* const bytes = image_.page(page);
  Stream stream(bytes + cell, bytes + image_.usableSize());
  stream.varint();
  const qint64 key = stream.varint();
  return stream.ok() ? std::optional(key) : std::nullopt;
}

std::optional<StoredRow> PageReader::row(qint64 page, int cell) const {
  const auto found = kind(page);
  if (!found || *found == PageKind::TableInterior) return {};
  const bool isTable = *found == PageKind::TableLeaf;
  const uchar* const bytes = image_.page(page);
  const int skipped = isInterior(*found) ? kNumberBytes : 0;
  Stream stream(bytes + std::min(cell + skipped, image_.usableSize()), bytes + image_.usableSize());
  const qint64 size = stream.varint();
  StoredRow row;
  if (isTable) row.key = stream.varint();
  if (!stream.ok() || size < 1 || size > kLongestRow) return {};
  const auto content = payload(page, static_cast<int>(stream.at() - bytes), size, isTable);
  if (!content || !decode(*content, size, row)) return {};
  if (image_.encoding() != 1) toUtf8(row);
  return row;
}

void PageReader::toUtf8(StoredRow& row) const {
  QStringDecoder decoder(image_.encoding() == 2 ? QStringDecoder::Utf16LE
                                                : QStringDecoder::Utf16BE);
  for (StoredValue& value : row.values) {
    if (value.kind != StoredValue::Kind::Text) continue;
    const QString text = decoder(value.bytes);
    value.bytes = text.toUtf8();
    decoder.resetState();
  }
}

// How much of a row lies in its cell: see "Cell Payload Overflow Pages" of the format.
std::optional<PageReader::Bytes> PageReader::payload(qint64 page, int at, qint64 size,
                                                     bool isTable) const {
  const qint64 usable = image_.usableSize();
  const qint64 most = isTable ? usable - 35 : (usable - 12) * 64 / 255 - 23;
  const qint64 least = (usable - 12) * 32 / 255 - 23;
  const qint64 even = least + (size - least) % (usable - kNumberBytes);
  const qint64 local = size <= most ? size : even <= most ? even : least;
  const bool overflows = local < size;
  if (at + local + (overflows ? kNumberBytes : 0) > usable) return {};
  const uchar* const from = image_.page(page) + at;
  Bytes bytes{QByteArray(reinterpret_cast<const char*>(from), local), image_.isSure(page), false};
  if (overflows) follow(bytes, qFromBigEndian<quint32>(from + local), size);
  return bytes;
}

// The pages behind, up to the first that is not there or does not lead on as it must. What one of
// them holds that does not prove itself is taken where it can be.
void PageReader::follow(Bytes& bytes, quint32 next, qint64 size) const {
  const qint64 room = image_.usableSize() - kNumberBytes;
  while (bytes.data.size() < size) {
    const uchar* const page = image_.page(next);
    const qint64 left = size - bytes.data.size();
    const quint32 after = page == nullptr ? 0 : qFromBigEndian<quint32>(page);
    const bool leadsOn = left <= room ? after == 0 : after > 1 && after <= image_.count();
    if (page == nullptr || !leadsOn) {
      bytes.isCut = true;
      bytes.isSure = false;
      return;
    }
    if (!image_.isSure(next)) bytes.isSure = false;
    bytes.data.append(reinterpret_cast<const char*>(page) + kNumberBytes, std::min(left, room));
    next = after;
  }
}

// A row's header and body must fill it exactly; only texts at its end may be cut.
bool PageReader::decode(const Bytes& bytes, qint64 size, StoredRow& row) {
  const auto* begin = reinterpret_cast<const uchar*>(bytes.data.constData());
  const uchar* end = begin + bytes.data.size();
  Stream header(begin, end);
  const qint64 length = header.varint();
  if (!header.ok() || length < 1 || length > bytes.data.size() || length > 3 * kMostColumns) {
    return false;
  }
  std::vector<qint64> types;
  qint64 sum = 0;
  while (header.ok() && header.at() < begin + length) {
    types.push_back(header.varint());
    const qint64 some = sizeOf(types.back());
    if (some < 0 || some > size) return false;
    sum += some;
  }
  if (!header.ok() || header.at() != begin + length || length + sum != size) return false;
  Stream body(begin + length, end);
  row.isSure = bytes.isSure;
  for (const qint64 type : types) {
    if (type < 12 && body.left() < sizeOf(type)) return row.isCut = true;
    row.isCut = row.isCut || body.left() < sizeOf(type);
    row.values.push_back(valueOf(type, body));
  }
  return true;
}

}  // namespace store
