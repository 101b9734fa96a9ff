#include <QHeaderView>

#include "desk.h"
#include "store/text_order.h"

namespace tavolix {
namespace {

class Grid : public Desk {
 protected:
  void SetUp() override { ASSERT_TRUE(start()); }

  static void clickHeading(const QString& field) {
    const QModelIndex cell = cellAt(0, field);
    grid()->scrollTo(cell);
    QHeaderView* head = grid()->horizontalHeader();
    const QPoint place(head->sectionViewportPosition(cell.column()) + 8, head->height() / 2);
    QTest::mouseClick(head->viewport(), Qt::LeftButton, {}, place);
    QApplication::processEvents();
  }
  static bool isInOrder(const QString& above, const QString& below, store::FieldKind kind) {
    if (kind != store::FieldKind::Text) return above.toDouble() <= below.toDouble();
    return store::compareText(above.toStdString(), below.toStdString()) <= 0;
  }
  static void expectSorted(const platform::GridColumn& column) {
    const QString field = column.dataField;
    if (field != "Anno" && column.setup.kind != store::FieldKind::Text) return;
    for (int row = 1; row < std::min(200, grid()->model()->rowCount()); ++row) {
      EXPECT_TRUE(isInOrder(cell(row - 1, field), cell(row, field), column.setup.kind)) << row;
    }
  }
};

TEST_F(Grid, SortsByTheHeadingThatIsClicked) {
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    selectByTab(collection);
    for (int i = 0; i < grid()->ColumnCount(); ++i) {
      const platform::GridColumn column = grid()->Column(i);
      SCOPED_TRACE(qPrintable(column.dataField));
      list()->MoveNext();
      clickHeading(column.dataField);
      EXPECT_EQ(aRaccolte(collection).sOrdine, " ORDER BY " + column.dataField);
      EXPECT_EQ(grid()->currentIndex().row(), 0);
      EXPECT_EQ(boxText("txtCod"), cell(0, "Cod"));
      expectSorted(column);
    }
  }
}

TEST_F(Grid, KeepsItsColumnsAsTheyAreSaved) {
  const auto author = [] { return cellAt(0, "Autore").column(); };
  const auto width = [&] { return grid()->Column(author()).width; };
  grid()->horizontalHeader()->resizeSection(author(), 211);
  selectByTab(2);
  selectByTab(0);
  EXPECT_EQ(width(), 2400);
  grid()->horizontalHeader()->resizeSection(author(), 211);
  trigger("mnuVarieSalva");
  end();
  ASSERT_TRUE(start());
  EXPECT_EQ(width(), 3165);
}

}  // namespace
}  // namespace tavolix
