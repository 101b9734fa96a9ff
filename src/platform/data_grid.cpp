#include "platform/data_grid.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <algorithm>

#include "platform/form.h"
#include "platform/grid_editors.h"
#include "platform/handlers.h"
#include "platform/read_notice.h"

namespace platform {

namespace {

constexpr int kUsualWidth = 90;
constexpr int kSmallestWidth = 12;
constexpr int kRowPadding = 6;
// Shorter than what the store remembers a lock for: a try by itself does not stand still.
constexpr int kRetryMilliseconds = 2000;
constexpr qint64 kSearchPause = 1000;  // milliseconds after which letters begin a new search

bool isShortcut(const QKeyEvent* event) {
  return (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
}

bool isTyping(const QKeyEvent* event) {
  return !event->text().isEmpty() && event->text().at(0).isPrint();
}

}  // namespace

DataGrid::DataGrid(QWidget* parent)
    : QTableView(parent),
      model_(new RecordModel(this)),
      heading_(new GridHeading(this)),
      notice_(new ReadNotice(*this)) {
  setHorizontalHeader(heading_);
  // A view that does not sort by itself takes the mark away from the heading it is given.
  heading_->setSortIndicatorShown(true);
  setUpLook();
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setEditTriggers(DoubleClicked | EditKeyPressed);
  setTabKeyNavigation(false);
  setModel(model_);
  setItemDelegate(new CellDelegate(
      [this](const QModelIndex& cell, const QVariant& value) { writeCell(cell, value); }, this));
  bindModel();
  bindNotice();
}

void DataGrid::setUpLook() {
  setAlternatingRowColors(true);
  setWordWrap(false);
  setCornerButtonEnabled(false);
  setHorizontalScrollMode(ScrollPerPixel);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  setRowHeight();
  heading_->setMinimumSectionSize(kSmallestWidth);
  heading_->setDefaultSectionSize(kUsualWidth);
  markOrder();
}

void DataGrid::setRowHeight() {
  const int height = fontMetrics().height() + kRowPadding;
  verticalHeader()->setMinimumSectionSize(height);
  verticalHeader()->setDefaultSectionSize(height);
}

// Connected after setModel: the selection has then taken note of the model's changes.
void DataGrid::bindModel() {
  connect(model_, &RecordModel::rowReached, this, &DataGrid::showCurrentRow);
  connect(model_, &RecordModel::leavingRow, this, [this](bool* stays) {
    if (!CommitCell()) *stays = true;
  });
  connect(model_, &RecordModel::modelReset, this, &DataGrid::showCurrentRow);
  connect(model_, &RecordModel::rowsInserted, this, &DataGrid::showCurrentRow);
  connect(model_, &RecordModel::rowsRemoved, this, &DataGrid::showCurrentRow);
  returning_.setSingleShot(true);
  connect(&returning_, &QTimer::timeout, this, &DataGrid::showCurrentRow);
  complaining_.setSingleShot(true);
  connect(&complaining_, &QTimer::timeout, this, &DataGrid::complain);
  connect(&retrying_, &QTimer::timeout, this, &DataGrid::retry);
  connect(heading_, &QHeaderView::sectionClicked, this, &DataGrid::clickHead);
  connect(heading_, &GridHeading::menuWanted, this, [this](int column, const QPoint& place) {
    if (CommitCell()) Q_EMIT menuWanted(column, false, place);
  });
}

void DataGrid::bindNotice() {
  connect(model_, &RecordModel::readFailed, notice_, [this](int, const QString& description) {
    notice_->Tell(QStringLiteral("L'archivio non si legge: ") + description);
  });
  connect(model_, &RecordModel::readFailed, this, &DataGrid::readFailed);
  connect(model_, &RecordModel::readRestored, notice_, &QWidget::hide);
  connect(model_, &RecordModel::readRestored, this, &DataGrid::readRestored);
  connect(notice_, &ReadNotice::retryAsked, this, &DataGrid::tryAgain);
  connect(notice_, &ReadNotice::leaveAsked, this, &DataGrid::leaveAsked);
}

void DataGrid::TellMissing(const QString& text) {
  notice_->Tell(text);
}

void DataGrid::tryAgain() {
  if (model_->recordset() == nullptr) {
    Q_EMIT reloadAsked();
    return;
  }
  setFocus();
  model_->readAgain();
}

void DataGrid::showRecordset() {
  model_->setRecordset(source_->Recordset());
  if (model_->recordset() != nullptr) notice_->hide();
}

void DataGrid::SetDataSource(DataControl* source) {
  if (source_ != nullptr) source_->disconnect(this);
  source_ = source;
  model_->setRecordset(source == nullptr ? nullptr : source->Recordset());
  if (source == nullptr) return;
  connect(source, &DataControl::recordsetChanged, this, &DataGrid::showRecordset);
  connect(source, &QObject::destroyed, this, [this] { model_->setRecordset(nullptr); });
}

void DataGrid::SetColumns(QVector<GridColumn> columns, SetupSource setups) {
  // The columns of another list are looked at from their beginning.
  column_ = 0;
  model_->setColumns(std::move(columns), std::move(setups));
  setColumnWidths();
  horizontalScrollBar()->setValue(0);
  markOrder();
}

void DataGrid::ShowOrder(const QString& dataField, Qt::SortOrder order) {
  orderField_ = dataField;
  order_ = order;
  markOrder();
}

void DataGrid::markOrder() {
  const QVector<GridColumn>& columns = model_->columns();
  const auto sorted = std::find_if(columns.begin(), columns.end(), [this](const GridColumn& each) {
    return each.dataField.compare(orderField_, Qt::CaseInsensitive) == 0;
  });
  const bool marked = !orderField_.isEmpty() && sorted != columns.end();
  heading_->setSortIndicator(marked ? static_cast<int>(sorted - columns.begin()) : -1, order_);
}

// A click turns the mark by itself, whether the rows get sorted or not.
void DataGrid::clickHead(int column) {
  markOrder();
  if (!heading_->WasDragged() && CommitCell()) Q_EMIT headClicked(column);
}

void DataGrid::setColumnWidths() {
  const QVector<GridColumn>& columns = model_->columns();
  for (int column = 0; column < ColumnCount(); ++column) {
    const int width = toPixels(columns.at(column).width);
    setColumnHidden(column, false);
    setColumnWidth(column, width > 0 ? width : kUsualWidth);
    setColumnHidden(column, !columns.at(column).visible);
  }
}

int DataGrid::ColumnCount() const {
  return static_cast<int>(model_->columns().size());
}

GridColumn DataGrid::Column(int column) const {
  GridColumn shown = model_->columns().at(column);
  if (!isColumnHidden(column)) shown.width = toTwips(columnWidth(column));
  return shown;
}

void DataGrid::SetRedraw(bool on) {
  setUpdatesEnabled(on);
  if (on) showCurrentRow();
}

QWidget* DataGrid::openEditor() const {
  return state() == EditingState ? indexWidget(currentIndex()) : nullptr;
}

bool DataGrid::CommitCell() {
  QWidget* editor = openEditor();
  if (editor == nullptr) return true;
  commitData(editor);
  closeEditor(editor, QAbstractItemDelegate::NoHint);
  return !refused_;
}

void DataGrid::commitData(QWidget* editor) {
  // An editor that is being closed loses the focus too, and has been dealt with.
  if (editor == nullptr || editor->isHidden()) return;
  refused_ = false;
  QTableView::commitData(editor);
}

void DataGrid::complain() {
  // Whoever tells the user takes the focus from the cell, which is refused again.
  if (telling_) return;
  const QScopedValueRollback<bool> guard(telling_, true);
  if (!retrying_.isActive()) Q_EMIT updateRefused();
  if (QWidget* editor = openEditor()) editor->setFocus();
}

// A text that is still being typed is written as the cell is left.
void DataGrid::retry() {
  QWidget* editor = openEditor();
  if (editor == nullptr) return forgetKept();
  if (BoundControl::of(editor)->Value() != kept_.first) return;
  const QScopedValueRollback<bool> guard(telling_, true);
  CommitCell();
  complaining_.stop();
}

void DataGrid::forgetKept() {
  kept_ = {};
  retrying_.stop();
}

void DataGrid::AbandonCell() {
  if (QWidget* editor = openEditor()) closeEditor(editor, QAbstractItemDelegate::RevertModelCache);
}

bool DataGrid::isSearching() const {
  return !sought_.isEmpty() && !typed_.hasExpired(kSearchPause);
}

void DataGrid::keyboardSearch(const QString& text) {
  if (!currentIndex().isValid()) return;
  if (!isSearching()) sought_.clear();
  sought_ += text;
  typed_.start();
  const int column = currentIndex().column();
  moving([&] {
    if (!model_->find(column, sought_)) QApplication::beep();
  });
}

void DataGrid::showCurrentRow() {
  if (following_ || !updatesEnabled() || model_->isChanging()) return;
  const int row = model_->currentRow();
  if (row == currentIndex().row()) return;
  const QScopedValueRollback<bool> guard(following_, true);
  const QModelIndex cell = model_->index(row, startColumn());
  if (!cell.isValid()) {
    selectionModel()->clear();
    return;
  }
  const int across = horizontalScrollBar()->value();
  setCurrentIndex(cell);
  horizontalScrollBar()->setValue(across);
}

void DataGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (!current.isValid() || model_->isChanging()) return;
  column_ = current.column();
  // Letters made of several keys are typed into cells that cannot be edited too.
  setAttribute(Qt::WA_InputMethodEnabled);
  if (following_) return;
  sought_.clear();
  moveRecordset(current.row());
}

void DataGrid::moving(const std::function<void()>& move) {
  try {
    move();
  } catch (const store::Failure& failure) {
    if (failure.number() != store::failure::kTold) {
      Q_EMIT readFailed(failure.number(), failure.description());
    }
  }
}

void DataGrid::moveRecordset(int row) {
  const store::RecordsetPtr recordset = model_->recordset();
  if (recordset == nullptr || recordset->AbsolutePosition() == row) return;
  moving([&] { recordset->SetAbsolutePosition(row); });
  // If the recordset stays where it is, the view returns once the key or click is done with.
  if (model_->currentRow() != row) returning_.start(0);
}

int DataGrid::neighbour(int column, int step) const {
  int next = column + step;
  while (next >= 0 && next < ColumnCount() && isColumnHidden(next)) next += step;
  return next >= 0 && next < ColumnCount() ? next : column;
}

int DataGrid::startColumn() const {
  const bool usable = column_ < ColumnCount() && !isColumnHidden(column_);
  return usable ? column_ : neighbour(-1, 1);
}

QModelIndex DataGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  // Keys that a cell being typed into has no use for lead away from it.
  if (!CommitCell()) return currentIndex();
  if (action == MoveHome) return model_->index(0, startColumn());
  if (action == MoveEnd) return model_->index(model_->rowCount() - 1, startColumn());
  return QTableView::moveCursor(action, modifiers);
}

