#pragma once

#include <QObject>
#include <QVector>

#include "store/database.h"

namespace platform {

class BoundControl;

// Joins bound controls to a recordset: shows the current row in them, and writes what was typed
// before the current row changes. Several data controls can share one recordset object.
class DataControl final : public QObject {
  Q_OBJECT
 public:
  explicit DataControl(QObject* parent = nullptr);
  ~DataControl() override;

  QString DatabaseName() const { return databaseName_; }
  // Path of the archive that Refresh opens; closes the one open before.
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
  // The same, but a failure is told by writeFailed; false if there was one.
  bool writePending();
  // True if a bound control holds something that is not written.
  bool Pending() const;

  // Called by the control whose source this becomes: takes it in, and shows its field in it; one
  // already bound shows its field anew.
  void bind(BoundControl* control);
  void unbind(BoundControl* control);

 Q_SIGNALS:
  void recordsetChanged();
  // UpdateRecord failed while the user moved on; the text is that of the store.
  void writeFailed(int number, const QString& description);

 private:
  void followRecordset();
  bool isOpen() const { return recordset_ != nullptr && recordset_->IsOpen(); }
  bool isAdding() const { return isOpen() && recordset_->Mode() == store::EditMode::Add; }
  bool hasRow() const;
  int fieldOf(const BoundControl& control) const;
  QVariant storedValue(const BoundControl& control) const;
  bool isPending(const BoundControl& control) const;
  bool isStored(const BoundControl& control) const;
  QVector<BoundControl*> controlsToWrite() const;
  void forgetUnchanged();
  void forgetChanges();
  void pushChanges();
  void show(BoundControl& control);
  void accept(BoundControl& control);
  void showFields(qint64 position, const QVector<int>& fields);
  void newRowWritten();

  QString databaseName_;
  QString recordSource_;
  store::DatabasePtr database_;
  store::RecordsetPtr recordset_;
  QVector<BoundControl*> controls_;
  QVector<QMetaObject::Connection> connections_;
  bool adding_ = false;  // the controls show a row being added
  bool writing_ = false;
};

}  // namespace platform
