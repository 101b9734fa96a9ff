#pragma once

#include <QVariant>
#include <memory>

#include "store/failure.h"
#include "store/field_info.h"
#include "store/recordset_signals.h"

namespace store {

enum class RecordsetType { Table = 1, Dynaset = 2, Snapshot = 4 };
enum class EditMode { None, Edit, Add };

class Cursor;

// An open set of rows with one current row. Every operation that cannot be carried out throws
// Failure; the set and its current row are then as before.
class Recordset final : public RecordsetSignals {
 public:
  // The clones of a database's recordsets: they close with it.
  using Clones = std::shared_ptr<QVector<std::weak_ptr<Recordset>>>;
  // Made by Database::OpenRecordset and Clone only.
  Recordset(RecordsetType type, std::shared_ptr<Cursor> cursor, Clones clones);
  ~Recordset() override;

  RecordsetType Type() const { return type_; }
  bool Updatable() const;
  bool IsOpen() const;
  void Close();

  // Number of rows; for every type exact at any time.
  qint64 RecordCount() const;
  bool Bof() const;
  bool Eof() const;
  bool NoMatch() const { return noMatch_; }

  // What every move begins with: those who show the current row write what is pending, and an edit
  // that nobody finished is given up. Fails with kTold where one of them cannot; the row stays.
  void Leave();
  void MoveFirst();
  void MoveLast();
  void MoveNext();
  void MovePrevious();
  void Move(qint64 rows);
  // Place of the current row from 0, -1 if there is none. Not for table recordsets.
  qint64 AbsolutePosition() const;
  void SetAbsolutePosition(qint64 position);

  // A row's identity: survives moves, sorting and Requery, fails once the row is gone.
  QByteArray Bookmark() const;
  void SetBookmark(const QByteArray& bookmark);
  QByteArray LastModified() const { return lastModified_; }
  // A second cursor, before the first of the same rows; they come and go for all such cursors.
  std::shared_ptr<Recordset> Clone() const;

  const QVector<FieldInfo>& Fields() const;
  // Place of a field by name or "table.column", without case; else -1, or failure 3265.
  int FindField(const QString& name) const;
  int FieldIndex(const QString& name) const;
  QVariant Value(const QString& name) const { return Value(FieldIndex(name)); }
  QVariant Value(int field) const;
  void SetValue(const QString& name, const QVariant& value) { SetValue(FieldIndex(name), value); }
  // Sets a field of the row being edited; converts to the column's kind or fails with 3421 (of
  // another kind), 6 (out of range), 3163 (text too long). 3164: the field cannot be written.
  void SetValue(int field, const QVariant& value);
  // A value of any row, without moving; Null where the row has gone. Not for table recordsets.
  QVariant ValueAt(qint64 position, int field) const;
  // The fields that ValueAt will be asked for: rows are read with just these.
  void ExpectFields(const QVector<int>& fields);

  EditMode Mode() const { return mode_; }
  void AddNew();
  void Edit();
  // Writes the edited row: only the columns that were set, in one transaction. Fails with 3020
  // (no AddNew or Edit before), 3022 (duplicate key), 3167 (row deleted); the row stays in edit.
  void Update();
  void CancelUpdate();
  void Delete();

  // Table recordsets: the current index by name, and a search by up to all its columns with
  // "=", ">=", "<=", ">" or "<"; Null comes first. Without a hit NoMatch is set and the row stays.
  void SetIndex(const QString& name);
  QString Index() const;
  void Seek(const QString& comparison, const QVariantList& keys);

  // Dynasets and snapshots: searches by a condition in the syntax of a WHERE clause. Without a
  // hit NoMatch is set and the current row stays.
  void FindFirst(const QString& condition);
  void FindLast(const QString& condition);
  void FindNext(const QString& condition);
  void FindPrevious(const QString& condition);
  // The first row whose field, as a list shows it, begins with a text; letters as Like has them.
  void FindBeginning(int field, const QString& text);

  // Runs the query again; the first row becomes current. Clones keep the rows they know.
  void Requery();
  // Reads the current row again, and tells those who show it; 3167 if it is gone.
  void RefreshRow();

 private:
  enum class Search { First, Last, Next, Previous };
  void arrive(qint64 from);
  void find(Search search, const QString& condition);
  void requireOpen() const;
  void requireUpdatable() const;
  void requireCurrent() const;
  void writeNew();
  void writeChanges();
  void requireField(int field) const;

  RecordsetType type_;
  std::shared_ptr<Cursor> cursor_;
  Clones clones_;
  EditMode mode_ = EditMode::None;
  bool noMatch_ = false;
  QByteArray lastModified_;
  QVector<QVariant> edited_;
  QVector<bool> touched_;
};

using RecordsetPtr = std::shared_ptr<Recordset>;

}  // namespace store
