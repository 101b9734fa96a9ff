#pragma once

#include <SQLiteCpp/Database.h>

#include <QHash>
#include <QSet>
#include <memory>

#include "store/repair.h"
#include "store/salvage.h"

namespace store {

// The file that a repair writes. Its functions fail with the engine's failures.
class RepairedFile final {
 public:
  // At the path of an empty file.
  RepairedFile(const QString& path, const RepairPlan& plan);

  const ArchiveShape& model() const { return model_; }
  // Everything that was found; `goesOn` is asked now and then, 3059 if it does not.
  void fill(const Salvage& salvage, const std::function<bool()>& goesOn);
  RepairReport finish();

 private:
  using Statements = QHash<std::size_t, std::shared_ptr<SQLite::Statement>>;

  void createTables();
  void createIndexes();
  void addColumns(const TableShape& shape);
  void fillTable(const Salvage& salvage, const FoundTable& found,
                 const std::function<bool()>& goesOn);
  bool insert(const TableShape& shape, const StoredRow& row, Statements& statements);
  void raiseSequences(const Salvage& salvage, const FoundTable& found);
  void takeFromModel(const QByteArray& table);
  std::vector<std::pair<int, int>> lookupsOf(const TableShape& shape) const;
  void addLookups(const FoundTable& found);
  void addLookup(qint64 key, const QVariantList& values);
  void tell(RepairedRow::State state, const FoundTable& found, const StoredRow& row);
  void findGuard();
  void findHalves();
  void findTitles();
  QVariantList firstRow(const QByteArray& query, const QVariantList& values = {});
  void run(const QByteArray& statement, const QVariantList& values = {});

  const RepairPlan& plan_;
  SQLite::Database file_;
  ArchiveShape model_;
  RepairReport report_;
  QHash<qint64, int> used_;  // keys of lookup values, by which of the plan's columns
  qint64 lastLostKey_ = 0;
};

}  // namespace store
