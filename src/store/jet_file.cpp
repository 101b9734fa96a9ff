#include "store/jet_file.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>

#include "store/failure.h"
#include "store/jet_library.h"

namespace store {
namespace {

constexpr quint32 kCatalogPage = 2;
constexpr quint32 kPageBits = 0x00ffffff;
constexpr int kUserTable = 1;
constexpr quint32 kSystemFlags = 0x80000002;
constexpr unsigned kMostColumns = 255;
constexpr const char* kSignature = "Standard Jet DB";

[[noreturn]] void damaged() {
  throw Failure(failure::kDamaged,
                QStringLiteral("Il file e' danneggiato: le sue tabelle non si leggono"));
}

JetKind kindOf(int type) {
  switch (type) {
    case MDB_BOOL:
      return JetKind::YesNo;
    case MDB_BYTE:
    case MDB_INT:
    case MDB_LONGINT:
    case MDB_FLOAT:
    case MDB_DOUBLE:
      return JetKind::Number;
    case MDB_MONEY:
      return JetKind::Money;
    case MDB_DATETIME:
      return JetKind::Date;
    case MDB_TEXT:
    case MDB_MEMO:
      return JetKind::Text;
    default:
      return JetKind::Unknown;
  }
}

// Bytes of a value of fixed size.
int widthOf(int type) {
  switch (type) {
    case MDB_BYTE:
      return 1;
    case MDB_INT:
      return 2;
    case MDB_LONGINT:
    case MDB_FLOAT:
      return 4;
    case MDB_MONEY:
    case MDB_DOUBLE:
    case MDB_DATETIME:
      return 8;
    default:
      return 0;
  }
}

double realOf(const char* bytes) {
  return std::bit_cast<double>(qFromLittleEndian<quint64>(bytes));
}

// The part of the day runs forwards from midnight, before day 0 too.
double dayOf(double stored) {
  const double day = std::trunc(stored);
  return day < 0 ? day + (day - stored) : stored;
}

// The number that reads like it: 0.1 stays 0.1.
double widened(float number) {
  std::array<char, 32> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
  double wide = number;
  std::from_chars(text.data(), end, wide);
  return wide;
}

QVariant numberOf(int type, const char* bytes) {
  switch (type) {
    case MDB_BYTE:
      return qlonglong{static_cast<quint8>(*bytes)};
    case MDB_INT:
      return qlonglong{qFromLittleEndian<qint16>(bytes)};
    case MDB_LONGINT:
      return qlonglong{qFromLittleEndian<qint32>(bytes)};
    case MDB_MONEY:
      return qlonglong{qFromLittleEndian<qint64>(bytes)};
    case MDB_FLOAT:
      return widened(std::bit_cast<float>(qFromLittleEndian<quint32>(bytes)));
    case MDB_DATETIME:
      return dayOf(realOf(bytes));
    default:
      return realOf(bytes);
  }
}

}  // namespace

// The library's own view of the table, and the row that is being read.
struct JetTable::Work {
  MdbCatalogEntry entry = {};
  MdbTableDef* table = nullptr;
  std::vector<MdbField> fields = std::vector<MdbField>(MDB_MAX_COLS + 1);
  JetPage page;  // that the rows are counted in
  int rows = 0;  // in that page
  int row = 0;   // the next one
  JetPage home;  // where the current row itself lies
  JetPlace place;

