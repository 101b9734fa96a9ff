#include <QHeaderView>

#include "core/modmain.h"
#include "desk.h"
#include "store/text_order.h"

namespace tavolix {
namespace {

constexpr const char* kNames[] = {"Libri",    "Riviste",    "Audio",        "Video",
                                  "Software", "Medicinali", "Oggetti Vari", "Persone"};
constexpr const char kKeys[] = "LRAVSMOP";

class Collections : public Desk {
 protected:
  // List, grid and form show the same record.
  static void expectAgreement(qint64 row) {
    EXPECT_EQ(list()->AbsolutePosition(), row);
    EXPECT_EQ(grid()->currentIndex().row(), row);
    EXPECT_EQ(boxText("txtCod"), stored("Cod"));
    EXPECT_EQ(cell(grid()->currentIndex().row(), "Cod"), stored("Cod"));
  }
  QString completeOf(int collection) const {
    return complete(count(aRaccolte(collection).sTabDettaglio));
  }
  void expectCollection(int collection) const {
    EXPECT_EQ(iRacCorr, collection);
    EXPECT_EQ(title(), QString("Raccolta ") + kNames[collection]);
    EXPECT_EQ(tabs()->SelectedTag(), QString::number(collection));
    EXPECT_EQ(status(), completeOf(collection));
    for (int other = 0; other < kRaccoltePrincipali; ++other) {
      EXPECT_EQ(aRaccolte(other).oForm->IsLoaded(), other == collection) << other;
    }
    EXPECT_TRUE(form()->isVisible() && grid()->hasFocus());
    expectAgreement(0);
    press("Down Down Down");
    expectAgreement(3);
    press("End");
    expectAgreement(list()->RecordCount() - 1);
  }
  static void clickHeading(const QString& field) {
    const QModelIndex cell = cellAt(0, field);
    grid()->scrollTo(cell);
    QHeaderView* head = grid()->horizontalHeader();
    const QPoint place(head->sectionViewportPosition(cell.column()) + 8, head->height() / 2);
    QTest::mouseClick(head->viewport(), Qt::LeftButton, {}, place);
    QApplication::processEvents();
  }
  // The texts of a column rise, as far down as one would look.
  static void expectSorted(const platform::GridColumn& column) {
    if (column.setup.kind != store::FieldKind::Text) return;
    std::string above;
    for (int row = 0; row < std::min(200, grid()->model()->rowCount()); ++row) {
      const std::string text = cell(row, column.dataField).toStdString();
      EXPECT_LE(store::compareText(above, text), 0) << text;
      above = text;
    }
  }
};

// A collection is chosen by its tab or its key, and comes back with the page it was left with.
TEST_F(Collections, AreChosenByTabOrKey) {
  ASSERT_TRUE(start());
  for (const bool byKey : {false, true}) {
    for (const int collection : {1, 2, 3, 4, 5, 6, 7, 0}) {
      SCOPED_TRACE(kNames[collection]);
      byKey ? press(QString("Ctrl+") + kKeys[collection]) : selectByTab(collection);
      expectCollection(collection);
      EXPECT_EQ(pages()->currentIndex(), byKey ? 1 + collection % 2 : 0);
      pages()->setCurrentIndex(1 + collection % 2);
    }
  }
}

TEST_F(Collections, KeepTheirFilterAndOrder) {
  ASSERT_TRUE(start());
  aRaccolte(0).sFiltro = " WHERE Anno > 1990";
  aRaccolte(0).sOrdine = " ORDER BY Titolo";
  DBRefresh();
  const QString filtered = QStringLiteral("Elenco filtrato: %1 records")
                               .arg(count("MAIN WHERE TipoRac = 0 AND Anno > 1990"));
  const QString first = stored("Titolo");
  selectByTab(3);
  EXPECT_EQ(status(), completeOf(3));
  EXPECT_FALSE(mainControl("cmdBar(8)")->isEnabled());
  selectByTab(0);
  EXPECT_EQ(status(), filtered);
  EXPECT_EQ(stored("Titolo"), first);
  click(mainControl("cmdBar(8)"));
  EXPECT_EQ(status(), completeOf(0));
  EXPECT_EQ(aRaccolte(0).sOrdine, QString(" ORDER BY Titolo"));
  EXPECT_FALSE(mainControl("cmdBar(8)")->isEnabled());
}

TEST_F(Collections, AreSortedByTheHeadingThatIsClicked) {
  ASSERT_TRUE(start());
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

TEST_F(Collections, KeepTheirColumnsAsTheyAreSaved) {
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

TEST_F(Collections, AreThoseOfTheSettingsAtTheStart) {
  const struct {
    const char *collection, *extension;
    QString title;
    bool formVisible;
  } cases[] = {{"0", "-1", "Raccolta Libri", true},        {"7", "0", "Raccolta Persone", false},
               {"6", "5", "Raccolta Oggetti Vari", false}, {"8", "0", "Raccolta Libri", false},
               {"-3", "0", "Raccolta Libri", false},       {"due", "", "Raccolta Libri", false}};
  for (const auto& c : cases) {
    folder_.set("Application", "RacAvvio", c.collection);
    folder_.set("Application", "ElencoExt", c.extension);
    ASSERT_TRUE(start());
    EXPECT_EQ(title(), c.title);
    EXPECT_TRUE(grid()->hasFocus());
    for (const bool shown : {form()->isVisible(), !action("mnuMaxExtension")->isChecked()}) {
      EXPECT_EQ(shown, c.formVisible) << c.collection;
    }
    end();
  }
}

TEST_F(Collections, AreThoseOfTheArchiveOfTheCommandLine) {
  const QString spaced = folder_.path("il mio archivio.tvx");
  QFile::copy(folder_.path("modello.tvx"), spaced);
  for (const QString& line : {'"' + spaced + '"', QString(" IL MIO ARCHIVIO.TVX ")}) {
    ASSERT_TRUE(start(line));
    EXPECT_EQ(window()->windowTitle().toLower(),
              QString("velmar tavolix 98 rev. 02 - archivio in uso: il mio archivio.tvx"));
    EXPECT_EQ(status(), complete(0));
    end();
  }
  // As typed where the user stands, and as a file manager says it.
  QDir(folder_.path()).mkdir("altrove");
  QFile::rename(spaced, folder_.path("altrove/libri di casa.tvx"));
  const QString before = QDir::currentPath();
  QDir::setCurrent(folder_.path("altrove"));
  for (const char* line : {"libri di casa.tvx", "../altrove/libri di casa.tvx",
                           "file://%1/altrove/libri%20di%20casa.tvx",
                           "file://localhost%1/altrove/"
                           "libri%20di%20casa.tvx",
                           "../altrove/../esempio.tvx"}) {
    EXPECT_TRUE(start(QString(line).replace("%1", folder_.path()))) << line;
    EXPECT_TRUE(QFileInfo(sPathArc).isAbsolute()) << qPrintable(sPathArc);
    end();
  }
  QDir::setCurrent(before);
  // What is not there is asked for.
  inForm(
      "frmManArc", [&] { EXPECT_FALSE(start("assente.tvx")); }, [] {});
  EXPECT_FALSE(platform::forms().isLoaded("frmMain"));
}

}  // namespace
}  // namespace tavolix
