#include "platform/data_grid.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "grid_archive.h"
#include "platform/bound_control.h"

namespace platform {
namespace {

TEST(CellText, IsAsTheUserReadsIt) {
  using store::FieldKind;
  const struct {
    FieldKind kind;
    QVariant value;
    QString text;
  } cases[] = {
      {FieldKind::Text, "uno\r\ndue\ntre", "uno due tre"},
      {FieldKind::Text, QString(5000, u'x'), QString(200, u'x')},
      {FieldKind::Number, 0.1 + 0.2, "0,3"},
      {FieldKind::Number, 12345678.25, "12345678,25"},
      {FieldKind::Date, QVariant(), ""},
      {FieldKind::Time, 90061, "25:01:01"},
      {FieldKind::YesNo, -1, "Sì"},
  };
  for (const auto& c : cases) EXPECT_EQ(cellText(c.value, c.kind), c.text) << qPrintable(c.text);
}

class DataGridTest : public ::testing::Test {
 protected:
  DataGridTest() {
    around_.resize(400, 300);
    grid_.resize(400, 300);
    source_.SetRecordset(books_);
    grid_.SetDataSource(&source_);
    grid_.SetColumns(archive_.columns());
    around_.show();
    QApplication::setActiveWindow(&around_);
    grid_.setFocus();
  }

  QString stored(int row, const QString& field) { return archive_.stored(row, field); }
  int row() const { return grid_.currentIndex().row(); }
  void goTo(int row, int column) { grid_.setCurrentIndex(grid_.model()->index(row, column)); }
  QWidget* editor() const { return grid_.indexWidget(grid_.currentIndex()); }
  // Keys go to whatever has the focus, as from a keyboard.
  void press(Qt::Key key) {
    QTest::keyClick(target(), key);
    QApplication::processEvents();
  }
  void type(const QString& text) {
    for (const QChar letter : text) QTest::keyClick(target(), letter.toLatin1());
  }
  // Opens a cell, types into it and ends that by a key.
  void enter(int row, int column, const QString& text, Qt::Key last = Qt::Key_Return) {
    goTo(row, column);
    press(Qt::Key_F2);
    ASSERT_NE(editor(), nullptr);
    type(text);
    press(last);
  }
  void clickHead(int column) {
    const QPoint place(grid_.columnViewportPosition(column) + 20, 5);
    QTest::mouseClick(grid_.horizontalHeader()->viewport(), Qt::LeftButton, {}, place);
  }
  QWidget* target() {
    if (QWidget* popup = QApplication::activePopupWidget()) {
      return popup->focusWidget() != nullptr ? popup->focusWidget() : popup;
    }
    return editor() != nullptr ? editor() : &grid_;
  }

