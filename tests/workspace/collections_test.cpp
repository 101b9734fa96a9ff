#include <QApplication>
#include <QFile>
#include <QHeaderView>
#include <QTabWidget>
#include <QTest>

#include "core/modcuore.h"
#include "core/raccolte.h"
#include "desk.h"
#include "platform/form.h"

namespace tavolix {
namespace {

constexpr const char* kNames[] = {"Libri",    "Riviste",    "Audio",        "Video",
                                  "Software", "Medicinali", "Oggetti Vari", "Persone"};

// The headings that the program comes with, by the list's query.
QMap<QString, QStringList> headings() {
  QFile file(qEnvironmentVariable("TAVOLIX_SOURCE") + "/data/griglie.tsv");
  file.open(QIODevice::ReadOnly);
  QMap<QString, QStringList> all;
  for (const QString& line : QString::fromUtf8(file.readAll()).split('\n')) {
    const QStringList fields = line.split('\t');
    if (fields.size() > 3) all[fields[0]] << fields[3];
  }
  return all;
}

class Collections : public Desk {
 protected:
  // List, grid and form show the same record.
  static void expectAgreement() {
    EXPECT_EQ(grid()->currentIndex().row(), list()->AbsolutePosition());
    EXPECT_EQ(boxText("txtCod"), stored("Cod"));
    EXPECT_EQ(cell(grid()->currentIndex().row(), "Cod"), stored("Cod"));
    const bool titled = iRacCorr != 1;
    EXPECT_EQ(boxText(titled ? "txtTitolo" : "cboTestata"), stored(titled ? "Titolo" : "Testata"));
  }