  ~Work() {
    if (table != nullptr) mdb_free_tabledef(table);
  }
  const MdbColumn& column(int number) const {
    return *static_cast<const MdbColumn*>(g_ptr_array_index(table->columns, number));
  }
};

JetTable::JetTable(std::shared_ptr<JetLibrary> library, quint32 page)
    : library_(std::move(library)), work_(std::make_unique<Work>()) {
  work_->entry.mdb = library_->handle();
  work_->entry.object_type = MDB_TABLE;
  work_->entry.table_pg = page;
  if (!library_->page(page)) damaged();
  work_->table = mdb_read_table(&work_->entry);
  if (work_->table == nullptr || work_->table->num_cols > kMostColumns) damaged();
  // The library takes the head of the map of pages for granted.
  constexpr std::size_t kMapHead = 5;
  if (work_->table->map_sz < kMapHead) damaged();
  if (mdb_read_columns(work_->table) == nullptr) damaged();
  if (work_->table->columns->len != work_->table->num_cols) damaged();
  for (unsigned i = 0; i < work_->table->num_cols; ++i) {
    const MdbColumn& column = work_->column(static_cast<int>(i));
    columns_.append({QString::fromUtf8(column.name), kindOf(column.col_type)});
  }
  values_.resize(static_cast<std::size_t>(columns_.size()));
  lost_.resize(values_.size());
}

JetTable::~JetTable() = default;

int JetTable::findColumn(const QString& name) const {
  for (int i = 0; i < columns_.size(); ++i) {
    if (columns_[i].name.compare(name, Qt::CaseInsensitive) == 0) return i;
  }
  return -1;
}

qint64 JetTable::rowsTold() const {
  return work_->table->num_rows;
}

QVariant JetTable::value(const QString& name) const {
  const int column = findColumn(name);
  return column < 0 ? QVariant() : value(column);
}

bool JetTable::nextPage() {
  if (mdb_read_next_dpg(work_->table) == 0) return false;
  const std::optional<JetPage> page = library_->page(library_->handle()->cur_pg);
  if (!page) return false;
  work_->page = *page;
  work_->rows = library_->rowsIn(*page);
  work_->row = 0;
  return true;
}

bool JetTable::next() {
  for (;;) {
    while (work_->row < work_->rows) {
      if (readRow(work_->row++)) return true;
    }
    if (!nextPage()) return false;
  }
}

bool JetTable::readRow(int row) {
  std::optional<JetPlace> place = library_->place(work_->page, row);
  if (!place || place->isDeleted) return false;
  work_->home = work_->page;
  if (place->isPointer) {
    if (place->size < 4) return false;
    const auto pointer = qFromLittleEndian<quint32>(work_->page.bytes.constData() + place->start);
    const std::optional<JetPage> home = library_->page(pointer >> 8);
    if (!home || home->bytes[0] != MDB_PAGE_DATA) return false;
    if (qFromLittleEndian<quint32>(home->bytes.constData() + 4) != work_->entry.table_pg) {
      return false;
    }
    place = library_->place(*home, static_cast<int>(pointer & 0xff));
    if (!place) return false;
    work_->home = *home;
  }
  constexpr int kLeast = 4;
  if (place->size < kLeast) return false;
  work_->place = *place;
  MdbHandle* handle = library_->handle();
  // As if it had read the page just now: it does not read its current one again.
  std::copy(work_->home.bytes.begin(), work_->home.bytes.end(),
            reinterpret_cast<char*>(handle->pg_buf));
  handle->cur_pg = work_->home.number;
  if (mdb_crack_row(work_->table, place->start, static_cast<std::size_t>(place->size),
                    work_->fields.data()) == 0) {
    return false;
  }
  for (int i = 0; i < columns_.size(); ++i) readField(i);
  return true;
}

void JetTable::readField(int column) {
  const auto at = static_cast<std::size_t>(column);
  const MdbField& field = work_->fields[at];
  const int type = work_->column(column).col_type;
  values_[at] = {};
  lost_[at] = false;
  if (type == MDB_BOOL) values_[at] = field.is_null != 0 ? 0LL : -1LL;
  if (type == MDB_BOOL || field.is_null != 0 || columns_[column].kind == JetKind::Unknown) return;
  const JetPlace& row = work_->place;
  const bool isInside = field.start >= row.start && field.siz >= widthOf(type) &&
                        field.siz <= row.size && field.start <= row.start + row.size - field.siz;
  lost_[at] = !isInside;
  if (!isInside) return;
  const char* bytes = work_->home.bytes.constData() + field.start;
  if (type == MDB_TEXT) {
    values_[at] = library_->text(bytes, field.siz);
  } else if (type == MDB_MEMO) {
    const std::optional<QByteArray> content = library_->longValue(bytes, field.siz);
    lost_[at] = !content;
    if (content) {
      values_[at] = library_->text(content->constData(), static_cast<int>(content->size()));
    }
  } else {
    values_[at] = numberOf(type, bytes);
  }
}

bool JetFile::isJet(const QString& path) {
  QFile file(path);
  return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) &&
         file.read(32).mid(4).startsWith(kSignature);
}

JetFile::JetFile(const QString& path) {
  if (!QFileInfo(path).isFile()) {
    throw Failure(failure::kFileNotFound, QStringLiteral("File %1 non trovato").arg(path));
  }
  if (!isJet(path)) {
    throw Failure(failure::kUnknownFormat,
                  QStringLiteral("Il file %1 non e' un archivio riconosciuto").arg(path));
  }
  library_ = std::make_shared<JetLibrary>(path);
  readCatalog();
}

void JetFile::readCatalog() {
  JetTable catalog(library_, kCatalogPage);
  while (catalog.next()) {
    const int type = catalog.value(QStringLiteral("Type")).toInt() & 0x7f;
    const auto flags = static_cast<quint32>(catalog.value(QStringLiteral("Flags")).toLongLong());
    const QString name = catalog.value(QStringLiteral("Name")).toString();
    if (type != kUserTable || (flags & kSystemFlags) != 0 || name.isEmpty()) continue;
    names_.append(name);
    pages_.insert(
        name.toUpper(),
        static_cast<quint32>(catalog.value(QStringLiteral("Id")).toLongLong()) & kPageBits);
  }
}

std::unique_ptr<JetTable> JetFile::open(const QString& table) const {
  if (!has(table)) {
    throw Failure(failure::kTableNotFound, QStringLiteral("Tabella %1 inesistente").arg(table));
  }
  return std::make_unique<JetTable>(library_, pages_.value(table.toUpper()));
}

}  // namespace store
