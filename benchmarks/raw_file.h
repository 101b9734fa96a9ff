#pragma once

#include <QByteArray>
#include <QString>

struct sqlite3;
struct sqlite3_stmt;

namespace bench {

// The other side of the comparisons: an archive through SQLite's C interface alone, with the
// program's settings of cache, journal and durability. A failure ends the process.
class RawFile final {
 public:
  // What the program is to read behind it is written by the store's file layer.
  explicit RawFile(const QString& path, const char* fileLayer = nullptr);
  ~RawFile();
  RawFile(const RawFile&) = delete;
  RawFile& operator=(const RawFile&) = delete;

  void run(const char* sql);
  sqlite3* handle() const { return handle_; }

 private:
  sqlite3* handle_ = nullptr;
};

class RawStatement final {
 public:
  RawStatement(const RawFile& file, const QByteArray& sql);
  ~RawStatement();
  RawStatement(const RawStatement&) = delete;
  RawStatement& operator=(const RawStatement&) = delete;

  void bind(int place, qint64 value);
  void bind(int place, const QByteArray& value);
  // True on a row, false at the end; the statement is then ready for the next use.
  bool step();
  // For a statement without rows.
  void execute();
  void reset();

  int columns() const;
  const char* name(int column) const;
  qint64 number(int column) const;
  // Null where the column is Null.
  const char* text(int column) const;

 private:
  [[noreturn]] void fail() const;

  sqlite3_stmt* handle_ = nullptr;
};

}  // namespace bench