  GridArchive archive_{40};
  store::RecordsetPtr books_ = archive_.books();
  DataControl source_;
  QWidget around_;
  DataGrid grid_{&around_};
  QAbstractItemModelTester tester_{grid_.model(),
                                   QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(DataGridTest, StandsOnTheRowOfTheRecordset) {
  goTo(0, GridArchive::Year);
  grid_.horizontalScrollBar()->setValue(60);
  const struct {
    std::function<void()> move;
    int row;
  } steps[] = {
      {[&] { press(Qt::Key_Down); }, 1}, {[&] { press(Qt::Key_End); }, 39},
      {[&] { press(Qt::Key_Home); }, 0}, {[&] { books_->MoveLast(); }, 39},
      {[&] { books_->MoveNext(); }, -1}, {[&] { books_->Requery(); }, 0},
      {[&] { books_->MoveNext(); }, 1},  {[&] { books_->Delete(); }, -1},
      {[&] { books_->MoveNext(); }, 1},
  };
  for (const auto& step : steps) {
    step.move();
    EXPECT_EQ(row(), step.row);
    EXPECT_EQ(std::max(books_->AbsolutePosition(), qint64{-1}), step.row);
    EXPECT_EQ(grid_.selectionModel()->hasSelection(), step.row >= 0);
    EXPECT_EQ(grid_.currentIndex().column(), step.row < 0 ? -1 : GridArchive::Year);
    EXPECT_EQ(grid_.horizontalScrollBar()->value(), 60);
  }
  EXPECT_EQ(grid_.model()->index(1, GridArchive::Title).data(), "Libro 3");
  EXPECT_TRUE(grid_.viewport()->rect().intersects(grid_.visualRect(grid_.currentIndex())));
}

TEST_F(DataGridTest, ReturnsToTheRowThatCouldNotBeLeft) {
  QObject::connect(books_.get(), &store::Recordset::aboutToMove, &grid_,
                   [](bool* stays) { *stays = true; });
  press(Qt::Key_Down);
  EXPECT_EQ(books_->AbsolutePosition(), 0);
  QApplication::processEvents();
  EXPECT_TRUE(grid_.selectionModel()->isRowSelected(0, {}));
}

TEST_F(DataGridTest, WritesWhatIsTyped) {
  const struct {
    int column;
    QString typed, field, stored;
  } cases[] = {
      {GridArchive::Year, "1a9b84", "Anno", "1984"},
      {GridArchive::Price, "7,25", "Prezzo", "7.25"},
      {GridArchive::Bought, "31022000", "Acquisto", ""},
      {GridArchive::Publisher, "ell", "Editore", "5"},
  };
  for (int place = 4; const auto& c : cases) {
    enter(place, c.column, c.typed);
    EXPECT_EQ(stored(place, c.field), c.stored) << qPrintable(c.typed);
    EXPECT_EQ(row(), place++);
    EXPECT_EQ(editor(), nullptr);
  }
}

TEST_F(DataGridTest, LooksUpLettersInTheCurrentColumn) {
  const struct {
    int row, column;
    QVariant value;
  } cells[] = {
      {21, GridArchive::Title, "l'[erba] è"},
      {22, GridArchive::Title, "L'Àncora"},
      {23, GridArchive::Year, 2001},
      {24, GridArchive::Price, 7.25},
      {25, GridArchive::Bought, 36527},
      {26, GridArchive::Length, 45296},
      {27, GridArchive::Read, -1},
      {28, GridArchive::Publisher, 21},
  };
  for (const auto& cell : cells) {
    ASSERT_TRUE(grid_.model()->setData(grid_.model()->index(cell.row, cell.column), cell.value));
  }
  const struct {
    int column;
    QString typed;
    int row;
  } cases[] = {
      {GridArchive::Title, "L'", 21},    {GridArchive::Title, "l'[ERBA] ", 21},
      {GridArchive::Title, "l'à", 22},   {GridArchive::Title, "libro 4", 3},
      {GridArchive::Title, "*o", 9},     {GridArchive::Year, "20", 23},
      {GridArchive::Price, "7,2", 24},   {GridArchive::Bought, "02-01-2", 25},
      {GridArchive::Length, "12:", 26},  {GridArchive::Read, "s", 27},
      {GridArchive::Publisher, "l", 28},
  };
  for (const auto& c : cases) {
    goTo(8, c.column);
    goTo(9, c.column);
    for (const QChar letter : c.typed) grid_.keyboardSearch(letter);
    EXPECT_EQ(row(), c.row) << qPrintable(c.typed);
    EXPECT_EQ(grid_.currentIndex().column(), c.column);
    EXPECT_EQ(editor(), nullptr);
  }
  // Blanks belong to what is looked up; alone they turn a yes into a no.
  goTo(9, GridArchive::Title);
  press(Qt::Key_Space);
  type("libro 12");
  EXPECT_EQ(row(), 11);
  goTo(9, GridArchive::Read);
  press(Qt::Key_Space);
  EXPECT_EQ(stored(9, "Letto"), "-1");
}

TEST_F(DataGridTest, GoesToTheNextVisibleColumnByTab) {
  grid_.setColumnHidden(GridArchive::Year, true);
  enter(0, GridArchive::Title, "1", Qt::Key_Tab);
  EXPECT_EQ(stored(0, "Titolo"), "1");
  EXPECT_EQ(grid_.currentIndex().column(), GridArchive::Price);
  enter(0, GridArchive::Publisher, "el", Qt::Key_Tab);
  EXPECT_EQ(stored(0, "Editore"), "4");
  EXPECT_EQ(grid_.currentIndex().column(), GridArchive::Pages);
}

TEST_F(DataGridTest, AsksBeforeItWrites) {
  bool refuse = true;
  QObject::connect(&grid_, &DataGrid::beforeUpdate, &grid_, [&](bool* cancel) {
    EXPECT_EQ(grid_.PendingField(), "Prezzo");
    if (!grid_.PendingValue().isValid()) grid_.SetPendingValue(0.5);
    *cancel = refuse;
  });
  QSignalSpy heads(&grid_, &DataGrid::headClicked);
  enter(1, GridArchive::Price, "9");
  clickHead(GridArchive::Year);
  EXPECT_EQ(heads.size(), 0);
  EXPECT_EQ(stored(1, "Prezzo"), "12.5");
  press(Qt::Key_Escape);
  refuse = false;
  enter(1, GridArchive::Price, "gratis");
  EXPECT_EQ(stored(1, "Prezzo"), "0.5");
}

TEST_F(DataGridTest, KeepsACellThatCannotBeWritten) {
  QSignalSpy failures(&grid_, &DataGrid::writeFailed);
  enter(1, GridArchive::Title, "Libro 1");
  EXPECT_THROW(books_->MoveLast(), store::Failure);
  clickHead(GridArchive::Year);
  press(Qt::Key_Down);
  ASSERT_EQ(failures.size(), 1);
  EXPECT_EQ(failures.takeFirst().at(0), store::failure::kDuplicateKey);
  EXPECT_EQ(row(), 1);
  ASSERT_NE(editor(), nullptr);
  EXPECT_EQ(BoundControl::of(editor())->Text(), "Libro 1");
  type("bis");
  press(Qt::Key_Return);
  EXPECT_EQ(stored(1, "Titolo"), "Libro 1bis");
  EXPECT_EQ(editor(), nullptr);
  EXPECT_EQ(failures.size(), 0);
}

// The caller may run the query again in the middle of a cell's writing.
TEST_F(DataGridTest, OutlivesARequeryWhileACellIsWritten) {
  QObject::connect(&grid_, &DataGrid::beforeUpdate, &grid_, [this] { books_->Requery(); });
  for (const int column : {GridArchive::Title, GridArchive::Publisher}) {
    enter(6, column, "el");
    EXPECT_EQ(row(), 0);
    EXPECT_EQ(editor(), nullptr);
  }
}

TEST_F(DataGridTest, WritesTheCellBeforeTheRowIsLeftOrTheHeadIsClicked) {
  goTo(1, GridArchive::Title);
  press(Qt::Key_F2);
  type("Uno");
  books_->MoveLast();
  EXPECT_EQ(stored(1, "Titolo"), "Uno");
  EXPECT_EQ(books_->AbsolutePosition(), 39);
  press(Qt::Key_F2);
  type("Ultimo");
  QString seen;
  QObject::connect(&grid_, &DataGrid::headClicked, &grid_,
                   [&](int column) { seen = stored(39, "Titolo") + QString::number(column); });
  clickHead(GridArchive::Year);
  EXPECT_EQ(seen, "Ultimo1");
}

TEST_F(DataGridTest, MarksTheOrderAndKnowsADragFromAClick) {
  QHeaderView* heading = grid_.horizontalHeader();
  grid_.ShowOrder("anno", Qt::DescendingOrder);
  const QSignalSpy heads(&grid_, &DataGrid::headClicked);
  const QPoint from(grid_.columnViewportPosition(GridArchive::Year) + 20, 5);
  QWidget* place = heading->viewport();
  QTest::mousePress(place, Qt::LeftButton, {}, from);
  for (const int way : {20, 40}) QTest::mouseMove(place, from + QPoint(way, 0));
  QTest::mouseRelease(place, Qt::LeftButton, {}, from + QPoint(40, 0));
  EXPECT_EQ(heads.size(), 0);
  clickHead(GridArchive::Year);
  EXPECT_EQ(heads.size(), 1);
  EXPECT_TRUE(heading->isSortIndicatorShown());
  EXPECT_EQ(heading->sortIndicatorSection(), GridArchive::Year);
  EXPECT_EQ(heading->sortIndicatorOrder(), Qt::DescendingOrder);
  // The next list is another one, in its own order.
  goTo(0, GridArchive::Pages);
  QVector<GridColumn> columns = archive_.columns();
  columns.removeAt(GridArchive::Title);
  grid_.SetColumns(columns);
  EXPECT_EQ(heading->sortIndicatorSection(), GridArchive::Year - 1);
  EXPECT_EQ(grid_.currentIndex().column(), 0);
  EXPECT_EQ(grid_.horizontalScrollBar()->value(), 0);
}

}  // namespace
}  // namespace platform
