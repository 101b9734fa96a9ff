#include <QAbstractItemView>
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
  static int columnOf(const QString& field) { return cellAt(0, field).column(); }
  static void clickHeading(const QString& field) {
    QHeaderView* head = grid()->horizontalHeader();
    const int column = columnOf(field);
    grid()->scrollTo(cellAt(grid()->currentIndex().row(), field));
    const QPoint place(head->sectionViewportPosition(column) + 8, head->height() / 2);
    QTest::mouseClick(head->viewport(), Qt::LeftButton, {}, place);
    QApplication::processEvents();
  }
  // Types into a cell and confirms it.
  static void edit(int row, const QString& field, const QString& keys,
                   Qt::Key last = Qt::Key_Return) {
    goTo(row, field);
    press(Qt::Key_F2);
    if (QApplication::activePopupWidget() == nullptr) press(Qt::Key_A, Qt::ControlModifier);
    if (keys.isEmpty()) press(Qt::Key_Delete);
    type(keys);
    press(last);
  }
};

TEST_F(Grid, SortsByTheHeadingThatIsClicked) {
  ASSERT_TRUE(start());
  for (const char* field : {"Titolo", "Autore", "Collana"}) {
    SCOPED_TRACE(field);
    clickHeading(field);
    EXPECT_EQ(aRaccolte(0).sOrdine, QString(" ORDER BY ") + field);
    EXPECT_EQ(grid()->currentIndex().row(), 0);
    EXPECT_EQ(boxText("txtCod"), cell(0, "Cod"));
    for (int row = 1; row < 400; ++row) {
      const std::string above = cell(row - 1, field).toStdString();
      const std::string below = cell(row, field).toStdString();
      ASSERT_LE(store::compareText(above, below), 0) << above << " / " << below;
    }
  }
  clickHeading("Anno");
  EXPECT_EQ(aRaccolte(0).sOrdine, QString(" ORDER BY Anno"));
  for (int row = 1; row < grid()->model()->rowCount(); ++row) {
    ASSERT_LE(cell(row - 1, "Anno").toDouble(), cell(row, "Anno").toDouble()) << row;
  }
  EXPECT_EQ(status(), "Elenco completo: " + folder_.found("SELECT count(*) FROM LIB") + " records");
}

TEST_F(Grid, SortsEveryColumnOfEveryCollection) {
  ASSERT_TRUE(start());
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    if (collection != 0) selectByTab(collection);
    const qint64 rows = list()->RecordCount();
    for (int i = 0; i < grid()->ColumnCount(); ++i) {
      clickHeading(grid()->Column(i).dataField);
      EXPECT_EQ(aRaccolte(collection).sOrdine, " ORDER BY " + grid()->Column(i).dataField);
      EXPECT_EQ(list()->RecordCount(), rows);
      EXPECT_EQ(boxText("txtCod"), cell(0, "Cod"));
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
    QString boxText;
    QString cell;
    QString written;
  } cases[] = {
      {0, "Titolo", "Il nome", "txtTitolo", "Il nome", "Il nome", "MAIN.Titolo=Il nome"},
      {0, "Titolo", "", "txtTitolo", "", "", "MAIN.Titolo=-"},
      {0, "Anno", "1984", "txtAnno", "1984", "1984", "MAIN.Anno=1984.0"},
      {0, "Anno", "abc", "txtAnno", "", "", "MAIN.Anno=-"},
      {0, "DtaAcq", "1-1-2000", "txtDtaAcq", "01-01-2000", "01-01-2000", "MAIN.DtaAcq=" + day},
      {0, "Voto", "77", "txtVoto", "77", "77", "MAIN.Voto=77.0"},
      {0, "Lingua", "tede", "cboLingua", "Tedesco", "Tedesco", "MAIN.TabLinguaID=%1"},
      {0, "Collana", "gli a", "cboLibCollana", "Gli Adelphi", "Gli Adelphi", "LIB.TabCollanaID=%1"},
      {2, "Durata", "1:02:03", "txtAudDurata", "1:02:03", "1:02:03", "AUD.Durata=3723"},
      {2, "NrSupporti", "3", "txtAudNrSupporti", "3", "3", "AUD.NrSupporti=3.0"},
      {3, "TitoloOrig", "Totò", "txtTitoloOrig", "Totò", "Totò", "VID.TitoloOrig=Totò"},
      {7, "cap", "00100", "txtCap", "00100", "00100", "PER.cap=00100"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.field + (' ' + c.keys.toStdString()));
    if (iRacCorr != c.collection) selectByTab(c.collection);
    goTo(4, c.field);
    QString written = c.written;
    if (written.contains("%1")) {
      written = written.arg(folder_.found("SELECT ID FROM TAB WHERE \"Desc\" = '" + c.cell + "'"));
    }
    EXPECT_EQ(changesBy([&] { edit(4, c.field, c.keys); }), written);
    EXPECT_EQ(cell(4, c.field), c.cell);
    EXPECT_EQ(boxText(c.box), c.boxText);
    EXPECT_EQ(grid()->currentIndex().row(), 4);
  }
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Grid, LeavesACellAsItWas) {
  ASSERT_TRUE(start());
  goTo(4);
  for (const char* field : {"Titolo", "Anno", "Lingua"}) {
    EXPECT_EQ(changesBy([&] { edit(4, field, "t", Qt::Key_Escape); }), QString("")) << field;
  }
  // The length of the column is the length of its cell.
  EXPECT_EQ(changesBy([&] { edit(4, "Cod", QString(20, 'x')); }), "MAIN.Cod=" + QString(15, 'x'));
  // Texts of several lines are for the form alone.
  selectByTab(3);
  goTo(4, "Attori");
  EXPECT_EQ(changesBy([] {
              press(Qt::Key_F2);
              EXPECT_TRUE(grid()->hasFocus());
              type("x");
              press(Qt::Key_Return);
            }),
            QString(""));
}

