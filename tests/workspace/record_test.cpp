#include "desk.h"

namespace tavolix {
namespace {

using std::function;

class Record : public Desk {
 protected:
  static bool isChoice(int campo) { return aCampi(iRacCorr, campo).sTipo.startsWith('C'); }
  // The fields of a record in the file; no choice counts as 0.
  QString inFile(const QString& key) const {
    const QString detail = aRaccolte(iRacCorr).sTabDettaglio;
    QStringList columns;
    for (int j = 0; j < iNumeroCampi(iRacCorr); ++j) {
      const QString column = sCampoQualificato(iRacCorr, j);
      columns << (isChoice(j) ? "ifnull(" + column + ", 0)" : column);
    }
    return folder_.found("SELECT " + columns.join(", ") + " FROM MAIN JOIN " + detail +
                         " ON RacID = " + detail + ".ID WHERE RacID = " + key +
                         " AND TipoRac = " + QString::number(iRacCorr));
  }
  // What a new record begins with: the start values of its lists, else nothing.
  QString startValues() const {
    QStringList values;
    for (int j = 0; j < iNumeroCampi(iRacCorr); ++j) {
      const tCampo& campo = aCampi(iRacCorr, j);
      const QString id =
          folder_.found("SELECT ID FROM TAB WHERE \"Default\" <> 0 AND TipoTab = '" +
                        campo.sCodTab + "' AND TipoRac = " + QString::number(campo.iRacTab));
      values << (!id.isEmpty() ? id : isChoice(j) ? "0" : "-");
    }
    return values.join('|');
  }
  // The counter's record is new, current, and stands ready to be typed into.
  void expectNew(const QString& values) const {
    const QString key = folder_.found("SELECT ID FROM CONT");
    EXPECT_EQ(stored("RacID"), key);
    EXPECT_EQ(inFile(key), values);
    EXPECT_EQ(grid()->currentIndex().row(), list()->AbsolutePosition());
    EXPECT_TRUE(form()->isVisible());
    EXPECT_EQ(pages()->currentIndex(), 0);
    EXPECT_TRUE(aCampi(iRacCorr, 1).oControllo->widget()->hasFocus());
  }
};

TEST_F(Record, BeginsWithStartValuesOrAsACopy) {
  folder_.outside(
      "UPDATE TAB SET \"Default\" = -1 WHERE ID IN"
      " (SELECT max(ID) FROM TAB WHERE TipoTab IN ('GENERE', 'STATO') GROUP BY TipoTab, TipoRac)");
  ASSERT_TRUE(start());
  const function<void()> ways[] = {
      [] { press("Alt+N"); },
      [] {
        pages()->setCurrentIndex(1);
        press("Alt+N");
      },
      [] { click(mainControl("cmdAddNew")); },
      [] {
        trigger("mnuMaxExtension");
        press("F12");
      },
  };
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    SCOPED_TRACE(collection);
    selectByTab(collection);
    const int counter = folder_.found("SELECT ID FROM CONT").toInt();
    const int rows = count(aRaccolte(collection).sTabDettaglio);
    ways[collection % 4]();
    EXPECT_EQ(folder_.found("SELECT ID FROM CONT").toInt(), counter + 1);
    EXPECT_EQ(status(), complete(rows + 1));
    expectNew(startValues());
    for (const int row : {2, 22}) {
      goTo(row);
      const QString values = inFile(stored("RacID"));
      press(row == 2 ? "F11" : "Alt+D");
      expectNew(values);
    }
  }
}

TEST_F(Record, GetsItsOldTextBack) {
  ASSERT_TRUE(start());
  goTo(5, "Titolo");
  const QString before = stored("Titolo");
  box("txtTitolo")->setFocus();
  fill("txtTitolo", "Altro titolo");
  press("Tab");
  EXPECT_EQ(stored("Titolo"), QString("Altro titolo"));
  press("Ctrl+Z");
  EXPECT_EQ(stored("Titolo"), before);
  EXPECT_TRUE(box("txtTitolo")->hasFocus());
  // What is being typed comes first; the key again brings back what it has taken.
  press("Ctrl+Z");
  EXPECT_EQ(boxText("txtTitolo"), QString("Altro titolo"));
  EXPECT_EQ(stored("Titolo"), QString("Altro titolo"));
  // Of another record there is nothing to bring back.
  goTo(6);
  press("Ctrl+Z");
  goTo(5);
  EXPECT_EQ(stored("Titolo"), QString("Altro titolo"));
}

TEST_F(Record, IsDeletedAfterAQuestion) {
  ASSERT_TRUE(start());
  goTo(5);
  const QString key = stored("RacID");
  const int rows = count("LIB");
  const QString question = "Attenzione! 36 Vuoi veramente cancellare il record corrente (" +
                           stored("Cod") + ' ' + stored("Titolo") + ")?";
  answer(platform::kNo);
  EXPECT_EQ(changesBy([] { press("Alt+C"); }), QString(""));
  EXPECT_EQ(message(), question);
  answer(platform::kYes);
  click(mainControl("cmdCancella"));
  EXPECT_EQ(status(), complete(rows - 1));
  EXPECT_EQ(count("MAIN WHERE RacID = " + key), 0);
  EXPECT_EQ(count("LIB WHERE ID = " + key), 0);
  EXPECT_EQ(boxText("txtCod"), stored("Cod"));
}

TEST_F(Record, IsDeletedWithAllThatAreShown) {
  const QString shown = "(SELECT RacID FROM MAIN WHERE TipoRac = 2 AND Anno > 1980)";
  folder_.outside(
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
      "INSERT INTO AUDSUB (AudID, NrBrano) SELECT * FROM " +
      shown + " JOIN n LIMIT 5000");
  ASSERT_TRUE(start());
  selectByTab(2);
  aRaccolte(2).sFiltro = " WHERE Anno > 1980";
  DBRefresh();
  const int rest = count("AUD WHERE ID NOT IN " + shown);
  const int children = count("AUDSUB WHERE AudID NOT IN " + shown);
  answer(platform::kNo);
  EXPECT_EQ(changesBy([] { trigger("mnuCancellaMultiplo"); }), QString(""));
  EXPECT_EQ(message(), QString("Attenzione! 36 Vuoi veramente cancellare tutti i record "
                               "correntemente visualizzati nell'elenco?"));
  pages()->setCurrentIndex(1);
  answer(platform::kYes);
  trigger("mnuCancellaMultiplo");
  EXPECT_EQ(status(), QString("Elenco filtrato: 0 records"));
  EXPECT_EQ(count("AUD"), rest);
  EXPECT_EQ(count("MAIN WHERE TipoRac = 2"), rest);
  EXPECT_EQ(count("AUDSUB"), children);
  EXPECT_FALSE(pages()->isEnabled() || pages()->currentIndex() != 0);
  click(mainControl("cmdBar(8)"));
  EXPECT_EQ(status(), complete(rest));
  EXPECT_TRUE(pages()->isEnabled());
}

TEST_F(Record, IsAskedForInAnEmptyList) {
  ASSERT_TRUE(start("modello.tvx"));
  const auto expectEmpty = [] {
    EXPECT_EQ(status(), complete(0));
    EXPECT_FALSE(pages()->isEnabled() || mainControl("cmdCancella")->isEnabled() ||
                 mainControl("cmdDuplica")->isEnabled());
    EXPECT_TRUE(mainControl("cmdAddNew")->hasFocus());
  };
  expectEmpty();
  for (const char* name : {"mnuModElimina", "mnuModDuplica", "mnuCancellaMultiplo"}) trigger(name);
  press(Qt::Key_Space);
  EXPECT_TRUE(pages()->isEnabled());
  EXPECT_EQ(folder_.found("SELECT RacID, TipoRac FROM MAIN", "modello.tvx"), QString("1|0"));
  answer(platform::kYes);
  press("Alt+C");
  expectEmpty();
  selectByTab(3);
  expectEmpty();
}

}  // namespace
}  // namespace tavolix
