#include <algorithm>
#include <array>

#include "store/row_set.h"
#include "store/row_writer.h"

namespace store {
namespace {

using Named = QVector<std::pair<QString, QVariant>>;

class KeysetCursor final : public Cursor {
 public:
  explicit KeysetCursor(std::shared_ptr<RowSet> rows) { use(std::move(rows)); }
  ~KeysetCursor() override { rows_->detach(&at_); }

  Connection& connection() const override { return rows_->connection(); }
  const QVector<FieldInfo>& fields() const override { return rows_->query().fields(); }
  qint64 count() const override { return rows_->count(); }

  bool bof() const override { return !at_.gone && (count() == 0 || at_.row < 0); }
  bool eof() const override { return !at_.gone && (count() == 0 || at_.row >= count()); }
  bool onRow() const override { return !at_.gone && at_.row >= 0 && at_.row < count(); }
  void moveFirst() override { arrive(count() == 0 ? -1 : 0); }
  void moveLast() override { arrive(count() - 1); }

  // From a row just deleted the next one stands at the same place.
  void moveBy(qint64 rows) override {
    if (rows == 0) return;
    const qint64 steps = std::clamp<qint64>(rows, -count() - 1, count() + 1);
    const qint64 target = at_.row + steps - (at_.gone && rows > 0 ? 1 : 0);
    arrive(std::clamp<qint64>(target, -1, count()));
  }

  // A key is known without a look at the row.
  QVariant value(int field) override {
    const int table = rows_->query().keyTableOf(field);
    if (table < 0) return existing(at_.row)[field];
    const RowKey key = rows_->keyAt(at_.row);
    return static_cast<qlonglong>(table == 0 ? firstKey(key) : secondKey(key));
  }

  QByteArray bookmark() const override {
    const RowKey key = rows_->keyAt(at_.row);
    return QByteArray(reinterpret_cast<const char*>(&key), sizeof key);
  }

  void setBookmark(const QByteArray& bookmark) override {
    const qint64 place = rows_->placeOf(keyOf(bookmark), at_.row);
    if (place < 0) {
      throw Failure(failure::kInvalidBookmark, QStringLiteral("Segnalibro non valido"));
    }
    arrive(place);
  }

  std::shared_ptr<Cursor> clone() const override { return std::make_shared<KeysetCursor>(rows_); }

  void prepareRequery() override { again_ = rows_->again(); }
  void requery() override {
    use(std::move(again_));
    moveFirst();
  }

  void refreshRow() override {
    rows_->refresh(at_.row);
    existing(at_.row);
  }

  QByteArray insertRow(const QVector<Change>& values) override {
    std::array<qint64, 2> keys{};
    std::array<Named, 2> columns = byTable(values);
    fillJoin(columns);
    const auto& tables = rows_->query().keyTables();
    for (std::size_t t = 0; t < tables.size(); ++t) {
      keys[t] = insertInto(connection(), *tables[t]->table, columns[t]);
    }
    const RowKey key = packKey(keys[0], keys[1]);
    return QByteArray(reinterpret_cast<const char*>(&key), sizeof key);
  }

  void updateRow(const QVector<Change>& values) override {
    const RowKey key = rows_->keyAt(at_.row);
    const std::array<Named, 2> columns = byTable(values);
    const auto& tables = rows_->query().keyTables();
    for (std::size_t t = 0; t < tables.size(); ++t) {
      if (columns[t].isEmpty()) continue;
      updateIn(connection(), *tables[t]->table, t == 0 ? firstKey(key) : secondKey(key),
               columns[t]);
    }
  }

  void deleteRow() override {
    const RowKey key = rows_->keyAt(at_.row);
    const auto& tables = rows_->query().keyTables();
    for (std::size_t t = 0; t < tables.size(); ++t) {
      deleteFrom(connection(), *tables[t]->table, t == 0 ? firstKey(key) : secondKey(key));
    }
  }

  void dropRow() override { rows_->remove(at_.row); }
  void addRow(const QByteArray& bookmark) override { rows_->append(keyOf(bookmark)); }

  bool hasPlaces() const override { return true; }
  qint64 place() const override { return onRow() ? at_.row : -1; }
  qint64 placeBefore() const override { return at_.row - 1; }
  qint64 placeBehind() const override { return at_.gone ? at_.row : at_.row + 1; }
  void setPlace(qint64 place) override { arrive(place); }

  QVariant valueAt(qint64 place, int field) override {
    if (place < 0 || place >= count()) return {};
    if (place != at_.row || at_.gone) return rows_->cell(place, field);
    const QVector<QVariant>& row = rows_->row(place);
    return row.isEmpty() ? QVariant() : row[field];
  }
  void expect(const QVector<int>& fields) override { rows_->expect(fields); }

  const std::vector<qint64>& hits(const QString& condition) override {
    return rows_->hits(condition);
  }

  void setIndex(const QString&) override { noTable(); }
  bool seek(const QString&, const QVariantList&) override { noTable(); }

 private:
  static RowKey keyOf(const QByteArray& bookmark) {
    RowKey key = 0;
    if (bookmark.size() != sizeof key) {
      throw Failure(failure::kInvalidBookmark, QStringLiteral("Segnalibro non valido"));
    }
    std::copy(bookmark.begin(), bookmark.end(), reinterpret_cast<char*>(&key));
    return key;
  }

  [[noreturn]] static void noTable() {
    throw Failure(failure::kWrongOperation,
                  QStringLiteral("Operazione possibile solo su una tabella"));
  }

  void arrive(qint64 place) { at_ = Place{place, false}; }

  void use(std::shared_ptr<RowSet> rows) {
    if (rows_) rows_->detach(&at_);
    rows_ = std::move(rows);
    rows_->attach(&at_);
  }

  const QVector<QVariant>& existing(qint64 place) {
    const QVector<QVariant>& row = rows_->row(place);
    if (row.isEmpty()) {
      throw Failure(failure::kRecordDeleted, QStringLiteral("Il record e' stato eliminato"));
    }
    return row;
  }

  std::array<Named, 2> byTable(const QVector<Change>& values) const {
    std::array<Named, 2> result;
    for (const auto& [field, value] : values) {
      const int table = rows_->query().tableOf(field);
      result[static_cast<std::size_t>(table)].append({fields()[field].column, value});
    }
    return result;
  }

  // Two tables' rows belong together by the columns they are joined on: a value given for one
  // side only serves the other too.
  void fillJoin(std::array<Named, 2>& columns) const {
    const auto [left, right] = rows_->query().joinColumns();
    if (left.isEmpty()) return;
    const auto find = [](const Named& named, const QString& name) {
      return std::find_if(named.begin(), named.end(), [&](const auto& pair) {
        return pair.first.compare(name, Qt::CaseInsensitive) == 0;
      });
    };
    const auto l = find(columns[0], left);
    const auto r = find(columns[1], right);
    if (l == columns[0].end() && r != columns[1].end()) columns[0].append({left, r->second});
    if (r == columns[1].end() && l != columns[0].end()) columns[1].append({right, l->second});
  }

  std::shared_ptr<RowSet> rows_;
  std::shared_ptr<RowSet> again_;
  Place at_;
};

}  // namespace

std::shared_ptr<Cursor> makeKeysetCursor(std::shared_ptr<Connection> connection,
                                         const QString& source) {
  auto cursor =
      std::make_shared<KeysetCursor>(std::make_shared<RowSet>(std::move(connection), source));
  cursor->moveFirst();
  return cursor;
}

}  // namespace store
