#include "store/jet_library.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include "store/failure.h"

namespace store {
namespace {

constexpr int kOffset = 0x1fff;
constexpr int kPointer = 0x4000;
constexpr int kDeleted = 0x8000;
constexpr int kMemoHead = 12;
constexpr quint32 kInRow = 0x80000000;
constexpr quint32 kOnePiece = 0x40000000;
constexpr quint32 kMemoSize = 0x00ffffff;

int shortAt(const QByteArray& bytes, int at) {
  return qFromLittleEndian<quint16>(bytes.constData() + at);
}

}  // namespace

JetLibrary::JetLibrary(const QString& path) : size_(QFileInfo(path).size()) {
  // They would turn texts into another set of letters.
  qunsetenv("MDBICONV");
  qunsetenv("MDB_JET3_CHARSET");
  handle_ = mdb_open(QFile::encodeName(path).constData(), MDB_NOFLAGS);
  if (handle_ == nullptr) {
    throw Failure(failure::kCannotOpen, QStringLiteral("Impossibile aprire il file %1").arg(path));
  }
  readLetters();
}

JetLibrary::~JetLibrary() {
  if (handle_ != nullptr) mdb_close(handle_);
}

// What the code page leaves free is a control character, as the original platform has it.
void JetLibrary::readLetters() {
  if (!isJet3()) return;
  for (std::size_t code = 0; code < letters_.size(); ++code) {
    const char byte = static_cast<char>(code);
    std::array<char, 8> out = {};
    const int size = mdb_unicode2ascii(handle_, &byte, 1, out.data(), out.size());
    const QString letter = QString::fromUtf8(out.data(), qMax(0, size));
    const bool isUnknown = letter.size() != 1 || (letter[0] == u'?' && byte != '?');
    letters_[code] = isUnknown ? QChar(static_cast<ushort>(code)) : letter[0];
  }
}

std::optional<JetPage> JetLibrary::page(quint32 number) const {
  const qint64 length = handle_->fmt->pg_size;
  const qint64 begin = number * length;
  if (begin >= size_ || mdb_read_pg(handle_, number) == 0) return std::nullopt;
  return JetPage{number, QByteArray(reinterpret_cast<const char*>(handle_->pg_buf), length),
                 static_cast<int>(qMin(length, size_ - begin))};
}

int JetLibrary::rowsIn(const JetPage& page) const {
  const int first = handle_->fmt->row_count_offset + 2;
  const int most = (page.available - first) / 2;
  return most <= 0 ? 0 : qMin(most, shortAt(page.bytes, first - 2));
}

std::optional<JetPlace> JetLibrary::place(const JetPage& page, int row) const {
  const int at = handle_->fmt->row_count_offset + 2 + 2 * row;
  if (row >= rowsIn(page)) return std::nullopt;
  const int entry = shortAt(page.bytes, at);
  const int start = entry & kOffset;
  const int end =
      row == 0 ? static_cast<int>(page.bytes.size()) : shortAt(page.bytes, at - 2) & kOffset;
  const bool isSound = start > at + 1 && start <= end && end <= page.available;
  if (!isSound) return std::nullopt;
  return JetPlace{start, end - start, (entry & kDeleted) != 0, (entry & kPointer) != 0};
}

QString JetLibrary::text(const char* bytes, int size) const {
  QString text;
  if (isJet3()) {
    for (int i = 0; i < size; ++i) text += letters_[static_cast<quint8>(bytes[i])];
    return text;
  }
  bool isNarrow =
      size >= 2 && static_cast<quint8>(bytes[0]) == 0xff && static_cast<quint8>(bytes[1]) == 0xfe;
  const bool isMixed = isNarrow;
  text.reserve(size);
  for (int i = isMixed ? 2 : 0; i < size;) {
    if (isNarrow || (isMixed && bytes[i] == 0 && i + 1 == size)) {
      if (bytes[i] == 0) {
        isNarrow = !isNarrow;
      } else {
        text += QChar(static_cast<quint8>(bytes[i]));
      }
      ++i;
      continue;
    }
    if (i + 1 >= size) break;
    // In a stretch of two bytes a letter, none of them is 0.
    if (isMixed && bytes[i] == 0) {
      isNarrow = true;
      ++i;
      continue;
    }
    text += QChar(qFromLittleEndian<quint16>(bytes + i));
    i += 2;
  }
  return text;
}

std::optional<QByteArray> JetLibrary::piece(quint32 pointer) const {
  const std::optional<JetPage> found = page(pointer >> 8);
  if (!found || found->bytes[0] != MDB_PAGE_DATA || found->bytes.mid(4, 4) != "LVAL") {
    return std::nullopt;
  }
  const std::optional<JetPlace> row = place(*found, static_cast<int>(pointer & 0xff));
  if (!row || row->isDeleted) return std::nullopt;
  return found->bytes.mid(row->start, row->size);
}

std::optional<QByteArray> JetLibrary::longValue(const char* head, int size) const {
  if (size < kMemoHead) return std::nullopt;
  const auto flags = qFromLittleEndian<quint32>(head);
  const auto length = static_cast<qsizetype>(flags & kMemoSize);
  auto next = qFromLittleEndian<quint32>(head + 4);
  if ((flags & kInRow) != 0) return QByteArray(head + kMemoHead, size - kMemoHead);
  if ((flags & kOnePiece) != 0) return piece(next);
  QByteArray value;
  while (next != 0 && value.size() < length) {
    const std::optional<QByteArray> part = piece(next);
    // A piece without content would lead round and round.
    if (!part || part->size() <= 4) return std::nullopt;
    next = qFromLittleEndian<quint32>(part->constData());
    value += part->mid(4);
  }
  if (value.size() < length) return std::nullopt;
  return value.left(length);
}

}  // namespace store
