#pragma once

#include <QAbstractTableModel>
#include <QVector>
#include <functional>

#include "platform/lookup_list.h"
#include "store/recordset.h"

namespace platform {

// What the cells of a column hold, and how they are edited.
struct ColumnSetup {
  store::FieldKind kind = store::FieldKind::Text;
  LookupListPtr list;  // null if the column does not choose from a list
  QString keyField;    // with a list: the field that is written with the chosen key
  int maxLength = 0;   // most characters of a text, 0 without limit
  QString mask;        // one '#', '9' or '0' a digit of a whole number; empty for any number
  bool editable = false;
};

struct GridColumn {
  QString caption;
  QString dataField;
  int width = 0;  // twips; 0 for the usual width
  bool visible = true;
  ColumnSetup setup;
};

// What the cells of a column hold, by the rows that are shown and the column's field.
using SetupSource = std::function<ColumnSetup(const store::Recordset&, const QString& dataField)>;

// The stored value as a cell shows it, on one line; empty for Null.
QString cellText(const QVariant& value, store::FieldKind kind);

// How long after a failure rows are not read, in milliseconds. For tests to lower.
inline int readPause = 2000;

// The rows of a recordset as a table. Holds no row itself: the store is asked for the cells that
// are shown. Failures of the store pass through. Not for table recordsets, which have no places.
class RecordModel final : public QAbstractTableModel {
  Q_OBJECT
 public:
  explicit RecordModel(QObject* parent = nullptr);

  const store::RecordsetPtr& recordset() const { return recordset_; }
  void setRecordset(store::RecordsetPtr recordset);
  const QVector<GridColumn>& columns() const { return columns_; }
  // With a source of setups the columns' own do not count.
  void setColumns(QVector<GridColumn> columns, SetupSource setups = {});

  // Row of the recordset's current record, -1 if there is none.
  int currentRow() const;
  // True from the announcement of a row's coming or going until it is done.
  bool isChanging() const { return changing_; }
  // True from readFailed to readRestored.
  bool isUnreadable() const { return unreadable_; }
  // Tries to read the rows again at once.
  void readAgain();
  // Moves the recordset to the first row whose cell in a column begins with a text; false and
  // no move if there is none.
  bool find(int column, const QString& text);
  // The field that an edit of the column writes.
  QString writtenField(int column) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  // Qt::EditRole is the stored value; for a column with a list, its key.
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  // Writes one value into the archive; the row becomes the current one. Fails as the store does,
  // with the row left as it was.
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 Q_SIGNALS:
  void leavingRow(bool* stays);  // as Recordset::aboutToMove
  void rowReached();             // the recordset has another current row
  // Rows cannot be read from now on: cells stay empty, and are tried again by themselves. Told
  // once.
  void readFailed(int number, const QString& description) const;
  void readRestored();  // they can

 private:
  // Places of a column's fields in the recordset, -1 if missing.
  struct Fields {
    int shown = -1;
    int key = -1;       // the field written, where a list is chosen from
    int selector = -1;  // the field whose number selects the shown text
  };

  void connectRecordset();
  void connectChanges();
  void resolveFields();
  void setUpColumns();
  Fields fieldsOf(const GridColumn& column) const;
  int writtenPlace(int column) const;
  void showChange(qint64 row, const QVector<int>& fields);
  void resetTo(store::RecordsetPtr recordset);
  QVariant valueAt(int row, int field) const;
  void pause() const;
  void endUnreadable();

  store::RecordsetPtr recordset_;
  QVector<GridColumn> columns_;
  SetupSource setups_;
  QVector<Fields> fields_;
  QVector<QMetaObject::Connection> connections_;
  int rows_ = 0;
  mutable bool pausing_ = false;     // after a failure to read
  mutable bool unreadable_ = false;  // a failure to read was told
  mutable bool readSince_ = false;   // a value, since all were asked for again
  mutable int failedRow_ = -1;
  mutable int locked_ = 0;  // failures to read since the file was locked
  bool changing_ = false;
};

}  // namespace platform
