#include <QApplication>
#include <QHeaderView>
#include <QTest>

#include "core/raccolte.h"
#include "desk.h"
#include "platform/record_model.h"
#include "store/text_order.h"

namespace tavolix {
namespace {

class Grid : public Desk {
 protected:
  static void clickHeading(const QString& field) {
    const QModelIndex cell = cellAt(grid()->currentIndex().row(), field);
    grid()->scrollTo(cell);
    QHeaderView* head = grid()->horizontalHeader();
    const QPoint place(head->sectionViewportPosition(cell.column()) + 8, head->height() / 2);
    QTest::mouseClick(head->viewport(), Qt::LeftButton, {}, place);
    QApplication::processEvents();
  }
  static void expectSorted(const platform::GridColumn& column) {
    const bool year = column.dataField == "Anno";
    if (!year && column.setup.kind != store::FieldKind::Text) return;
    for (int row = 1; row < std::min(200, grid()->model()->rowCount()); ++row) {
      const QString above = cell(row - 1, column.dataField);
      const QString below = cell(row, column.dataField);
      ASSERT_TRUE(year ? above.toInt() <= below.toInt()
                       : store::compareText(above.toStdString(), below.toStdString()) <= 0)
          << qPrintable(above + " / " + below);
    }
  }
  // Types into a cell and ends that by a key.
  static void edit(const QString& field, const QString& keys, Qt::Key last = Qt::Key_Return) {
    goTo(4, field);
    press(Qt::Key_F2);
    if (QApplication::activePopupWidget() == nullptr) press(Qt::Key_A, Qt::ControlModifier);
    if (keys.isEmpty()) press(Qt::Key_Delete);
    type(keys);
    press(last);
  }
};

TEST_F(Grid, SortsByTheHeadingThatIsClicked) {
  ASSERT_TRUE(start());
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    if (collection != 0) selectByTab(collection);
    const QString before = status();
    for (int i = 0; i < grid()->ColumnCount(); ++i) {
      SCOPED_TRACE(qPrintable(grid()->Column(i).dataField));
      clickHeading(grid()->Column(i).dataField);
      EXPECT_EQ(aRaccolte(collection).sOrdine, " ORDER BY " + grid()->Column(i).dataField);
      EXPECT_EQ(grid()->currentIndex().row(), 0);
      EXPECT_EQ(boxText("txtCod"), cell(0, "Cod"));
      EXPECT_EQ(status(), before);
      expectSorted(grid()->Column(i));
    }
  }
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Grid, WritesItsCellsAndTheFormShowsThem) {
  ASSERT_TRUE(start());
  const QString day = QString::number(platform::dayOfDate(QDate(2000, 1, 1)));
  const struct {
    int collection;
    const char* field;
    QString keys;
    const char* box;
    QString shown, written;
  } cases[] = {
      {0, "Titolo", "Il nome", "txtTitolo", "Il nome", "MAIN.Titolo=Il nome"},
      {0, "Titolo", "", "txtTitolo", "", "MAIN.Titolo=-"},
      {0, "Cod", QString(20, 'x'), "txtCod", QString(15, 'x'), "MAIN.Cod=" + QString(15, 'x')},
      {0, "Anno", "1984", "txtAnno", "1984", "MAIN.Anno=1984.0"},
      {0, "Anno", "abc", "txtAnno", "", "MAIN.Anno=-"},
      {0, "DtaAcq", "1-1-2000", "txtDtaAcq", "01-01-2000", "MAIN.DtaAcq=" + day},
      {0, "Lingua", "tede", "cboLingua", "Tedesco", "MAIN.TabLinguaID=%1"},
      {0, "Collana", "gli a", "cboLibCollana", "Gli Adelphi", "LIB.TabCollanaID=%1"},
      {2, "Durata", "1:02:03", "txtAudDurata", "1:02:03", "AUD.Durata=3723"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.field + (' ' + c.keys.toStdString()));
    if (iRacCorr != c.collection) selectByTab(c.collection);
    goTo(4, c.field);
    const QString key = folder_.found("SELECT ID FROM TAB WHERE \"Desc\" = '" + c.shown + "'");
    const auto giveUp = [&] { edit(c.field, c.keys, Qt::Key_Escape); };
    EXPECT_EQ(changesBy(giveUp), QString(""));
    EXPECT_EQ(changesBy([&] { edit(c.field, c.keys); }), QString(c.written).replace("%1", key));
    EXPECT_EQ(cell(4, c.field), c.shown);
    EXPECT_EQ(boxText(c.box), c.shown);
    EXPECT_EQ(grid()->currentIndex().row(), 4);
  }
  goTo(4, "Originale");
  const bool original = boxText("chkAudOriginale") != "No";
  EXPECT_EQ(changesBy([] { press(Qt::Key_Space); }),
            QString("AUD.Originale=") + (original ? "0" : "-1"));
  EXPECT_EQ(boxText("chkAudOriginale") != "No", !original);
  // Texts of several lines are for the form alone.
  selectByTab(3);
  goTo(4, "Attori");
  EXPECT_EQ(changesBy([] { edit("Attori", "x"); }), QString(""));
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Grid, KeepsItsColumnsAsTheyAreSaved) {
  ASSERT_TRUE(start());
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
