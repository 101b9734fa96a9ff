#include "store/child_rows.h"

#include <vector>

#include "store/open_snapshot.h"
#include "store/query.h"
#include "store/result_table.h"

namespace store {
namespace {

constexpr std::size_t kMostRows = 2048;

class KeyedRows final : public ChildRows {
 public:
  KeyedRows(std::shared_ptr<Connection> connection, const QString& source, const QString& key)
      : connection_(std::move(connection)), query_(source, *connection_) {
    if (query_.keyTables().empty()) results_ = std::make_unique<ResultTable>(*connection_, query_);
    const sql::ExprPtr condition = query_.condition(key + QStringLiteral(" = 0"), *connection_);
    if (condition->kind == sql::ExprKind::Binary) key_ = condition->args.front();
    if (!key_ || key_->kind != sql::ExprKind::Column) {
      throw Failure(failure::kSyntax, QStringLiteral("'%1' non e' un campo").arg(key));
    }
  }

  const QVector<FieldInfo>& fields() const override { return query_.fields(); }

  void read(const QVector<int>& fields) override {
    // Rows are there even where none of their fields is asked for.
    statement_ = query_.rowsByValue(key_, fields.isEmpty() ? QVector<int>{0} : fields, place_);
    isRead_ = false;
  }

  void seek(const QVariant& value) override {
    if (isUpToDate() && value == value_) return;
    value_ = value;
    fetch(0);
  }

  bool has(qint64 row) override {
    if (row < first_ || !isUpToDate()) fetch(row);
    if (row >= end() && !isLast_) fetch(row);
    return row < end();
  }

  QVariant value(qint64 row, int place) override {
    if (row < 0 || !has(row)) return {};
    return rows_[static_cast<std::size_t>(row - first_)][place];
  }

 private:
  Connection& source() { return results_ ? results_->connection() : *connection_; }
  bool isUpToDate() const { return isRead_ && at_ == connection_->writes(); }
  qint64 end() const { return first_ + static_cast<qint64>(rows_.size()); }

  void fetch(qint64 first) {
    isRead_ = true;
    at_ = connection_->writes();
    first_ = first;
    rows_.clear();
    isLast_ = true;
    if (!value_.isValid()) return;
    const auto lease = source().prepare(statement_);
    guarded([&] {
      bindValue(*lease, place_, value_);
      for (qint64 skipped = 0; skipped < first; ++skipped) {
        if (!lease->executeStep()) return;
      }
      const int columns = lease->getColumnCount();
      while (lease->executeStep()) {
        if (rows_.size() == kMostRows) {
          isLast_ = false;
          return;
        }
        QVector<QVariant>& row = rows_.emplace_back(columns);
        for (int i = 0; i < columns; ++i) row[i] = columnValue(*lease, i);
      }
    });
  }

  std::shared_ptr<Connection> connection_;
  Query query_;
  std::unique_ptr<ResultTable> results_;  // of a query without keys
  sql::ExprPtr key_;
  sql::Statement statement_;
  int place_ = 0;  // of the value in the statement
  QVariant value_;
  std::vector<QVector<QVariant>> rows_;  // that are kept
  qint64 first_ = 0;
  bool isLast_ = false;  // there is no row behind them
  bool isRead_ = false;
  quint64 at_ = 0;  // Connection::writes() when they were read
};

}  // namespace

std::unique_ptr<ChildRows> openChildRows(const Database& database, const QString& source,
                                         const QString& key) {
  return std::make_unique<KeyedRows>(connectionOf(database), source, key);
}

}  // namespace store
