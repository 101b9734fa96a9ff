#include <algorithm>

#include "store/row_writer.h"

namespace store {
namespace {

constexpr std::size_t kReadAhead = 64;

enum class Direction { Forward, Backward };

struct Row {
  qint64 key = 0;
  QVector<QVariant> values;
};

// A run of rows in the order of an index: those that meet one condition.
struct Range {
  QByteArray condition;
  QVariantList values;
};

// Walks a table in the order of its current index, Null first. Rows are read a block at a time and
// forgotten when something has been written.
class TableCursor final : public Cursor {
 public:
  TableCursor(std::shared_ptr<Connection> connection, const TableInfo& table)
      : connection_(std::move(connection)), table_(table) {
    for (const ColumnInfo& column : table_.columns) {
      fields_.append({column.name,
                      table_.name,
                      column.name,
                      column.kind,
                      column.size,
                      {},
                      column.kind != FieldKind::Counter});
    }
  }

  Connection& connection() const override { return *connection_; }
  const QVector<FieldInfo>& fields() const override { return fields_; }

  qint64 count() const override {
    const auto lease = connection_->prepare("SELECT count(*) FROM " + sql::quoteName(table_.name));
    return guarded([&] {
      lease->executeStep();
      return static_cast<qint64>(lease->getColumn(0).getInt64());
    });
  }

  bool bof() const override { return state_ == State::Before || state_ == State::Empty; }
  bool eof() const override { return state_ == State::After || state_ == State::Empty; }
  bool onRow() const override { return state_ == State::Row; }
  void moveFirst() override { moveToEnd(Direction::Forward); }
  void moveLast() override { moveToEnd(Direction::Backward); }

  void moveBy(qint64 rows) override {
    const State end = rows > 0 ? State::After : State::Before;
    const Direction direction = rows > 0 ? Direction::Forward : Direction::Backward;
    for (qint64 steps = 0; steps != rows && state_ != end; steps += rows > 0 ? 1 : -1) {
      step(direction);
      if (state_ == State::Empty) return;
    }
  }

  QVariant value(int field) override {
    if (written_ != connection_->writes()) refreshRow();
    return current_.values[field];
  }

  QByteArray bookmark() const override { return QByteArray::number(current_.key); }
  void setBookmark(const QByteArray& bookmark) override {
    if (!load(bookmark.toLongLong())) {
      throw Failure(failure::kInvalidBookmark, QStringLiteral("Segnalibro non valido"));
    }
  }

  std::shared_ptr<Cursor> clone() const override {
    auto copy = std::make_shared<TableCursor>(connection_, table_);
    copy->index_ = index_;
    if (state_ != State::Empty) copy->state_ = State::Before;
    return copy;
  }
  void prepareRequery() override { again_ = read({Range{}}, Direction::Forward); }
  void requery() override { takeAll(std::move(again_), Direction::Forward); }
  void refreshRow() override {
    if (!load(current_.key)) {
      throw Failure(failure::kRecordDeleted, QStringLiteral("Il record e' stato eliminato"));
    }
  }

  QByteArray insertRow(const QVector<Change>& values) override {
    return QByteArray::number(insertInto(*connection_, table_, named(values)));
  }
  void updateRow(const QVector<Change>& values) override {
    if (!values.isEmpty()) updateIn(*connection_, table_, current_.key, named(values));
  }
  void deleteRow() override { deleteFrom(*connection_, table_, current_.key); }
  void dropRow() override { state_ = State::Gone; }
  void addRow(const QByteArray&) override {}

  const std::vector<qint64>& hits(const QString&) override {
    throw Failure(failure::kWrongOperation,
                  QStringLiteral("Operazione non possibile su una tabella"));
  }

  void setIndex(const QString& name) override {
    const auto found = std::find_if(
        table_.indexes.begin(), table_.indexes.end(),
        [&](const IndexInfo& index) { return index.name.compare(name, Qt::CaseInsensitive) == 0; });
    if (found == table_.indexes.end()) {
      throw Failure(
          failure::kIndexNotFound,
          QStringLiteral("L'indice '%1' non esiste nella tabella %2").arg(name, table_.name));
    }
    index_ = *found;
    ahead_.clear();
  }
  QString index() const override { return index_.name; }

