#include <QPushButton>

#include "desk.h"

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
  EXPECT_EQ(status(), filtered);
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
  expectAgreement(0);
}

TEST_F(Collections, AreThoseOfTheSettingsAtTheStart) {
  const struct {
    const char *collection, *extension;
    QString title;
    bool formVisible;
  } cases[] = {{"0", "-1", "Raccolta Libri", true},
               {"7", "0", "Raccolta Persone", false},
               {"6", "5", "Raccolta Oggetti Vari", false},
               {"due", "", "Raccolta Libri", false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.collection);
    folder_.set("Application", "RacAvvio", c.collection);
    folder_.set("Application", "ElencoExt", c.extension);
    ASSERT_TRUE(start());
    EXPECT_EQ(title(), c.title);
    EXPECT_EQ(tabs()->SelectedTag(), QString::number(iRacCorr));
    EXPECT_TRUE(grid()->hasFocus());
    EXPECT_EQ(form()->isVisible(), c.formVisible);
    EXPECT_EQ(action("mnuMaxExtension")->isChecked(), !c.formVisible);
    EXPECT_EQ(static_cast<QPushButton*>(mainControl("cmdEspandi"))->isChecked(), c.formVisible);
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
  answer(platform::kOk);
  EXPECT_FALSE(start("assente.tvx"));
  EXPECT_EQ(message(), QString("Attenzione! 48 L'archivio assente.tvx non esiste o non e' "
                               "utilizzabile."));
  EXPECT_FALSE(platform::forms().isLoaded("frmMain"));
}

}  // namespace
}  // namespace tavolix
