#include <QTabWidget>

#include "core/modcuore.h"
#include "core/raccolte.h"
#include "desk.h"
#include "platform/form.h"

namespace tavolix {
namespace {

constexpr const char* kNames[] = {"Libri",    "Riviste",    "Audio",        "Video",
                                  "Software", "Medicinali", "Oggetti Vari", "Persone"};
constexpr Qt::Key kKeys[] = {Qt::Key_L, Qt::Key_R, Qt::Key_A, Qt::Key_V,
                             Qt::Key_S, Qt::Key_M, Qt::Key_O, Qt::Key_P};

class Collections : public Desk {
 protected:
  // List, grid and form show the same record.
  static void expectAgreement(qint64 row) {
    EXPECT_EQ(list()->AbsolutePosition(), row);
    EXPECT_EQ(grid()->currentIndex().row(), row);
    EXPECT_EQ(boxText("txtCod"), stored("Cod"));
    EXPECT_EQ(cell(grid()->currentIndex().row(), "Cod"), stored("Cod"));
  }
  QString complete(int collection) const {
    const QString table = aRaccolte(collection).sTabDettaglio;
    return "Elenco completo: " + folder_.found("SELECT count(*) FROM " + table) + " records";
  }
  void expectCollection(int collection) const {
    SCOPED_TRACE(kNames[collection]);
    EXPECT_EQ(iRacCorr, collection);
    EXPECT_EQ(title(), QString("Raccolta ") + kNames[collection]);
    EXPECT_EQ(tabs()->SelectedTag(), QString::number(collection));
    EXPECT_EQ(status(), complete(collection));
    for (int other = 0; other < kRaccoltePrincipali; ++other) {
      EXPECT_EQ(aRaccolte(other).oForm->IsLoaded(), other == collection) << other;
    }
    EXPECT_TRUE(form()->isVisible() && grid()->hasFocus());
    expectAgreement(0);
    for (int i = 0; i < 3; ++i) press(Qt::Key_Down);
    expectAgreement(3);
    press(Qt::Key_End);
    expectAgreement(list()->RecordCount() - 1);
  }
};

TEST_F(Collections, AreChosenByTabOrKey) {
  ASSERT_TRUE(start());
  for (const bool byKey : {false, true}) {
    for (const int collection : {1, 2, 3, 4, 5, 6, 7, 0}) {
      byKey ? press(kKeys[collection], Qt::ControlModifier) : selectByTab(collection);
      expectCollection(collection);
    }
  }
  EXPECT_EQ(message(), QString("-"));
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
  EXPECT_EQ(status(), complete(3));
  EXPECT_FALSE(mainControl("cmdBar(8)")->isEnabled());
  selectByTab(0);
  EXPECT_EQ(status(), filtered);
  EXPECT_EQ(stored("Titolo"), first);
  click(mainControl("cmdBar(8)"));
  EXPECT_EQ(status(), complete(0));
  EXPECT_EQ(aRaccolte(0).sOrdine, QString(" ORDER BY Titolo"));
  EXPECT_FALSE(mainControl("cmdBar(8)")->isEnabled());
  expectAgreement(0);
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

}  // namespace
}  // namespace tavolix