// The current row stays marked whatever is clicked.
QItemSelectionModel::SelectionFlags DataGrid::selectionCommand(const QModelIndex& index,
                                                               const QEvent* event) const {
  const auto command = QTableView::selectionCommand(index, event);
  return command.testFlag(QItemSelectionModel::Deselect) ? QItemSelectionModel::NoUpdate : command;
}

void DataGrid::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) {
    CopyCell();
  } else if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
    askForMenu();
  } else if (event->key() == Qt::Key_F2) {
    event->setAccepted(!isShortcut(event) && edit(currentIndex(), EditKeyPressed, event));
  } else if (isTyping(event)) {
    typeLetter(event);
  } else {
    QTableView::keyPressEvent(event);
  }
}

void DataGrid::typeLetter(QKeyEvent* event) {
  event->setAccepted(!isShortcut(event));
  if (!event->isAccepted()) return;
  const bool blank = event->key() == Qt::Key_Space && !isSearching();
  if (!blank) return keyboardSearch(event->text());
  // Only a cell that is toggled in place has use for it.
  edit(currentIndex(), AnyKeyPressed, event);
}

void DataGrid::inputMethodEvent(QInputMethodEvent* event) {
  if (event->commitString().isEmpty()) return QTableView::inputMethodEvent(event);
  keyboardSearch(event->commitString());
  event->accept();
}