  bool seek(const QString& comparison, const QVariantList& keys) override {
    if (index_.columns.isEmpty()) {
      throw Failure(failure::kIndexNotFound, QStringLiteral("Nessun indice corrente"));
    }
    static const QStringList comparisons = {"=", "<=", ">=", "<", ">"};
    if (!comparisons.contains(comparison)) {
      throw Failure(failure::kConversion, QStringLiteral("Confronto errato: %1").arg(comparison));
    }
    if (keys.isEmpty() || keys.size() > index_.columns.size()) {
      throw Failure(failure::kConversion, QStringLiteral("Numero di chiavi errato"));
    }
    QVariantList values;
    for (qsizetype i = 0; i < keys.size(); ++i) {
      // A text too long for the column is just not found.
      FieldInfo field = fields_[index_.columns[i]];
      field.size = 0;
      values.append(toKind(keys[i], field));
    }
    const Direction direction =
        comparison.startsWith(u'<') ? Direction::Backward : Direction::Forward;
    std::vector<Range> ranges;
    if (comparison.endsWith(u'=')) ranges.push_back(equalTo(values, values.size()));
    if (comparison != QLatin1String("=")) addBeyond(ranges, values, direction);
    std::vector<Row> rows = read(ranges, direction);
    if (rows.empty()) return false;
    take(std::move(rows), direction);
    return true;
  }

 private:
  enum class State { Before, Row, Gone, After, Empty };

  QVector<std::pair<QString, QVariant>> named(const QVector<Change>& values) const {
    QVector<std::pair<QString, QVariant>> result;
    for (const auto& [field, value] : values) result.append({fields_[field].column, value});
    return result;
  }

  QByteArray columnName(qsizetype place) const {
    return sql::quoteName(table_.columns[index_.columns[place]].name);
  }

  // Rows whose first columns of the index have these values.
  Range equalTo(const QVariantList& values, qsizetype columns) const {
    Range range;
    for (qsizetype i = 0; i < columns; ++i) {
      range.condition += (i > 0 ? " AND " : "") + columnName(i) + " IS ?";
      range.values.append(values[i]);
    }
    return range;
  }

  // Rows that lie beyond these values of the index's first columns, nearest first. Each range is
  // one that SQLite finds by the index, as it does not for comparisons that Null takes part in.
  void addBeyond(std::vector<Range>& ranges, const QVariantList& values,
                 Direction direction) const {
    for (qsizetype i = values.size() - 1; i >= 0; --i) {
      const Range equal = equalTo(values, i);
      const auto add = [&](const QByteArray& test, const QVariantList& value) {
        ranges.push_back({equal.condition + (i > 0 ? " AND " : "") + columnName(i) + test,
                          equal.values + value});
      };
      if (direction == Direction::Backward) {
        if (!values[i].isValid()) continue;
        add(" < ?", {values[i]});
        add(" IS NULL", {});
      } else if (values[i].isValid()) {
        add(" > ?", {values[i]});
      } else {
        add(" IS NOT NULL", {});
      }
    }
  }

  QByteArray order(Direction direction) const {
    const QByteArray suffix = direction == Direction::Backward ? " DESC" : "";
    QByteArray text = " ORDER BY ";
    for (qsizetype i = 0; i < index_.columns.size(); ++i) text += columnName(i) + suffix + ", ";
    return text + "rowid" + suffix;
  }

  // The first rows of some ranges that follow each other.
  std::vector<Row> read(const std::vector<Range>& ranges, Direction direction) const {
    std::vector<Row> rows;
    for (const Range& range : ranges) {
      if (rows.size() < kReadAhead) readRange(range, direction, rows);
    }
    return rows;
  }