  void expectCollection(int collection) const {
    SCOPED_TRACE(kNames[collection]);
    EXPECT_EQ(iRacCorr, collection);
    EXPECT_EQ(title(), QString("Raccolta ") + kNames[collection]);
    EXPECT_EQ(tabs()->SelectedTag(), QString::number(collection));
    EXPECT_EQ(status(),
              "Elenco completo: " +
                  folder_.found("SELECT count(*) FROM " + aRaccolte(collection).sTabDettaglio) +
                  " records");
    QStringList captions;
    for (int i = 0; i < grid()->ColumnCount(); ++i) captions << grid()->Column(i).caption;
    EXPECT_EQ(captions.join('|'), headings()[aRaccolte(collection).sQuery].join('|'));
    for (int other = 0; other < kRaccoltePrincipali; ++other) {
      EXPECT_EQ(aRaccolte(other).oForm->IsLoaded(), other == collection) << other;
    }
    EXPECT_TRUE(form()->isVisible());
    EXPECT_TRUE(grid()->hasFocus());
    expectAgreement();
    for (int i = 0; i < 3; ++i) press(Qt::Key_Down);
    EXPECT_EQ(list()->AbsolutePosition(), 3);
    expectAgreement();
    press(Qt::Key_End);
    EXPECT_EQ(list()->AbsolutePosition(), list()->RecordCount() - 1);
    expectAgreement();
  }
};

TEST_F(Collections, AreChosenByTabMenuOrKey) {
  ASSERT_TRUE(start());
  const struct {
    int collection;
    const char* menu;
    Qt::Key key;
  } cases[] = {
      {1, "mnuRaccolteRiviste", Qt::Key_R},    {2, "mnuRaccolteAudio", Qt::Key_A},
      {3, "mnuRaccolteVideo", Qt::Key_V},      {4, "mnuRaccolteSoftware", Qt::Key_S},
      {5, "mnuRaccolteMedicinali", Qt::Key_M}, {6, "mnuRaccolteOggetti", Qt::Key_O},
      {7, "mnuRaccoltePersone", Qt::Key_P},    {0, "mnuRaccolteLibri", Qt::Key_L},
  };
  for (const auto& c : cases) {
    selectByTab(c.collection);
    expectCollection(c.collection);
  }
  for (const auto& c : cases) {
    trigger(c.menu);
    expectCollection(c.collection);
  }
  for (const auto& c : cases) {
    press(c.key, Qt::ControlModifier);
    expectCollection(c.collection);
  }
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Collections, AreChosenByArrowsOnTheTabs) {
  ASSERT_TRUE(start());
  tabs()->setFocus();
  press(Qt::Key_Down);
  expectCollection(1);
}

TEST_F(Collections, KeepTheirFilterAndOrder) {
  ASSERT_TRUE(start());
  aRaccolte(0).sFiltro = " WHERE Anno > 1990";
  aRaccolte(0).sOrdine = " ORDER BY Titolo";
  DBRefresh();
  const QString filtered = status();
  const QString first = stored("Titolo");
  EXPECT_EQ(filtered,
            "Elenco filtrato: " +
                folder_.found("SELECT count(*) FROM MAIN WHERE TipoRac = 0 AND Anno > 1990") +
                " records");
  selectByTab(3);
  expectCollection(3);
  EXPECT_FALSE(mainControl("cmdBar(8)")->isEnabled());
  selectByTab(0);
  EXPECT_EQ(status(), filtered);
  EXPECT_EQ(stored("Titolo"), first);
  ASSERT_TRUE(mainControl("cmdBar(8)")->isEnabled());
  click(mainControl("cmdBar(8)"));
  EXPECT_FALSE(mainControl("cmdBar(8)")->isEnabled());
  EXPECT_EQ(status(), "Elenco completo: " + folder_.found("SELECT count(*) FROM LIB") + " records");
  EXPECT_EQ(aRaccolte(0).sOrdine, QString(" ORDER BY Titolo"));
  expectAgreement();
}

TEST_F(Collections, RememberTheirPage) {
  ASSERT_TRUE(start());
  const struct {
    int collection;
    int page;
    int newPage;
  } cases[] = {{0, 0, 2}, {2, 0, 1}, {0, 2, 1}, {7, 0, 2}, {2, 1, 0}, {7, 2, 2}, {0, 1, 0}};
  for (const auto& c : cases) {
    if (iRacCorr != c.collection) selectByTab(c.collection);
    EXPECT_EQ(pages()->currentIndex(), c.page) << c.collection;
    pages()->setCurrentIndex(c.newPage);
  }
}

TEST_F(Collections, WriteWhatWasTypedBeforeTheyChange) {
  ASSERT_TRUE(start());
  const QString key = stored("RacID");
  const struct {
    const char* way;
    bool inCell;
    std::function<void()> change;
  } cases[] = {
      {"box, tab", false, [] { selectByTab(2); }},
      {"box, key", false, [] { press(Qt::Key_M, Qt::ControlModifier); }},
      {"box, menu", false, [] { trigger("mnuRaccolteVideo"); }},
      {"cell, tab", true, [] { selectByTab(2); }},
      {"cell, key", true, [] { press(Qt::Key_M, Qt::ControlModifier); }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.way);
    if (c.inCell) {
      goTo(0, "Titolo");
    } else {
      enter("txtTitolo");
      press(Qt::Key_A, Qt::ControlModifier);
    }
    type(c.way);
    c.change();
    EXPECT_NE(iRacCorr, 0);
    EXPECT_EQ(folder_.found("SELECT Titolo FROM MAIN WHERE TipoRac = 0 AND RacID = " + key),
              QString(c.way));
    selectByTab(0);
  }
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Collections, StayInPlaceAtMaximumExtension) {
  ASSERT_TRUE(start());
  trigger("mnuMaxExtension");
  for (const int collection : {3, 7, 0}) {
    selectByTab(collection);
    EXPECT_FALSE(form()->isVisible());
    EXPECT_TRUE(action("mnuMaxExtension")->isChecked());
    press(Qt::Key_Down);
    expectAgreement();
  }
}

}  // namespace
}  // namespace tavolix
