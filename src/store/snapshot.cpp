#include "store/snapshot.h"

#include <sqlite3.h>

#include <QHash>

#include "store/open_snapshot.h"

namespace store {
namespace {

// A read transaction that is open across statements and other work.
class Snapshot final {
 public:
  explicit Snapshot(std::shared_ptr<Connection> connection);
  ~Snapshot() { end(); }
  Snapshot(const Snapshot&) = delete;
  Snapshot& operator=(const Snapshot&) = delete;

  bool holds() const { return holds_; }
  void end();

 private:
  std::shared_ptr<Connection> connection_;
  bool holds_ = false;
};

// The last one of each connection; all who want one at a time share it.
QHash<const Connection*, std::weak_ptr<Snapshot>>& snapshots() {
  static QHash<const Connection*, std::weak_ptr<Snapshot>> all;
  return all;
}

Snapshot::Snapshot(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {
  // What is being written is read as it is.
  if (sqlite3_get_autocommit(connection_->database().getHandle()) == 0) return;
  guarded([&] { connection_->database().exec("BEGIN"); });
  holds_ = true;
  try {
    // The first read is what holds the file.
    connection_->lookForWrites();
  } catch (const Failure&) {
    end();
    throw;
  }
}

void Snapshot::end() {
  if (holds_) connection_->database().tryExec("COMMIT");
  holds_ = false;
}

}  // namespace

std::shared_ptr<const void> takeSnapshot(const Database& database) {
  const auto connection = connectionOf(database);
  auto snapshot = snapshots().value(connection.get()).lock();
  if (!snapshot || !snapshot->holds()) {
    snapshot = std::make_shared<Snapshot>(connection);
    snapshots().insert(connection.get(), snapshot);
  }
  return snapshot;
}

quint64 writesOf(const Database& database) {
  const auto connection = connectionOf(database);
  connection->lookForWrites();
  return connection->writes();
}

void endSnapshot(const Connection& connection) {
  if (const auto snapshot = snapshots().take(&connection).lock()) snapshot->end();
}

}  // namespace store
