#pragma once

#include <QByteArray>
#include <QStringList>
#include <memory>

#include "store/recordset.h"

namespace store {

class Connection;

struct TableColumn {
  QString table;
  QString column;
};

// A column that holds keys; with `fixed`, of the rows that have a value in that column.
struct KeyColumn {
  QString table;
  QString column;
  QString fixed;
  QVariant value;
};

// A handle on an open archive. Handles on one file share the connection of the process; each
// has its own recordsets. All operations throw Failure.
class Database final : public std::enable_shared_from_this<Database> {
 public:
  explicit Database(std::shared_ptr<Connection> connection);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  QString Name() const;
  bool IsOpen() const { return connection_ != nullptr; }
  // The new name of a journal that lay beside the file when it was opened and was not the file's
  // own (see setAsideForeignJournal); else empty.
  QString JournalSetAside() const;
  // Closes all recordsets of this handle and their clones, then the handle.
  void Close();

  // `source` is a table, a stored query or SQL text; a table recordset takes a table only.
  // Fails with 3078 (no such table or query), 3061 (no such column), 3075 (syntax), 3360 (too
  // complex).
  RecordsetPtr OpenRecordset(const QString& source, RecordsetType type);
  // The open recordsets of this handle, oldest first; without their clones.
  QVector<RecordsetPtr> Recordsets() const;

  // Stores a SELECT or an UPDATE under a name. Fails with 3012 (name taken), 3075 (syntax).
  void CreateQueryDef(const QString& name, const QString& sql);
  // These fail with 3265 for an unknown name.
  void DeleteQueryDef(const QString& name);
  QStringList QueryDefs() const;
  QString QueryDefSql(const QString& name) const;
  // Runs an action query by name, in one transaction.
  void Execute(const QString& query);

  // Several writes as one: all of them reach the file at CommitTrans, or none. Calls nest. Without
  // a BeginTrans, CommitTrans fails with 3034 and Rollback does nothing. Close rolls back.
  void BeginTrans();
  void CommitTrans();
  void Rollback();

  // Adds the columns that the archive's tables lack, all or none, as the schema (statements in
  // SQLite's own language) declares them. To be called before recordsets are opened on the tables.
  // Fails, with a description that names the columns, where one cannot be added.
  void AddMissingColumns(const QVector<TableColumn>& wanted, const QByteArray& schema);
  // Sees to it that a counter's first row is there and holds a number that no key is above.
  void RaiseCounter(const TableColumn& counter, const QVector<KeyColumn>& keys);

  // The SQLite text a source is translated to, for diagnosis.
  QString ExplainSql(const QString& source) const;
  // True if the file passes the engine's full check.
  bool IntegrityCheck() const;

 private:
  Connection& connection() const;
  int write(const QByteArray& statement, const QVariantList& values);

  std::shared_ptr<Connection> connection_;
  mutable QVector<std::weak_ptr<Recordset>> recordsets_;
  Recordset::Clones clones_;
  int transactions_ = 0;
};

using DatabasePtr = std::shared_ptr<Database>;

// Scope of a transaction: rolled back unless committed.
class Transaction final {
 public:
  explicit Transaction(Database& database) : database_(database) { database_.BeginTrans(); }
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  void Commit();

 private:
  Database& database_;
  bool done_ = false;
};

// Opens the archive at a path of the system, for reading and writing.
// Fails with 3024 (no such file), 3343 (no archive of this program), 3049 (damaged),
// 3051 (not allowed), 3260 (locked by another program, or in a mode that cannot be left).
DatabasePtr OpenDatabase(const QString& path);
// Closes every database of the process with its recordsets.
void CloseWorkspace();
// Makes a new archive file from schema statements in SQLite's own language (for the builder).
DatabasePtr CreateDatabase(const QString& path, const QByteArray& schema);

}  // namespace store