// By a key, under the current cell.
void DataGrid::askForMenu() {
  const QModelIndex cell = currentIndex();
  scrollTo(cell);
  const QPoint place = cell.isValid() ? visualRect(cell).bottomLeft() : QPoint();
  Q_EMIT menuWanted(cell.column(), cell.isValid(), viewport()->mapToGlobal(place));
}

void DataGrid::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Keyboard) return askForMenu();
  const QModelIndex cell = indexAt(event->pos());
  const bool onCell = cell.isValid() && cell == currentIndex();
  Q_EMIT menuWanted(cell.column(), onCell, event->globalPos());
}

// A cell shows the beginning of a long text, in one line.
void DataGrid::CopyCell() const {
  const QModelIndex cell = currentIndex();
  if (!cell.isValid()) return;
  const ColumnSetup& setup = model_->columns().at(cell.column()).setup;
  const bool text = setup.kind == store::FieldKind::Text && setup.list == nullptr;
  const QVariant value = cell.data(text ? Qt::EditRole : Qt::DisplayRole);
  QGuiApplication::clipboard()->setText(value.toString());
}

void DataGrid::mousePressEvent(QMouseEvent* event) {
  if (CommitCell()) QTableView::mousePressEvent(event);
}

void DataGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  using Delegate = QAbstractItemDelegate;
  if (editor == nullptr || editor->isHidden()) return;  // closed already
  if (refused_ && hint != Delegate::RevertModelCache) return complaining_.start(0);
  refused_ = false;
  forgetKept();
  const bool steps = hint == Delegate::EditNextItem || hint == Delegate::EditPreviousItem;
  QTableView::closeEditor(editor, steps ? Delegate::NoHint : hint);
  const QModelIndex cell = currentIndex();
  if (!steps || !cell.isValid()) return;
  const int step = hint == Delegate::EditNextItem ? 1 : -1;
  setCurrentIndex(cell.siblingAtColumn(neighbour(cell.column(), step)));
}

