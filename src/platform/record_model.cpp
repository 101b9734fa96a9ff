#include "platform/record_model.h"

#include <QDate>
#include <QLocale>
#include <QTimer>

#include "store/unwritten.h"
#include "store/value_text.h"

namespace platform {

using store::FieldKind;

namespace {

// By when what a repaint asks for has been asked.
constexpr int kPaintMilliseconds = 200;

constexpr int kShownCharacters = 200;

bool isNumber(FieldKind kind) {
  return kind == FieldKind::Number || kind == FieldKind::Long || kind == FieldKind::Short ||
         kind == FieldKind::Counter;
}

QString oneLine(QString text) {
  text.truncate(kShownCharacters);
  text.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
  for (QChar& letter : text) {
    if (letter == u'\n' || letter == u'\r' || letter == u'\t') letter = u' ';
  }
  return text;
}

Qt::Alignment alignmentOf(const ColumnSetup& setup) {
  const bool right =
      setup.list == nullptr && (isNumber(setup.kind) || setup.kind == FieldKind::Time);
  return (right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

}  // namespace

QString cellText(const QVariant& value, FieldKind kind) {
  if (value.isNull()) return {};
  switch (kind) {
    case FieldKind::Text:
      return oneLine(value.toString());
    case FieldKind::Date:
      return QLocale().toString(store::dateOfDay(value.toLongLong()), QStringLiteral("dd-MM-yyyy"));
    case FieldKind::Time:
      return store::durationText(value.toLongLong());
    case FieldKind::YesNo:
      return value.toInt() != 0 ? QStringLiteral("Sì") : QString();
    default:
      return store::numberText(value);
  }
}

RecordModel::RecordModel(QObject* parent) : QAbstractTableModel(parent) {}

void RecordModel::setRecordset(store::RecordsetPtr recordset) {
  for (const auto& connection : std::as_const(connections_)) disconnect(connection);
  connections_.clear();
  resetTo(std::move(recordset));
  if (recordset_ != nullptr) connectRecordset();
}

void RecordModel::setColumns(QVector<GridColumn> columns, SetupSource setups) {
  beginResetModel();
  columns_ = std::move(columns);
  setups_ = std::move(setups);
  resolveFields();
  endResetModel();
}

void RecordModel::resetTo(store::RecordsetPtr recordset) {
  beginResetModel();
  recordset_ = std::move(recordset);
  if (recordset_ != nullptr && !recordset_->IsOpen()) recordset_.reset();
  rows_ = recordset_ == nullptr ? 0 : static_cast<int>(recordset_->RecordCount());
  changing_ = false;
  pausing_ = false;
  locked_ = 0;
  readSince_ = true;
  resolveFields();
  endResetModel();
  endUnreadable();
}

void RecordModel::connectRecordset() {
  using store::Recordset;
  const Recordset* source = recordset_.get();
  connections_ = {
      connect(source, &Recordset::aboutToMove, this, &RecordModel::leavingRow),
      connect(source, &Recordset::moved, this, &RecordModel::rowReached),
      connect(source, &Recordset::rowChanged, this, &RecordModel::showChange),
      // A query that fails announces itself too: only its end counts.
      connect(source, &Recordset::requeried, this, [this] { resetTo(recordset_); }),
      connect(source, &Recordset::closed, this, [this] { setRecordset(nullptr); }),
  };
  connectChanges();
}

void RecordModel::connectChanges() {
  using store::Recordset;
  const Recordset* source = recordset_.get();
  connections_ << connect(source, &Recordset::rowAboutToBeInserted, this, [this](qint64 row) {
    changing_ = true;
    beginInsertRows({}, static_cast<int>(row), static_cast<int>(row));
  });
  connections_ << connect(source, &Recordset::rowInserted, this, [this] {
    ++rows_;
    changing_ = false;
    endInsertRows();
  });
  connections_ << connect(source, &Recordset::rowAboutToBeRemoved, this, [this](qint64 row) {
    changing_ = true;
    beginRemoveRows({}, static_cast<int>(row), static_cast<int>(row));
  });
  connections_ << connect(source, &Recordset::rowRemoved, this, [this] {
    --rows_;
    changing_ = false;
    endRemoveRows();
  });
}

void RecordModel::resolveFields() {
  fields_.clear();
  setUpColumns();
  QVector<int> shown;
  for (const GridColumn& column : std::as_const(columns_)) {
    fields_ << fieldsOf(column);
    shown << fields_.last().shown << fields_.last().key;
  }
  if (recordset_ != nullptr) recordset_->ExpectFields(shown);
}

// Each list tells anew what its columns hold: there may have been none when they were set.
void RecordModel::setUpColumns() {
  if (recordset_ == nullptr || !setups_) return;
  for (GridColumn& column : columns_) column.setup = setups_(*recordset_, column.dataField);
}

RecordModel::Fields RecordModel::fieldsOf(const GridColumn& column) const {
  Fields fields;
  if (recordset_ == nullptr) return fields;
  fields.shown = recordset_->FindField(column.dataField);
  if (column.setup.list != nullptr) fields.key = recordset_->FindField(column.setup.keyField);
  const QString selector =
      fields.shown < 0 ? QString() : recordset_->Fields().at(fields.shown).lookupKey;
  if (!selector.isEmpty()) fields.selector = recordset_->FindField(selector);
  return fields;
}

int RecordModel::currentRow() const {
  return recordset_ == nullptr ? -1 : static_cast<int>(recordset_->AbsolutePosition());
}

bool RecordModel::find(int column, const QString& text) {
  const int field = fields_.at(column).shown;
  if (field < 0) return false;
  const store::RecordsetPtr searched = recordset_;
  searched->FindBeginning(field, text);
  return !searched->NoMatch();
}

QString RecordModel::writtenField(int column) const {
  const GridColumn& shown = columns_.at(column);
  return shown.setup.list == nullptr ? shown.dataField : shown.setup.keyField;
}

int RecordModel::writtenPlace(int column) const {
  const Fields& fields = fields_.at(column);
  return columns_.at(column).setup.list == nullptr ? fields.shown : fields.key;
}

int RecordModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int RecordModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant RecordModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columns_.size()) return {};
  if (role == Qt::DisplayRole) return columns_.at(section).caption;
  if (role == Qt::TextAlignmentRole) return alignmentOf(columns_.at(section).setup).toInt();
  return {};
}

// Views ask while they paint: a failure must not pass through them, nor each cell wait for a file
// that is locked.
QVariant RecordModel::valueAt(int row, int field) const {
  if (pausing_) return {};
  try {
    QVariant value = recordset_->ValueAt(row, field);
    if (locked_ > 0 && row == failedRow_) locked_ = 0;
    readSince_ = true;
    return value;
  } catch (const store::Failure& failure) {
    pause();
    failedRow_ = row;
    // A lock counts if it lasts: who works in the list meets it by what he does.
    const bool lock = failure.number() == store::failure::kLocked;
    if (!unreadable_ && (!lock || ++locked_ == 2)) {
      unreadable_ = true;
      Q_EMIT readFailed(failure.number(), failure.description());
    }
    return {};
  }
}

void RecordModel::pause() const {
  pausing_ = true;
  auto* self = const_cast<RecordModel*>(this);
  QTimer::singleShot(readPause, self, &RecordModel::readAgain);
}

void RecordModel::readAgain() {
  pausing_ = false;
  readSince_ = false;
  if (rows_ > 0) Q_EMIT dataChanged(index(0, 0), index(rows_ - 1, columnCount() - 1));
  if (unreadable_) QTimer::singleShot(kPaintMilliseconds, this, &RecordModel::endUnreadable);
}

// Once a whole repaint has met no failure.
void RecordModel::endUnreadable() {
  if (pausing_ || !unreadable_) return;
  // A slow machine has not painted yet.
  if (!readSince_ && rows_ > 0)
    return QTimer::singleShot(kPaintMilliseconds, this, &RecordModel::endUnreadable);
  unreadable_ = false;
  Q_EMIT readRestored();
}

QVariant RecordModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const ColumnSetup& setup = columns_.at(index.column()).setup;
  if (role == Qt::TextAlignmentRole) return alignmentOf(setup).toInt();
  const bool shown = role == Qt::DisplayRole;
  if (!shown && role != Qt::EditRole) return {};
  const int field = shown ? fields_.at(index.column()).shown : writtenPlace(index.column());
  if (field < 0) return {};
  const QVariant value = valueAt(index.row(), field);
  return shown ? cellText(value, setup.kind) : value;
}