  void readRange(const Range& range, Direction direction, std::vector<Row>& rows) const {
    QByteArray text = "SELECT rowid, * FROM " + sql::quoteName(table_.name);
    if (!range.condition.isEmpty()) text += " WHERE " + range.condition;
    text += order(direction) + " LIMIT " + QByteArray::number(kReadAhead);
    const auto lease = connection_->prepare(sql::Statement{text, range.values});
    guarded([&] {
      while (lease->executeStep()) rows.push_back(rowOf(*lease));
    });
  }

  Row rowOf(const SQLite::Statement& statement) const {
    Row row{statement.getColumn(0).getInt64(), {}};
    row.values.reserve(fields_.size());
    for (int i = 1; i <= fields_.size(); ++i) row.values.append(columnValue(statement, i));
    return row;
  }

  // Rows behind the current one: first those of the same values, then those beyond.
  std::vector<Row> readOn(Direction direction) const {
    QVariantList values;
    for (const int column : index_.columns) values.append(current_.values[column]);
    Range same = equalTo(values, values.size());
    same.condition += values.isEmpty() ? "rowid" : " AND rowid";
    same.condition += direction == Direction::Forward ? " > ?" : " < ?";
    same.values.append(current_.key);
    std::vector<Range> ranges{std::move(same)};
    addBeyond(ranges, values, direction);
    return read(ranges, direction);
  }

  void take(std::vector<Row> rows, Direction direction) {
    aheadDirection_ = direction;
    std::reverse(rows.begin(), rows.end());
    current_ = std::move(rows.back());
    rows.pop_back();
    ahead_ = std::move(rows);
    written_ = connection_->writes();
    state_ = State::Row;
  }

  void takeAll(std::vector<Row> rows, Direction direction) {
    if (rows.empty()) {
      state_ = State::Empty;
      ahead_.clear();
    } else {
      take(std::move(rows), direction);
    }
  }

  void moveToEnd(Direction direction) { takeAll(read({Range{}}, direction), direction); }

  void step(Direction direction) {
    if (state_ == State::Before || state_ == State::After || state_ == State::Empty) {
      moveToEnd(state_ == State::After ? Direction::Backward : Direction::Forward);
      return;
    }
    const bool usable = aheadDirection_ == direction && written_ == connection_->writes();
    if (!usable || ahead_.empty()) {
      std::vector<Row> rows = readOn(direction);
      if (rows.empty()) {
        ahead_.clear();
        state_ = direction == Direction::Forward ? State::After : State::Before;
      } else {
        take(std::move(rows), direction);
      }
      return;
    }
    current_ = std::move(ahead_.back());
    ahead_.pop_back();
    state_ = State::Row;
  }

  bool load(qint64 key) {
    const auto lease = connection_->prepare("SELECT rowid, * FROM " + sql::quoteName(table_.name) +
                                            " WHERE rowid = ?");
    return guarded([&] {
      lease->bind(1, static_cast<int64_t>(key));
      if (!lease->executeStep()) return false;
      current_ = rowOf(*lease);
      ahead_.clear();
      written_ = connection_->writes();
      state_ = State::Row;
      return true;
    });
  }

  std::shared_ptr<Connection> connection_;
  TableInfo table_;
  QVector<FieldInfo> fields_;
  IndexInfo index_;
  State state_ = State::Empty;
  Row current_;
  std::vector<Row> ahead_;  // the next rows, the nearest last
  std::vector<Row> again_;
  Direction aheadDirection_ = Direction::Forward;
  quint64 written_ = 0;
};

}  // namespace

std::shared_ptr<Cursor> makeTableCursor(std::shared_ptr<Connection> connection,
                                        const QString& table) {
  const TableInfo* info = connection->table(table);
  if (info == nullptr) {
    throw Failure(failure::kTableNotFound, QStringLiteral("Tabella '%1' inesistente").arg(table));
  }
  auto cursor = std::make_shared<TableCursor>(std::move(connection), *info);
  cursor->moveFirst();
  return cursor;
}

}  // namespace store
