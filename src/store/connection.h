#pragma once

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <QHash>
#include <memory>
#include <vector>

#include "store/catalog.h"
#include "store/failure.h"
#include "store/key_cache.h"
#include "store/patience.h"
#include "store/sql_printer.h"

namespace store {

// Steps of the engine that one query may take before it fails with 3360: some twenty seconds, more
// than any list of the program comes near. For tests to lower.
inline qint64 mostSteps = 1'000'000'000;

// Runs work of SQLite and turns its failures into the store's own.
[[noreturn]] void throwFailure(const SQLite::Exception& exception);
template <typename Work>
auto guarded(Work&& work) -> decltype(work()) {
  try {
    return work();
  } catch (const SQLite::Exception& exception) {
    throwFailure(exception);
  }
}

void bindValue(SQLite::Statement& statement, int place, const QVariant& value);
QVariant columnValue(const SQLite::Statement& statement, int column);

// The process's one connection to a file: prepared statements, transactions, and what the file
// says of its tables and stored queries.
class Connection final : public Catalog {
 public:
  Connection(const QString& path, int flags);
  ~Connection() override;

  const QString& path() const { return path_; }
  SQLite::Database& database() { return database_; }
  // Told once, when the file is opened (see Database::JournalSetAside).
  const QString& journalSetAside() const { return journalSetAside_; }
  void setJournalSetAside(const QString& name) { journalSetAside_ = name; }
  // False once the file was moved, replaced or deleted: its path leads elsewhere.
  bool holdsPath() const;

  const TableInfo* table(const QString& name) const override;
  std::optional<QString> querySql(const QString& name) const override;
  void forgetQueries();
  // A table's columns have changed: they are read anew when next asked for.
  void forgetTable(const QString& name);

  // A prepared statement, kept for the next use. It is reset when the lease ends.
  class Lease {
   public:
    explicit Lease(std::shared_ptr<SQLite::Statement> statement)
        : statement_(std::move(statement)) {}
    ~Lease();
    Lease(Lease&&) = default;
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;
    Lease& operator=(Lease&&) = delete;
    SQLite::Statement& operator*() const { return *statement_; }
    SQLite::Statement* operator->() const { return statement_.get(); }

   private:
    std::shared_ptr<SQLite::Statement> statement_;
  };
  Lease prepare(const QByteArray& text) const;
  Lease prepare(const sql::Statement& statement) const;
  // Runs a writing statement; the number of rows it changed.
  int execute(const QByteArray& text, const QVariantList& values = {});
  qint64 lastInsertKey() const;

  // Transactions nest. A commit that fails rolls back what it should have written.
  void begin();
  void commit();
  void rollback();

  // While it lives, all reads see the file at one moment and lock it once.
  class Reading {
   public:
    explicit Reading(const Connection& connection);
    ~Reading();
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;

   private:
    const Connection& connection_;
    bool began_ = false;
  };

  // A statement begins: what it may take of the engine's steps is counted from here.
  void beginWork() const { work_ = 0; }

  // Grows with every write, so that what was read before can be told as old: at once for writes
  // of this process, at the next lookForWrites() for those of others.
  quint64 writes() const { return writes_; }
  void lookForWrites();

  // Which rows those were, and the keys of lists read lately.
  const WriteLog& writtenRows() const { return writtenRows_; }
  KeyCache& keptKeys() { return keptKeys_; }

 private:
  void readTable(TableInfo& table) const;
  void readIndexes(TableInfo& table) const;
  void rollbackTo(int depth);
  void control(const QByteArray& text) const;
  int run(SQLite::Statement& statement) const;
  bool isInTransaction() const;
  bool isTooMuchWork();
  void requireTransaction() const;

  QString path_;
  QString journalSetAside_;
  Patience patience_;
  mutable SQLite::Database database_;
  mutable QHash<QByteArray, std::shared_ptr<SQLite::Statement>> statements_;
  // Compiled queries point at tables: these stay for the life of the connection.
  mutable QHash<QString, std::shared_ptr<const TableInfo>> tables_;
  std::vector<std::shared_ptr<const TableInfo>> formerTables_;
  mutable QHash<QString, QString> queries_;
  int depth_ = 0;
  mutable qint64 work_ = 0;
  WriteLog writtenRows_;
  KeyCache keptKeys_{writtenRows_};
  quint64 writes_ = 0;
  qint64 dataVersion_ = 0;
};

}  // namespace store
