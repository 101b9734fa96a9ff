#pragma once

// Before the library's header, which reads it as C.
#include <glib.h>
//
#include <mdbtools.h>

#include <QByteArray>
#include <QString>
#include <array>
#include <optional>

namespace store {

// A page as far as the file has it: what is behind `available` was cut off.
struct JetPage {
  quint32 number = 0;
  QByteArray bytes;
  int available = 0;
};

// Where a row lies in a page.
struct JetPlace {
  int start = 0;
  int size = 0;
  bool isDeleted = false;
  bool isPointer = false;  // to the row, which has moved to another page
};

// An open file of the library, and what the library itself does not get right or safe.
class JetLibrary final {
 public:
  explicit JetLibrary(const QString& path);
  ~JetLibrary();
  JetLibrary(const JetLibrary&) = delete;
  JetLibrary& operator=(const JetLibrary&) = delete;

  MdbHandle* handle() const { return handle_; }
  bool isJet3() const { return handle_->f->jet_version == MDB_VER_JET3; }

  // The page becomes the library's current one; nothing beyond the end of the file.
  std::optional<JetPage> page(quint32 number) const;
  int rowsIn(const JetPage& page) const;
  // A row of a page; nothing if its bounds cannot be right.
  std::optional<JetPlace> place(const JetPage& page, int row) const;

  // A text of the file: of a code page in Jet 3, else of two bytes a letter, with stretches of one.
  QString text(const char* bytes, int size) const;
  // A long text, from the twelve bytes in its row; nothing if a part of it cannot be read.
  std::optional<QByteArray> longValue(const char* head, int size) const;

 private:
  std::optional<QByteArray> piece(quint32 pointer) const;
  void readLetters();

  MdbHandle* handle_ = nullptr;
  qint64 size_ = 0;
  std::array<QChar, 256> letters_;  // of Jet 3
};

}  // namespace store