TEST_F(Grid, TogglesYesAndNo) {
  ASSERT_TRUE(start());
  selectByTab(2);
  goTo(4, "Originale");
  const bool before = boxText("chkAudOriginale") != "No";
  EXPECT_EQ(changesBy([] { press(Qt::Key_Space); }),
            QString("AUD.Originale=") + (before ? "0" : "-1"));
  EXPECT_EQ(boxText("chkAudOriginale") != "No", !before);
  EXPECT_EQ(changesBy([] { press(Qt::Key_Space); }),
            QString("AUD.Originale=") + (before ? "-1" : "0"));
  EXPECT_EQ(boxText("chkAudOriginale") != "No", before);
}

TEST_F(Grid, ShowsWhatIsTypedInTheForm) {
  ASSERT_TRUE(start());
  goTo(6);
  fill("txtTitolo", "Dal modulo");
  EXPECT_EQ(cell(6, "Titolo"), QString("Dal modulo"));
  enter("cboLingua");
  type("russo");
  press(Qt::Key_Tab);
  EXPECT_EQ(cell(6, "Lingua"), QString("Russo"));
}

TEST_F(Grid, KeepsItsColumnsAsTheyAreSaved) {
  ASSERT_TRUE(start());
  const auto width = [](const char* field) { return grid()->Column(columnOf(field)).width; };
  const int title = width("Titolo");
  grid()->horizontalHeader()->resizeSection(columnOf("Autore"), 211);
  selectByTab(2);
  selectByTab(0);
  EXPECT_EQ(width("Autore"), 2400);
  grid()->horizontalHeader()->resizeSection(columnOf("Autore"), 211);
  trigger("mnuVarieSalva");
  EXPECT_EQ(
      folder_.found("SELECT Larghezza FROM GRDCONFIG WHERE NomeQuery = 'Q_LIB' AND Colonna = 1"),
      QString("3165.0"));
  selectByTab(2);
  EXPECT_EQ(width("Autore"), 2400);
  selectByTab(0);
  EXPECT_EQ(width("Autore"), 3165);
  EXPECT_EQ(width("Titolo"), title);
  end();
  ASSERT_TRUE(start());
  EXPECT_EQ(width("Autore"), 3165);
}

}  // namespace
}  // namespace tavolix