Qt::ItemFlags RecordModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  if (!index.isValid() || recordset_ == nullptr) return flags;
  const ColumnSetup& setup = columns_.at(index.column()).setup;
  const int field = writtenPlace(index.column());
  if (!setup.editable || field < 0 || !recordset_->Updatable()) return flags;
  if (!recordset_->Fields().at(field).updatable) return flags;
  // Yes/no is toggled in place and needs no editor.
  flags |= setup.kind == FieldKind::YesNo ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable;
  return flags;
}

bool RecordModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || role != Qt::EditRole) return false;
  const int field = writtenPlace(index.column());
  if (field < 0) return false;
  const store::RecordsetPtr target = recordset_;
  if (target->AbsolutePosition() != index.row()) target->SetAbsolutePosition(index.row());
  const auto unwritten = store::givingUpUnwritten(target);
  target->Edit();
  target->SetValue(field, value);
  target->Update();
  return true;
}

void RecordModel::showChange(qint64 row, const QVector<int>& fields) {
  for (int column = 0; column < fields_.size(); ++column) {
    const Fields& own = fields_.at(column);
    const bool touched =
        fields.contains(own.shown) || fields.contains(own.key) || fields.contains(own.selector);
    const QModelIndex cell = index(static_cast<int>(row), column);
    if (touched && cell.isValid()) Q_EMIT dataChanged(cell, cell);
  }
}

}  // namespace platform
