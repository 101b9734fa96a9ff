#include "store/recordset.h"

#include <algorithm>

#include "store/field_names.h"
#include "store/row_writer.h"

namespace store {
namespace {

// Writes of one row to both its tables, or to none.
class RowTransaction {
 public:
  explicit RowTransaction(Connection& connection) : connection_(connection) { connection_.begin(); }
  ~RowTransaction() {
    if (!done_) connection_.rollback();
  }
  RowTransaction(const RowTransaction&) = delete;
  RowTransaction& operator=(const RowTransaction&) = delete;
  void commit() {
    done_ = true;
    connection_.commit();
  }

 private:
  Connection& connection_;
  bool done_ = false;
};

// The value of a field as lists show it, in the query language.
QString shownText(const FieldInfo& info) {
  QString name = u'[' + QString(info.name).replace(u'.', QStringLiteral("].[")) + u']';
  if (info.kind == FieldKind::YesNo) return QStringLiteral("IIf(%1, 'Sì', '')").arg(name);
  if (info.kind == FieldKind::Date) return QStringLiteral("DateText(%1)").arg(name);
  if (info.kind == FieldKind::Time) {
    return QStringLiteral("IIf(%1 Is Null, '', TimeText(%1))").arg(name);
  }
  return name;
}

// Signs that mean something to Like stand for themselves in brackets.
QString beginsWith(const FieldInfo& info, const QString& text) {
  QString pattern;
  for (const QChar sign : text) {
    const bool special = QStringLiteral("*?#[").contains(sign);
    pattern += special ? u'[' + QString(sign) + u']' : QString(sign);
  }
  pattern.replace(u'\'', QStringLiteral("''"));
  return shownText(info) + QStringLiteral(" Like '") + pattern + QStringLiteral("*'");
}

[[noreturn]] void noCurrentRecord() {
  throw Failure(failure::kNoCurrentRecord, QStringLiteral("Nessun record corrente"));
}

}  // namespace

Recordset::Recordset(RecordsetType type, std::shared_ptr<Cursor> cursor, Clones clones)
    : type_(type), cursor_(std::move(cursor)), clones_(std::move(clones)) {}

Recordset::~Recordset() = default;

bool Recordset::IsOpen() const {
  return cursor_ != nullptr;
}

void Recordset::Close() {
  if (!cursor_) return;
  mode_ = EditMode::None;
  cursor_.reset();
  Q_EMIT closed();
}

void Recordset::requireOpen() const {
  if (!cursor_) throw Failure(failure::kClosed, QStringLiteral("L'elenco di record e' chiuso"));
}

void Recordset::requireUpdatable() const {
  requireOpen();
  if (!Updatable()) {
    throw Failure(failure::kReadOnly, QStringLiteral("L'elenco di record e' di sola lettura"));
  }
}

void Recordset::requireCurrent() const {
  requireOpen();
  if (!cursor_->onRow()) noCurrentRecord();
}

void Recordset::requireField(int field) const {
  if (field < 0 || field >= cursor_->fields().size()) {
    throw Failure(failure::kItemNotFound, QStringLiteral("Campo non presente nell'elenco"));
  }
}

bool Recordset::Updatable() const {
  if (!cursor_ || type_ == RecordsetType::Snapshot) return false;
  const QVector<FieldInfo>& fields = cursor_->fields();
  return std::any_of(fields.begin(), fields.end(), [](const FieldInfo& f) { return f.updatable; });
}

qint64 Recordset::RecordCount() const {
  requireOpen();
  return cursor_->count();
}

bool Recordset::Bof() const {
  requireOpen();
  return cursor_->bof();
}

bool Recordset::Eof() const {
  requireOpen();
  return cursor_->eof();
}

void Recordset::Leave() {
  requireOpen();
  bool stays = false;
  Q_EMIT aboutToMove(&stays);
  if (stays) throw Failure(failure::kTold, QStringLiteral("Il record non e' stato salvato"));
  CancelUpdate();
}

void Recordset::arrive(qint64 from) {
  noMatch_ = false;
  Q_EMIT moved(from, cursor_->place());
}

// On an empty set the move fails, but is tried: another handle may have added rows.
void Recordset::MoveFirst() {
  Leave();
  const qint64 from = cursor_->place();
  cursor_->moveFirst();
  requireCurrent();
  arrive(from);
}

void Recordset::MoveLast() {
  Leave();
  const qint64 from = cursor_->place();
  cursor_->moveLast();
  requireCurrent();
  arrive(from);
}

void Recordset::MoveNext() {
  requireOpen();
  if (cursor_->eof()) noCurrentRecord();
  Move(1);
}

void Recordset::MovePrevious() {
  requireOpen();
  if (cursor_->bof()) noCurrentRecord();
  Move(-1);
}

void Recordset::Move(qint64 rows) {
  Leave();
  const qint64 from = cursor_->place();
  cursor_->moveBy(rows);
  arrive(from);
}

qint64 Recordset::AbsolutePosition() const {
  requireOpen();
  return cursor_->place();
}

void Recordset::SetAbsolutePosition(qint64 position) {
  requireOpen();
  if (!cursor_->hasPlaces() || position < 0 || position >= cursor_->count()) {
    throw Failure(failure::kNoCurrentRecord, QStringLiteral("Posizione fuori dall'elenco"));
  }
  if (position == cursor_->place()) return;
  Leave();
  const qint64 from = cursor_->place();
  cursor_->setPlace(position);
  arrive(from);
}

QByteArray Recordset::Bookmark() const {
  requireCurrent();
  return cursor_->bookmark();
}

void Recordset::SetBookmark(const QByteArray& bookmark) {
  Leave();
  const qint64 from = cursor_->place();
  cursor_->setBookmark(bookmark);
  arrive(from);
}

std::shared_ptr<Recordset> Recordset::Clone() const {
  requireOpen();
  auto clone = std::make_shared<Recordset>(type_, cursor_->clone(), clones_);
  clones_->removeIf([](const std::weak_ptr<Recordset>& other) { return other.expired(); });
  clones_->append(clone);
  return clone;
}

const QVector<FieldInfo>& Recordset::Fields() const {
  requireOpen();
  return cursor_->fields();
}

int Recordset::FindField(const QString& name) const {
  requireOpen();
  return findField(cursor_->fields(), name);
}

int Recordset::FieldIndex(const QString& name) const {
  requireOpen();
  return fieldIndex(cursor_->fields(), name);
}

QVariant Recordset::Value(int field) const {
  requireOpen();
  requireField(field);
  if (mode_ == EditMode::Add || (mode_ == EditMode::Edit && touched_[field])) return edited_[field];
  requireCurrent();
  return cursor_->value(field);
}

void Recordset::SetValue(int field, const QVariant& value) {
  requireUpdatable();
  if (mode_ == EditMode::None) {
    throw Failure(failure::kUpdateWithoutEdit, QStringLiteral("Modifica non iniziata"));
  }
  requireField(field);
  const FieldInfo& info = cursor_->fields()[field];
  if (!info.updatable) {
    throw Failure(failure::kFieldNotUpdatable,
                  QStringLiteral("Il campo %1 non e' modificabile").arg(info.name));
  }
  edited_[field] = toKind(value, info);
  touched_[field] = true;
}

void Recordset::ExpectFields(const QVector<int>& fields) {
  requireOpen();
  cursor_->expect(fields);
}

QVariant Recordset::ValueAt(qint64 position, int field) const {
  requireOpen();
  requireField(field);
  return cursor_->valueAt(position, field);
}

void Recordset::AddNew() {
  requireUpdatable();
  Leave();
  edited_ = QVector<QVariant>(cursor_->fields().size());
  touched_ = QVector<bool>(cursor_->fields().size(), false);
  mode_ = EditMode::Add;
  Q_EMIT addStarted();
}

void Recordset::Edit() {
  requireUpdatable();
  requireCurrent();
  if (mode_ == EditMode::Edit) return;
  edited_ = QVector<QVariant>(cursor_->fields().size());
  touched_ = QVector<bool>(cursor_->fields().size(), false);
  mode_ = EditMode::Edit;
}

void Recordset::Update() {
  requireUpdatable();
  if (mode_ == EditMode::None) {
    throw Failure(failure::kUpdateWithoutEdit, QStringLiteral("Modifica non iniziata"));
  }
  Q_EMIT aboutToUpdate();
  if (mode_ == EditMode::Add) {
    writeNew();
  } else if (mode_ == EditMode::Edit) {
    writeChanges();
  }
}

void Recordset::writeNew() {
  QVector<Change> changes;
  for (int i = 0; i < touched_.size(); ++i) {
    if (touched_[i]) changes.append({i, edited_[i]});
  }
  RowTransaction transaction(cursor_->connection());
  const QByteArray bookmark = cursor_->insertRow(changes);
  transaction.commit();
  mode_ = EditMode::None;
  lastModified_ = bookmark;
  const bool hasPlaces = cursor_->hasPlaces();
  const qint64 place = hasPlaces ? cursor_->count() : -1;
  if (hasPlaces) Q_EMIT rowAboutToBeInserted(place);
  cursor_->addRow(bookmark);
  if (hasPlaces) Q_EMIT rowInserted(place);
}

void Recordset::writeChanges() {
  QVector<Change> changes;
  QVector<int> fields;
  for (int i = 0; i < touched_.size(); ++i) {
    if (!touched_[i]) continue;
    changes.append({i, edited_[i]});
    fields.append(i);
  }
  if (!changes.isEmpty()) {
    RowTransaction transaction(cursor_->connection());
    cursor_->updateRow(changes);
    // Read within the transaction, which has the file's lock anyway.
    cursor_->refreshRow();
    transaction.commit();
  }
  mode_ = EditMode::None;
  lastModified_ = cursor_->bookmark();
  if (fields.isEmpty()) return;
  Q_EMIT rowChanged(cursor_->place(), fields);
}

void Recordset::CancelUpdate() {
  const bool adding = mode_ == EditMode::Add;
  mode_ = EditMode::None;
  if (adding) Q_EMIT addGivenUp();
}

void Recordset::Delete() {
  requireUpdatable();
  requireCurrent();
  CancelUpdate();
  RowTransaction transaction(cursor_->connection());
  cursor_->deleteRow();
  transaction.commit();
  const qint64 place = cursor_->place();
  if (cursor_->hasPlaces()) Q_EMIT rowAboutToBeRemoved(place);
  cursor_->dropRow();
  if (cursor_->hasPlaces()) Q_EMIT rowRemoved(place);
}

void Recordset::SetIndex(const QString& name) {
  requireOpen();
  cursor_->setIndex(name);
}

QString Recordset::Index() const {
  requireOpen();
  return cursor_->index();
}

void Recordset::Seek(const QString& comparison, const QVariantList& keys) {
  Leave();
  noMatch_ = !cursor_->seek(comparison, keys);
  if (!noMatch_) arrive(-1);
}

void Recordset::FindFirst(const QString& condition) {
  find(Search::First, condition);
}
void Recordset::FindLast(const QString& condition) {
  find(Search::Last, condition);
}
void Recordset::FindNext(const QString& condition) {
  find(Search::Next, condition);
}
void Recordset::FindPrevious(const QString& condition) {
  find(Search::Previous, condition);
}

void Recordset::FindBeginning(int field, const QString& text) {
  requireOpen();
  requireField(field);
  find(Search::First, beginsWith(cursor_->fields()[field], text));
}

void Recordset::find(Search search, const QString& condition) {
  Leave();
  const std::vector<qint64>& hits = cursor_->hits(condition);
  const auto begin = hits.begin();
  const auto end = hits.end();
  auto hit = begin;
  if (search == Search::Next) hit = std::lower_bound(begin, end, cursor_->placeBehind());
  // Searches backwards take the hit before the bound.
  if (search == Search::Previous) hit = std::upper_bound(begin, end, cursor_->placeBefore());
  if (search == Search::Last) hit = end;
  const bool backward = search == Search::Last || search == Search::Previous;
  noMatch_ = hit == (backward ? begin : end);
  if (noMatch_) return;
  const qint64 from = cursor_->place();
  cursor_->setPlace(backward ? *(hit - 1) : *hit);
  arrive(from);
}

void Recordset::Requery() {
  Leave();
  cursor_->prepareRequery();
  Q_EMIT aboutToRequery();
  cursor_->requery();
  noMatch_ = false;
  Q_EMIT requeried();
}

void Recordset::RefreshRow() {
  requireCurrent();
  cursor_->refreshRow();
  QVector<int> all(cursor_->fields().size());
  for (int i = 0; i < all.size(); ++i) all[i] = i;
  Q_EMIT rowChanged(cursor_->place(), all);
}

}  // namespace store
