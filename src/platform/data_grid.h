#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QTableView>
#include <QTimer>
#include <functional>

#include "platform/data_control.h"
#include "platform/grid_heading.h"
#include "platform/record_model.h"

namespace platform {

class ReadNotice;

// The rows of a data control as a table. Its current row and that of the recordset are the same:
// whoever moves one moves the other. Columns are told by their place from 0.
class DataGrid final : public QTableView {
  Q_OBJECT
 public:
  explicit DataGrid(QWidget* parent = nullptr);

  DataControl* DataSource() const { return source_; }
  // Shows the rows of a data control's recordset, whichever it has; null for none.
  void SetDataSource(DataControl* source);
  // With a source, what their cells hold is asked from it whenever rows come.
  void SetColumns(QVector<GridColumn> columns, SetupSource setups = {});
  void RemoveColumns() { SetColumns({}); }
  int ColumnCount() const;
  // The column, with the width it has on the screen.
  GridColumn Column(int column) const;
  // While off nothing is painted and the recordset's moves are not followed.
  void SetRedraw(bool on);
  // Writes what is being typed into a cell, and ends the typing. False if it was refused: the cell
  // is then still open, with what was typed.
  bool CommitCell();
  // True while a cell is open whose text was not accepted.
  bool IsRefused() const { return refused_ && IsEditing(); }
  // Why it could not be written; empty where whoever refused it has told.
  QString Refusal() const { return IsRefused() ? refusal_ : QString(); }
  // True while the list shows that its rows cannot be read.
  bool IsUnreadable() const { return model_->isUnreadable(); }
  // Shows the notice of a list that could not be opened, until there is one.
  void TellMissing(const QString& text);
  // Gives up what is being typed into a cell.
  void AbandonCell();
  // Puts the current cell on the clipboard: a text as it is stored, anything else as it is shown.
  void CopyCell() const;
  bool IsEditing() const { return state() == EditingState; }

  // During beforeUpdate: the field to be written (with a list, the field of its key) and the
  // value; invalid for a cell emptied, or text that is no number.
  QString PendingField() const { return pendingField_; }
  QVariant PendingValue() const { return pendingValue_; }
  void SetPendingValue(const QVariant& value) { pendingValue_ = value; }

  // The mark of the column that the rows are sorted by, in its heading; an empty field for none.
  void ShowOrder(const QString& dataField, Qt::SortOrder order);
  // Looks for the first row whose cell in the current column begins with the letters that were
  // typed within about a second.
  void keyboardSearch(const QString& text) override;

 Q_SIGNALS:
  void headClicked(int column);
  // A menu is asked for, at a place of the screen: for the current cell, whose column it is, or
  // for the heading of a column. -1 where there is neither.
  void menuWanted(int column, bool onCell, const QPoint& place);
  // A cell is about to be written; set *cancel to refuse what was typed.
  void beforeUpdate(bool* cancel);
  // The cell has been written; the pending field and value are what was.
  void afterUpdate();
  // Told once the key or click is done with: the time to say why. The cell gets the focus then.
  void updateRefused();
  // The cell could not be written. It stays open with what was typed, which is told once and tried
  // again; where the row is gone it shows what is stored.
  void writeFailed(int number, const QString& description);
  // Rows cannot be read; the cells are empty until they can be, and a notice in the list offers to
  // try again, or to leave the window.
  void readFailed(int number, const QString& description);
  void readRestored();
  void reloadAsked();  // of a list that could not be opened
  void leaveAsked();

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void commitData(QWidget* editor) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
  void changeEvent(QEvent* event) override;

 private:
  void setUpLook();
  void setRowHeight();
  void markOrder();
  void clickHead(int column);
  void typeLetter(QKeyEvent* event);
  void askForMenu();
  bool isSearching() const;
  void bindModel();
  void bindNotice();
  void showRecordset();
  void tryAgain();
  void setColumnWidths();
  void showCurrentRow();
  void moveRecordset(int row);
  // Moves the recordset; a failure is told.
  void moving(const std::function<void()>& move);
  void writeCell(const QModelIndex& cell, const QVariant& value);
  QWidget* openEditor() const;
  void complain();
  void keepCell(const QVariant& value, const store::Failure& failure);
  void retry();
  void forgetKept();
  int neighbour(int column, int step) const;
  int startColumn() const;

  RecordModel* model_;
  GridHeading* heading_;
  ReadNotice* notice_;
  QPointer<DataControl> source_;
  QString pendingField_;
  QVariant pendingValue_;
  int column_ = 0;  // the current column, kept while there is no current row
  QString orderField_;
  Qt::SortOrder order_ = Qt::AscendingOrder;
  QString sought_;  // letters typed one after the other
  QElapsedTimer typed_;
  QTimer returning_;  // to the recordset's row, where that could not be left
  QTimer complaining_;
  QTimer retrying_;
  std::pair<QVariant, int> kept_;  // what could not be written, and the failure that was told
  bool refused_ = false;
  QString refusal_;
  bool telling_ = false;
  bool following_ = false;  // the view is being moved to the recordset's row
};

}  // namespace platform
