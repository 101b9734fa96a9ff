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
    goTo(place, c.column);
    // The first key opens the cell, and belongs to what is typed.
    type(c.typed.left(1));
    QApplication::processEvents();
    type(c.typed.mid(1));
    press(Qt::Key_Return);
    EXPECT_EQ(stored(place, c.field), c.stored) << qPrintable(c.typed);
    EXPECT_EQ(row(), place++);
    EXPECT_EQ(editor(), nullptr);
  }
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
  type("Uno");
  books_->MoveLast();
  EXPECT_EQ(stored(1, "Titolo"), "Uno");
  EXPECT_EQ(books_->AbsolutePosition(), 39);
  type("Ultimo");
  QString seen;
  QObject::connect(&grid_, &DataGrid::headClicked, &grid_,
                   [&](int column) { seen = stored(39, "Titolo") + QString::number(column); });
  clickHead(GridArchive::Year);
  EXPECT_EQ(seen, "Ultimo1");
}

}  // namespace
}  // namespace platform
