#include "platform/data_grid.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "grid_archive.h"

namespace platform {
namespace {

// Notes the keys that the grid leaves to its surroundings.
class Surroundings final : public QWidget {
 public:
  QVector<int> keys;

 protected:
  void keyPressEvent(QKeyEvent* event) override { keys << event->key(); }
};

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

  int row() const { return grid_.currentIndex().row(); }
  void goTo(int row, int column) { grid_.setCurrentIndex(grid_.model()->index(row, column)); }
  QWidget* editor() const { return grid_.indexWidget(grid_.currentIndex()); }
  void press(int key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(&grid_, static_cast<Qt::Key>(key), modifiers);
    QApplication::processEvents();
  }
  // Types into whatever has the focus, as a keyboard does.
  void type(const QString& text) {
    for (const QChar letter : text) QTest::keyClick(target(), letter.toLatin1());
  }
  void end(Qt::Key key) {
    QTest::keyClick(target(), key);
    QApplication::processEvents();
  }
  QWidget* target() const {
    QWidget* popup = QApplication::activePopupWidget();
    if (popup != nullptr) return popup->focusWidget() != nullptr ? popup->focusWidget() : popup;
    return editor() != nullptr ? editor() : const_cast<DataGrid*>(&grid_);
  }

  GridArchive archive_{40};
  store::RecordsetPtr books_ = archive_.books();
  DataControl source_;
  Surroundings around_;
  DataGrid grid_{&around_};
};

TEST_F(DataGridTest, MovesTheRecordsetByKeysAndClicks) {
  QSignalSpy moves(books_.get(), &store::Recordset::moved);
  EXPECT_EQ(row(), 0);
  press(Qt::Key_Down);
  EXPECT_EQ(books_->AbsolutePosition(), 1);
  press(Qt::Key_PageDown);
  EXPECT_GT(books_->AbsolutePosition(), 5);
  press(Qt::Key_End);
  EXPECT_EQ(books_->AbsolutePosition(), 39);
  press(Qt::Key_Home);
  EXPECT_EQ(books_->AbsolutePosition(), 0);
  const QRect third = grid_.visualRect(grid_.model()->index(2, GridArchive::Year));
  QTest::mouseClick(grid_.viewport(), Qt::LeftButton, {}, third.center());
  EXPECT_EQ(books_->AbsolutePosition(), 2);
  EXPECT_EQ(moves.size(), 5);
}

TEST_F(DataGridTest, FollowsTheRecordset) {
  goTo(0, GridArchive::Year);
  grid_.horizontalScrollBar()->setValue(120);
  books_->MoveLast();
  EXPECT_EQ(row(), 39);
  EXPECT_EQ(grid_.currentIndex().column(), GridArchive::Year);
  EXPECT_EQ(grid_.horizontalScrollBar()->value(), 120);
  EXPECT_TRUE(grid_.viewport()->rect().intersects(grid_.visualRect(grid_.currentIndex())));
  EXPECT_TRUE(grid_.selectionModel()->isRowSelected(39, {}));
  books_->MoveNext();
  EXPECT_FALSE(grid_.currentIndex().isValid());
  EXPECT_FALSE(grid_.selectionModel()->hasSelection());
  books_->Requery();
  EXPECT_EQ(row(), 0);
  EXPECT_EQ(grid_.currentIndex().column(), GridArchive::Year);
}

TEST_F(DataGridTest, ReturnsToTheRowThatCouldNotBeLeft) {
  QObject::connect(books_.get(), &store::Recordset::aboutToMove, &grid_,
                   [] { throw store::Failure(store::failure::kDiskError, {}); });
  EXPECT_THROW(press(Qt::Key_Down), store::Failure);
  EXPECT_EQ(books_->AbsolutePosition(), 0);
  QApplication::processEvents();
  EXPECT_EQ(row(), 0);
  EXPECT_TRUE(grid_.selectionModel()->isRowSelected(0, {}));
}

TEST_F(DataGridTest, LeavesTheRecordsetWhereItIsWhenRowsComeAndGo) {
  goTo(5, GridArchive::Title);
  QSignalSpy moves(books_.get(), &store::Recordset::moved);
  books_->Delete();
  EXPECT_EQ(books_->AbsolutePosition(), -1);
  EXPECT_EQ(row(), -1);
  EXPECT_EQ(moves.size(), 0);
  books_->MoveNext();
  EXPECT_EQ(row(), 5);
  EXPECT_EQ(grid_.currentIndex().data().toString(), QStringLiteral("Libro 7"));
}

TEST_F(DataGridTest, ShowsTheRecordsetThatTheSourceHas) {
  source_.SetRecordset(archive_.database().OpenRecordset(
      QStringLiteral("SELECT * FROM LIBRO WHERE Id = 4"), store::RecordsetType::Dynaset));
  EXPECT_EQ(grid_.model()->rowCount(), 1);
  EXPECT_EQ(row(), 0);
  grid_.SetDataSource(nullptr);
  EXPECT_EQ(grid_.model()->rowCount(), 0);
}

TEST_F(DataGridTest, CatchesUpAfterRedrawHasBeenOff) {
  grid_.SetRedraw(false);
  books_->SetAbsolutePosition(30);
  EXPECT_EQ(row(), 0);
  grid_.SetRedraw(true);
  EXPECT_EQ(row(), 30);
}

TEST_F(DataGridTest, KeepsWidthsInTwips) {
  EXPECT_EQ(grid_.Column(GridArchive::Title).width, 3000);
  EXPECT_EQ(grid_.Column(GridArchive::Year).width, 90 * 15);
  grid_.horizontalHeader()->resizeSection(GridArchive::Title, 150);
  EXPECT_EQ(grid_.Column(GridArchive::Title).width, 2250);
  auto columns = archive_.columns();
  columns[GridArchive::Price].visible = false;
  grid_.SetColumns(columns);
  EXPECT_TRUE(grid_.isColumnHidden(GridArchive::Price));
  EXPECT_EQ(grid_.Column(GridArchive::Price).width, 900);
  EXPECT_EQ(grid_.horizontalHeader()->sectionSize(GridArchive::Pages), 40);
  grid_.RemoveColumns();
  EXPECT_EQ(grid_.ColumnCount(), 0);
}

TEST_F(DataGridTest, WritesWhatIsTyped) {
  const struct {
    int column;
    QString typed;
    QString field;
    QVariant stored;
  } cases[] = {
      {GridArchive::Title, QStringLiteral("Il nome"), QStringLiteral("Titolo"),
       QStringLiteral("Il nome")},
      {GridArchive::Year, QStringLiteral("1a9b84"), QStringLiteral("Anno"), 1984},
      {GridArchive::Price, QStringLiteral("7,25"), QStringLiteral("Prezzo"), 7.25},
      {GridArchive::Price, QStringLiteral("molto"), QStringLiteral("Prezzo"), QVariant()},
      {GridArchive::Bought, QStringLiteral("1-1-2000"), QStringLiteral("Acquisto"), 36526},
      {GridArchive::Length, QStringLiteral("1:02:03"), QStringLiteral("Durata"), 3723},
      {GridArchive::Publisher, QStringLiteral("bu"), QStringLiteral("Editore"), 9},
  };
  int place = 3;
  for (const auto& c : cases) {
    goTo(++place, c.column);
    type(c.typed.left(1));
    QApplication::processEvents();
    ASSERT_NE(editor(), nullptr) << qPrintable(c.typed);
    type(c.typed.mid(1));
    end(Qt::Key_Return);
    EXPECT_EQ(archive_.stored(place, c.field), c.stored) << qPrintable(c.typed);
    EXPECT_EQ(row(), place);
    EXPECT_EQ(editor(), nullptr) << qPrintable(c.typed);
  }
}

TEST_F(DataGridTest, GivesUpOnEscape) {
  for (const int column : {GridArchive::Title, GridArchive::Publisher}) {
    goTo(2, column);
    press(Qt::Key_F2);
    ASSERT_NE(editor(), nullptr);
    type(QStringLiteral("b"));
    end(Qt::Key_Escape);
    EXPECT_EQ(editor(), nullptr);
  }
  EXPECT_EQ(archive_.stored(2, QStringLiteral("Titolo")).toString(), QStringLiteral("Libro 3"));
  EXPECT_EQ(archive_.stored(2, QStringLiteral("Editore")).toInt(), 7);
}

TEST_F(DataGridTest, GoesToTheNextVisibleColumnByTab) {
  grid_.setColumnHidden(GridArchive::Year, true);
  goTo(0, GridArchive::Title);
  type(QStringLiteral("Primo"));
  end(Qt::Key_Tab);
  EXPECT_EQ(archive_.stored(0, QStringLiteral("Titolo")).toString(), QStringLiteral("Primo"));
  EXPECT_EQ(grid_.currentIndex().column(), GridArchive::Price);
  goTo(0, GridArchive::Publisher);
  press(Qt::Key_F2);
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  type(QStringLiteral("bo"));
  end(Qt::Key_Tab);
  EXPECT_EQ(archive_.stored(0, QStringLiteral("Editore")).toInt(), 8);
  EXPECT_EQ(grid_.currentIndex().column(), GridArchive::Pages);
}

TEST_F(DataGridTest, ClearsADateThatIsNone) {
  goTo(1, GridArchive::Bought);
  type(QStringLiteral("31022000"));
  end(Qt::Key_Return);
  EXPECT_TRUE(archive_.stored(1, QStringLiteral("Acquisto")).isNull());
  EXPECT_FALSE(archive_.stored(1, QStringLiteral("Titolo")).isNull());
}

TEST_F(DataGridTest, TogglesYesAndNo) {
  goTo(1, GridArchive::Read);
  press(Qt::Key_Space);
  EXPECT_EQ(archive_.stored(1, QStringLiteral("Letto")).toInt(), -1);
  const QPoint cell = grid_.visualRect(grid_.currentIndex()).center();
  QTest::mouseClick(grid_.viewport(), Qt::LeftButton, {}, cell);
  QTest::mouseDClick(grid_.viewport(), Qt::LeftButton, {}, cell);
  EXPECT_EQ(archive_.stored(1, QStringLiteral("Letto")).toInt(), 0);
}

TEST_F(DataGridTest, AsksBeforeItWrites) {
  int asked = 0;
  bool refuse = true;
  QObject::connect(&grid_, &DataGrid::beforeUpdate, &grid_, [&](bool* cancel) {
    ++asked;
    EXPECT_EQ(grid_.PendingField(), QStringLiteral("Prezzo"));
    if (!grid_.PendingValue().isValid()) grid_.SetPendingValue(0.5);
    *cancel = refuse;
  });
  const auto enter = [this](const QString& text) {
    goTo(1, GridArchive::Price);
    press(Qt::Key_F2);
    type(text);
    end(Qt::Key_Return);
    return archive_.stored(1, QStringLiteral("Prezzo"));
  };
  EXPECT_EQ(enter(QStringLiteral("9")), 12.5);
  refuse = false;
  EXPECT_EQ(enter(QStringLiteral("gratis")), 0.5);
  EXPECT_EQ(enter(QString()), 0.5);
  EXPECT_EQ(asked, 2);
}

TEST_F(DataGridTest, TellsAFailureAndShowsTheStoredValue) {
  QSignalSpy failures(&grid_, &DataGrid::writeFailed);
  goTo(1, GridArchive::Title);
  type(QStringLiteral("Libro 1"));
  end(Qt::Key_Return);
  ASSERT_EQ(failures.size(), 1);
  EXPECT_EQ(failures.at(0).at(0).toInt(), store::failure::kDuplicateKey);
  EXPECT_EQ(editor(), nullptr);
  EXPECT_EQ(grid_.currentIndex().data().toString(), QStringLiteral("Libro 2"));
}

// The caller may run the query again in the middle of a cell's writing.
TEST_F(DataGridTest, OutlivesARequeryWhileACellIsWritten) {
  QObject::connect(&grid_, &DataGrid::beforeUpdate, &grid_, [this] { books_->Requery(); });
  for (const int column : {GridArchive::Title, GridArchive::Publisher}) {
    goTo(6, column);
    press(Qt::Key_F2);
    type(QStringLiteral("bo"));
    end(Qt::Key_Return);
    EXPECT_EQ(row(), 0);
    EXPECT_EQ(editor(), nullptr);
  }
}

TEST_F(DataGridTest, WritesTheCellBeforeTheRowIsLeftOrTheHeadIsClicked) {
  goTo(1, GridArchive::Title);
  type(QStringLiteral("Uno"));
  books_->MoveLast();
  EXPECT_EQ(archive_.stored(1, QStringLiteral("Titolo")).toString(), QStringLiteral("Uno"));
  EXPECT_EQ(books_->AbsolutePosition(), 39);
  EXPECT_EQ(row(), 39);
  type(QStringLiteral("Ultimo"));
  QSignalSpy heads(&grid_, &DataGrid::headClicked);
  const QPoint second(grid_.columnViewportPosition(GridArchive::Year) + 20, 5);
  QTest::mouseClick(grid_.horizontalHeader()->viewport(), Qt::LeftButton, {}, second);
  ASSERT_EQ(heads.size(), 1);
  EXPECT_EQ(heads.at(0).at(0).toInt(), GridArchive::Year);
  EXPECT_EQ(archive_.stored(39, QStringLiteral("Titolo")).toString(), QStringLiteral("Ultimo"));
}

TEST_F(DataGridTest, LeavesKeysItDoesNotUseToItsSurroundings) {
  const struct {
    int column;
    int key;
    Qt::KeyboardModifiers modifiers;
  } cases[] = {
      {GridArchive::Title, Qt::Key_N, Qt::AltModifier},
      {GridArchive::Title, Qt::Key_D, Qt::ControlModifier},
      {GridArchive::Read, Qt::Key_Space, Qt::ControlModifier},
      {GridArchive::Read, Qt::Key_N, Qt::NoModifier},
      {GridArchive::Pages, Qt::Key_5, Qt::NoModifier},
      {GridArchive::Title, Qt::Key_F5, Qt::NoModifier},
      {GridArchive::Pages, Qt::Key_F2, Qt::NoModifier},
      {GridArchive::Title, Qt::Key_Return, Qt::NoModifier},
      {GridArchive::Title, Qt::Key_Delete, Qt::NoModifier},
  };
  for (const auto& c : cases) {
    goTo(1, c.column);
    around_.keys.clear();
    press(c.key, c.modifiers);
    EXPECT_EQ(around_.keys.count(c.key), 1) << c.key;
    EXPECT_EQ(editor(), nullptr) << c.key;
  }
  EXPECT_EQ(archive_.stored(1, QStringLiteral("Letto")).toInt(), 0);
}

}  // namespace
}  // namespace platform