void DataGrid::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) setRowHeight();
}

void DataGrid::writeCell(const QModelIndex& cell, const QVariant& value) {
  const QPersistentModelIndex target(cell);
  pendingField_ = model_->writtenField(cell.column());
  pendingValue_ = value;
  try {
    bool cancel = false;
    Q_EMIT beforeUpdate(&cancel);
    refused_ = cancel;
    refusal_.clear();
    if (cancel) forgetKept();
    if (cancel || !target.isValid()) return;
    if (model_->setData(target, pendingValue_, Qt::EditRole)) Q_EMIT afterUpdate();
  } catch (const store::Failure& failure) {
    keepCell(value, failure);
  }
}

// A cell that is toggled in place, or whose row is gone, has nothing to keep.
void DataGrid::keepCell(const QVariant& value, const store::Failure& failure) {
  const std::pair<QVariant, int> news(value, failure.number());
  refusal_ = failure.description();
  refused_ = openEditor() != nullptr && failure.number() != store::failure::kRecordDeleted;
  if (refused_) retrying_.start(kRetryMilliseconds);
  if (refused_ && kept_ == news) {
    if (!telling_ && isActiveWindow()) QApplication::beep();
    return;
  }
  kept_ = refused_ ? news : std::pair<QVariant, int>();
  if (failure.number() != store::failure::kTold) {
    Q_EMIT writeFailed(failure.number(), failure.description());
  }
}

}  // namespace platform
