#pragma once

#include <QObject>
#include <QTimer>
#include <QVector>
#include <optional>

#include "store/database.h"

namespace platform {

class BoundControl;

// Joins bound controls to a recordset: shows the current row in them, and writes what was typed
// before the current row changes. What cannot be written stays in its box with the row current; it
// is told once, and tried again by itself and whenever the row is to be left. Several data controls
// can share one recordset object.
class DataControl final : public QObject {
  Q_OBJECT
 public:
  explicit DataControl(QObject* parent = nullptr);
  ~DataControl() override;

  QString DatabaseName() const { return databaseName_; }
  // Path of the archive that Refresh opens; closes the one open before. This, Refresh and
  // SetRecordset leave the current row, and fail with kTold where what was typed is kept.
  void SetDatabaseName(const QString& path);
  QString RecordSource() const { return recordSource_; }
  void SetRecordSource(const QString& source) { recordSource_ = source; }
  // Runs RecordSource as a dynaset. On a failure (thrown) the recordset stays as it was.
  void Refresh();
  store::RecordsetPtr Recordset() const { return recordset_; }
  void SetRecordset(store::RecordsetPtr recordset);

  // Shows the current row in all bound controls.
  void UpdateControls();
  // Writes the changed controls into the current row; nothing changed, nothing written. A row
  // being added is left to Recordset::Update.
  // Fails as the store does; the controls then keep what was typed.
  void UpdateRecord();
  // The same, but a failure is told by writeFailed; false if there was one. What was typed for a
  // row that is gone is told and given up.
  bool writePending();
  // Writes back what the last write into the current row has replaced, and goes to its control; a
  // second call undoes the first. False if there is nothing of that kind.
  bool UndoWrite();
  // Why what was typed is not written yet; nothing if no write has failed since.
  const std::optional<store::Failure>& Kept() const { return kept_; }
  // True while the current row, or a text of its lists, cannot be read.
  bool IsUnread() const { return unread_; }
  // Tries that row again.
  void readAgain();
  // The stored value of a control's field, whatever has been typed into it.
  QVariant storedValue(const BoundControl& control) const;
  // True if a bound control holds something that is not written.
  bool Pending() const;

  // Called by the control whose source this becomes: takes it in, and shows its field in it; one
  // already bound shows its field anew.
  void bind(BoundControl* control);
  void unbind(BoundControl* control);
  // Called by a control whose content was changed: a failure to write it is news.
  void edited() { told_ = false; }

 Q_SIGNALS:
  void recordsetChanged();
  // What was typed could not be written; the text is that of the store. Told once for each text.
  void writeFailed(int number, const QString& description);
  // A row could not be read. Its controls are empty and disabled, and filled once it can be.
  void readFailed(int number, const QString& description);

 private:
  // What stood in a control's field before it was written.
  struct Replaced {
    BoundControl* control;
    QVariant value;
  };
  enum class Reminder { No, Yes };
  bool write(Reminder reminder);
  void keep(const store::Failure& failure);
  void release();
  void remind() const;
  void leaveRow();
  void followRecordset();
  bool isOpen() const { return recordset_ != nullptr && recordset_->IsOpen(); }
  bool isAdding() const { return isOpen() && recordset_->Mode() == store::EditMode::Add; }
  bool hasRow() const;
  int fieldOf(const BoundControl& control) const;
  bool isPending(const BoundControl& control) const;
  bool isStored(const BoundControl& control) const;
  QVector<BoundControl*> controlsToWrite() const;
  void forgetUnchanged();
  void forgetChanges();
  void pushChanges();
  bool show(BoundControl& control);
  void accept(BoundControl& control);
  void showFields(qint64 position, const QVector<int>& fields);
  void newRowWritten();

  QString databaseName_;
  QString recordSource_;
  store::DatabasePtr database_;
  store::RecordsetPtr recordset_;
  QVector<BoundControl*> controls_;
  QVector<Replaced> replaced_;  // by the last write, in the current row
  QVector<QMetaObject::Connection> connections_;
  bool adding_ = false;  // the controls show a row being added
  bool writing_ = false;
  std::optional<store::Failure> kept_;  // why what was typed is not in the archive
  bool told_ = false;                   // of kept_, and nothing was typed since
  bool unread_ = false;                 // the row could not be read: its controls are empty
  QTimer retrying_;
};

}  // namespace platform
