#include "store/key_table.h"

#include <sqlite3.h>

#include <algorithm>
#include <limits>

namespace store {
namespace {

enum Way { kWhole, kByFirst };
enum Column { kFirst, kSecond };

struct Table {
  sqlite3_vtab base;
  KeyTable* keys;
};

struct Cursor {
  sqlite3_vtab_cursor base;
  Way way;
  qint64 at;   // place, or where in the sorted keys
  qint64 end;  // behind the last
};

KeyTable& keysOf(sqlite3_vtab_cursor* cursor) {
  return *reinterpret_cast<Table*>(cursor->pVtab)->keys;
}

int connect(sqlite3* handle, void* keys, int, const char* const*, sqlite3_vtab** made, char**) {
  const int code =
      sqlite3_declare_vtab(handle, "CREATE TABLE tvx_rows (first INTEGER, second INTEGER)");
  if (code != SQLITE_OK) return code;
  // An archive's own schema must not reach it.
  sqlite3_vtab_config(handle, SQLITE_VTAB_DIRECTONLY);
  auto* table = new Table{{}, static_cast<KeyTable*>(keys)};
  *made = &table->base;
  return SQLITE_OK;
}

int disconnect(sqlite3_vtab* table) {
  delete reinterpret_cast<Table*>(table);
  return SQLITE_OK;
}

int chooseWay(sqlite3_vtab* table, sqlite3_index_info* info) {
  const qint64 count = reinterpret_cast<Table*>(table)->keys->count();
  info->idxNum = kWhole;
  info->estimatedRows = count;
  info->estimatedCost = static_cast<double>(count);
  for (int i = 0; i < info->nConstraint; ++i) {
    const auto& constraint = info->aConstraint[i];
    if (constraint.usable == 0 || constraint.iColumn != kFirst ||
        constraint.op != SQLITE_INDEX_CONSTRAINT_EQ) {
      continue;
    }
    info->idxNum = kByFirst;
    info->aConstraintUsage[i].argvIndex = 1;
    info->estimatedRows = 1;
    info->estimatedCost = 2;
    break;
  }
  return SQLITE_OK;
}

int open(sqlite3_vtab*, sqlite3_vtab_cursor** made) {
  auto* cursor = new Cursor{};
  *made = &cursor->base;
  return SQLITE_OK;
}

int close(sqlite3_vtab_cursor* cursor) {
  delete reinterpret_cast<Cursor*>(cursor);
  return SQLITE_OK;
}

int filter(sqlite3_vtab_cursor* base, int way, const char*, int, sqlite3_value** values) {
  auto& cursor = *reinterpret_cast<Cursor*>(base);
  cursor.way = static_cast<Way>(way);
  cursor.at = 0;
  cursor.end = keysOf(base).count();
  if (cursor.way == kWhole) return SQLITE_OK;
  const qint64 first = sqlite3_value_int64(values[0]);
  const KeyTable::Places& sorted = keysOf(base).sorted();
  const quint64 least = static_cast<quint64>(static_cast<quint32>(first)) << 32;
  const auto begin = std::lower_bound(sorted.begin(), sorted.end(), std::pair(least, qint64{0}));
  const auto end = std::find_if(
      begin, sorted.end(), [first](const auto& entry) { return firstKey(entry.first) != first; });
  cursor.at = begin - sorted.begin();
  cursor.end = end - sorted.begin();
  return SQLITE_OK;
}

int next(sqlite3_vtab_cursor* base) {
  ++reinterpret_cast<Cursor*>(base)->at;
  return SQLITE_OK;
}

int eof(sqlite3_vtab_cursor* base) {
  const auto& cursor = *reinterpret_cast<Cursor*>(base);
  return cursor.at >= cursor.end ? 1 : 0;
}

qint64 placeOf(sqlite3_vtab_cursor* base) {
  const auto& cursor = *reinterpret_cast<Cursor*>(base);
  if (cursor.way == kWhole) return cursor.at;
  return keysOf(base).sorted()[static_cast<std::size_t>(cursor.at)].second;
}

int column(sqlite3_vtab_cursor* base, sqlite3_context* context, int which) {
  const quint64 key = keysOf(base).keyAt(placeOf(base));
  sqlite3_result_int64(context, which == kFirst ? firstKey(key) : secondKey(key));
  return SQLITE_OK;
}

int rowid(sqlite3_vtab_cursor* base, sqlite3_int64* number) {
  *number = placeOf(base);
  return SQLITE_OK;
}

// Without xCreate it is there under the module's name, and no archive can hold one.
const sqlite3_module& module() {
  static const sqlite3_module methods = [] {
    sqlite3_module made{};
    made.xConnect = connect;
    made.xBestIndex = chooseWay;
    made.xDisconnect = disconnect;
    made.xOpen = open;
    made.xClose = close;
    made.xFilter = filter;
    made.xNext = next;
    made.xEof = eof;
    made.xColumn = column;
    made.xRowid = rowid;
    return made;
  }();
  return methods;
}

}  // namespace

void KeyTable::addTo(sqlite3* handle) {
  sqlite3_create_module_v2(handle, "tvx_rows", &module(), this, nullptr);
}

void KeyTable::show(const std::vector<quint64>& keys) {
  keys_ = &keys;
  sorted_.clear();
}

const KeyTable::Places& KeyTable::sorted() {
  if (sorted_.empty() && count() > 0) {
    sorted_.reserve(keys_->size());
    for (qint64 place = 0; place < count(); ++place) sorted_.emplace_back(keyAt(place), place);
    if (!std::is_sorted(sorted_.begin(), sorted_.end())) std::sort(sorted_.begin(), sorted_.end());
  }
  return sorted_;
}

qint64 firstKey(quint64 key) {
  return static_cast<qint32>(key >> 32);
}

qint64 secondKey(quint64 key) {
  return static_cast<qint32>(key & 0xffffffffU);
}

}  // namespace store
