#include "platform/data_control.h"

#include <QApplication>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QStatusBar>
#include <QWidget>
#include <algorithm>

#include "platform/bound_control.h"

namespace platform {
namespace {

// Shorter than what the store remembers a lock for: a try by itself does not stand still.
constexpr int kRetryMilliseconds = 2000;
constexpr int kRemindMilliseconds = 8000;

bool isNumber(const QVariant& value) {
  return value.isValid() && value.typeId() != QMetaType::QString;
}

bool isSame(const QVariant& left, const QVariant& right) {
  if (isNumber(left) && isNumber(right)) return left.toDouble() == right.toDouble();
  return left.toString() == right.toString();
}

}  // namespace

DataControl::DataControl(QObject* parent) : QObject(parent) {
  // Text that is still being typed is written as it is left.
  connect(&retrying_, &QTimer::timeout, this, [this] {
    if (kept_ && told_) write(Reminder::No);
    readAgain();
  });
}

void DataControl::readAgain() {
  if (unread_ && !Pending()) UpdateControls();
}

DataControl::~DataControl() {
  for (const auto& connection : std::as_const(connections_)) disconnect(connection);
  const auto controls = controls_;
  for (BoundControl* control : controls) control->SetDataSource(nullptr);
}

void DataControl::leaveRow() {
  if (isOpen()) recordset_->Leave();
}

void DataControl::SetDatabaseName(const QString& path) {
  if (path == databaseName_) return;
  leaveRow();
  databaseName_ = path;
  if (database_ != nullptr) database_->Close();
  database_.reset();
}

void DataControl::Refresh() {
  leaveRow();
  if (database_ == nullptr || !database_->IsOpen()) database_ = store::OpenDatabase(databaseName_);
  SetRecordset(database_->OpenRecordset(recordSource_, store::RecordsetType::Dynaset));
}

void DataControl::SetRecordset(store::RecordsetPtr recordset) {
  leaveRow();
  for (const auto& connection : std::as_const(connections_)) disconnect(connection);
  connections_.clear();
  recordset_ = std::move(recordset);
  if (recordset_ != nullptr) followRecordset();
  UpdateControls();
  Q_EMIT recordsetChanged();
}

void DataControl::followRecordset() {
  using store::Recordset;
  const auto* rows = recordset_.get();
  connections_ = {
      connect(rows, &Recordset::aboutToMove, this,
              [this](bool* stays) {
                writePending();
                if (kept_) *stays = true;
              }),
      connect(rows, &Recordset::aboutToUpdate, this, &DataControl::pushChanges),
      connect(rows, &Recordset::addStarted, this, &DataControl::UpdateControls),
      connect(rows, &Recordset::addGivenUp, this, &DataControl::UpdateControls),
      connect(rows, &Recordset::moved, this, &DataControl::UpdateControls),
      connect(rows, &Recordset::requeried, this, &DataControl::UpdateControls),
      connect(rows, &Recordset::rowRemoved, this, &DataControl::UpdateControls),
      connect(rows, &Recordset::closed, this, &DataControl::UpdateControls),
      connect(rows, &Recordset::rowInserted, this, &DataControl::newRowWritten),
      connect(rows, &Recordset::rowChanged, this, &DataControl::showFields),
  };
}

bool DataControl::hasRow() const {
  if (!isOpen()) return false;
  if (recordset_->Type() != store::RecordsetType::Table) return recordset_->AbsolutePosition() >= 0;
  return !recordset_->Bof() && !recordset_->Eof();
}

int DataControl::fieldOf(const BoundControl& control) const {
  if (!isOpen() || control.DataField().isEmpty()) return -1;
  return recordset_->FindField(control.DataField());
}

QVariant DataControl::storedValue(const BoundControl& control) const {
  const int field = fieldOf(control);
  if (field < 0) return {};
  if (isAdding() || recordset_->Type() == store::RecordsetType::Table) {
    return hasRow() || isAdding() ? recordset_->Value(field) : QVariant();
  }
  // A row that has gone from the archive meanwhile shows nothing.
  return recordset_->ValueAt(recordset_->AbsolutePosition(), field);
}

bool DataControl::isPending(const BoundControl& control) const {
  return control.DataChanged() && fieldOf(control) >= 0;
}

bool DataControl::isStored(const BoundControl& control) const {
  return control.IsValid() && isSame(control.Value(), storedValue(control));
}

bool DataControl::Pending() const {
  return std::any_of(controls_.begin(), controls_.end(),
                     [this](const BoundControl* control) { return isPending(*control); });
}

QVector<BoundControl*> DataControl::controlsToWrite() const {
  QVector<BoundControl*> changed;
  std::copy_if(controls_.begin(), controls_.end(), std::back_inserter(changed),
               [this](const BoundControl* control) {
                 return isPending(*control) && control->IsValid() && !isStored(*control);
               });
  return changed;
}

// What was typed and typed back.
void DataControl::forgetUnchanged() {
  for (BoundControl* control : std::as_const(controls_)) {
    if (isPending(*control) && isStored(*control)) control->SetDataChanged(false);
  }
}

void DataControl::forgetChanges() {
  for (BoundControl* control : std::as_const(controls_)) control->SetDataChanged(false);
}

void DataControl::pushChanges() {
  const store::RecordsetPtr rows = recordset_;
  if (rows == nullptr) return;
  const auto changed = controlsToWrite();
  for (const BoundControl* control : changed) {
    rows->SetValue(fieldOf(*control), control->Value());
  }
}

void DataControl::UpdateRecord() {
  if (isAdding()) return;
  // The row was never added: what was typed for it belongs to no other.
  if (adding_) return UpdateControls();
  if (!hasRow()) return;
  forgetUnchanged();
  const auto changed = controlsToWrite();
  if (changed.isEmpty()) return;
  const store::RecordsetPtr rows = recordset_;
  const bool ownEdit = rows->Mode() == store::EditMode::None;
  const auto giveUp = qScopeGuard([&rows, ownEdit] {
    if (ownEdit && rows->IsOpen()) rows->CancelUpdate();
  });
  QVector<Replaced> replaced;
  for (BoundControl* control : changed) replaced.append({control, storedValue(*control)});
  rows->Edit();
  rows->Update();
  replaced_ = replaced;
  for (BoundControl* control : changed) accept(*control);
}

bool DataControl::UndoWrite() {
  if (replaced_.isEmpty() || Pending() || isAdding()) return false;
  const QVector<Replaced> back = std::exchange(replaced_, {});
  for (const Replaced& old : back) old.control->SetValue(old.value);
  back.first().control->widget()->setFocus(Qt::ShortcutFocusReason);
  return writePending();
}

bool DataControl::writePending() {
  return write(Reminder::Yes);
}

bool DataControl::write(Reminder reminder) {
  // Whoever tells the user of a failure takes the focus from the controls.
  if (writing_) return true;
  const QScopedValueRollback guard(writing_, true);
  try {
    UpdateRecord();
    release();
    return true;
  } catch (const store::Failure& failure) {
    // What was typed for a row that is gone stays to be read, but is not tried again.
    const bool gone = failure.number() == store::failure::kRecordDeleted;
    const bool news = gone || !told_;
    if (gone) {
      forgetChanges();
      release();
    } else {
      keep(failure);
    }
    if (news) Q_EMIT writeFailed(failure.number(), failure.description());
    if (!news && reminder == Reminder::Yes) remind();
    return false;
  }
}

void DataControl::keep(const store::Failure& failure) {
  kept_ = failure;
  told_ = true;
  if (!retrying_.isActive()) retrying_.start(kRetryMilliseconds);
}

void DataControl::release() {
  kept_.reset();
  told_ = false;
  if (!unread_) retrying_.stop();
}

void DataControl::remind() const {
  QApplication::beep();
  const auto typed = std::find_if(controls_.begin(), controls_.end(),
                                  [this](const auto* control) { return isPending(*control); });
  if (typed == controls_.end()) return;
  if (auto* status = (*typed)->widget()->window()->findChild<QStatusBar*>()) {
    status->showMessage(QStringLiteral("Non ancora salvato: ") + kept_->description(),
                        kRemindMilliseconds);
  }
}

void DataControl::bind(BoundControl* control) {
  if (!controls_.contains(control)) controls_.append(control);
  show(*control);
}

void DataControl::unbind(BoundControl* control) {
  controls_.removeOne(control);
  replaced_.removeIf([control](const Replaced& old) { return old.control == control; });
}

// True if the value could be read; else the control is empty, and takes none.
bool DataControl::show(BoundControl& control) {
  if (control.DataField().isEmpty()) return true;
  try {
    control.ShowValue(storedValue(control));
    if (unread_) control.widget()->setEnabled(true);
    return true;
  } catch (const store::Failure& failure) {
    control.ShowValue({});
    control.widget()->setEnabled(false);
    const bool news = !unread_;
    unread_ = true;
    retrying_.start(kRetryMilliseconds);
    if (news) Q_EMIT readFailed(failure.number(), failure.description());
    return false;
  }
}

// What has been written is shown as the store keeps it; the same is not put in again under the
// hands of the user.
void DataControl::accept(BoundControl& control) {
  if (isStored(control)) {
    control.SetDataChanged(false);
  } else {
    show(control);
  }
}

void DataControl::UpdateControls() {
  adding_ = isAdding();
  replaced_.clear();
  release();
  bool readable = true;
  for (BoundControl* control : std::as_const(controls_)) {
    if (!show(*control)) readable = false;
  }
  unread_ = !readable;
}

void DataControl::showFields(qint64 position, const QVector<int>& fields) {
  if (position != recordset_->AbsolutePosition()) return;
  for (BoundControl* control : std::as_const(controls_)) {
    const bool typed = control->DataChanged() && !isStored(*control);
    if (!typed && fields.contains(fieldOf(*control))) accept(*control);
  }
}

void DataControl::newRowWritten() {
  if (adding_) UpdateControls();
}

}  // namespace platform
