#include <QLineEdit>

#include "desk.h"
#include "store/patience.h"

namespace tavolix {
namespace {

using std::function;

// What works on the current record or list, if there is one.
constexpr const char* kCommands[] = {"mnuMaxExtension",  "mnuMaxExtension", "mnuVarieSalva",
                                     "mnuModElimina",    "mnuModDuplica",   "mnuCancellaMultiplo",
                                     "mnuEliminaFiltro", "mnuModNuovo"};

// What the program does when archive or settings are not as they should be: it says so, and
// goes on.
class Faults : public Desk {
 protected:
  // The program still shows, changes and writes records.
  void expectAlive(int collection) {
    message();
    selectByTab(collection);
    EXPECT_EQ(iRacCorr, collection);
    goTo(3);
    EXPECT_EQ(boxText("txtCod"), cell(3, "Cod"));
    fill("txtNote", "");
    EXPECT_EQ(changesBy([] { fill("txtNote", "ancora viva"); }), QString("MAIN.Note=ancora viva"));
    EXPECT_EQ(message(), QString("-"));
  }
};

TEST_F(Faults, ARowThatIsGone) {
  ASSERT_TRUE(start());
  const auto typeInCell = [] {
    goTo(4, "Titolo");
    type("Troppo tardi");
    press("Return");
  };
  const function<void()> ways[] = {
      [] { fill("txtTitolo", "Troppo tardi"); },
      typeInCell,
      [] { press("Down Up"); },
      [] { press("F11"); },
      DBRefresh,
  };
  for (const auto& act : ways) {
    goTo(4);
    const QString key = stored("RacID");
    folder_.outside("DELETE FROM MAIN WHERE RacID = " + key +
                    "; DELETE FROM LIB WHERE ID = " + key);
    answerAll();
    act();
    // What was typed for the row is told once more, and given up with it.
    press("Esc");
    expectAlive(2);
    selectByTab(0);
    EXPECT_EQ(status(), complete(count("LIB")));
  }
}

TEST_F(Faults, ADeletionOfWhatIsGone) {
  ASSERT_TRUE(start());
  const struct {
    QString gone;
    const char* told;
    int left;  // detail rows
  } cases[] = {{"MAIN WHERE RacID = ", "primaria", 1}, {"LIB WHERE ID = ", "secondaria", 0}};
  for (const auto& c : cases) {
    goTo(4);
    const QString key = stored("RacID");
    folder_.outside("DELETE FROM " + c.gone + key);
    answer(platform::kYes);
    answerAll();
    press("Alt+C");
    EXPECT_EQ(message(), QString("Attenzione! 48 Errore in cancellazione tab ") + c.told);
    EXPECT_EQ(count("LIB WHERE ID = " + key), c.left);
    EXPECT_EQ(list()->RecordCount(), count("MAIN WHERE TipoRac = 0"));
  }
  expectAlive(0);
}

TEST_F(Faults, AListThatIsNotThere) {
  folder_.outside("DELETE FROM QUERYDEF WHERE Name IN ('Q_LIB', 'Q_VID')");
  const int all = count("MAIN");
  answerAll();
  ASSERT_TRUE(start());
  EXPECT_TRUE(message().contains("3078"));
  answerAll();
  for (const char* name : kCommands) trigger(name);
  expectAlive(2);
  // The form of one collection never stands beside the rows of another.
  answerAll();
  selectByTab(3);
  EXPECT_TRUE(message().contains("3078"));
  EXPECT_EQ(list(), nullptr);
  EXPECT_EQ(status(), complete(0));
  press("Alt+C");
  EXPECT_EQ(message(), QString("-"));
  EXPECT_EQ(count("MAIN"), all);
  expectAlive(2);
}

// What cannot be written stays where it was typed, is told once, and written wherever one goes.
TEST_F(Faults, ALockedArchive) {
  const function<void()> ways[] = {[] { press("Down"); }, [] { press("F12"); },
                                   [] { selectByTab(2); }, [] { trigger("mnuEliminaFiltro"); },
                                   [] { trigger("mnuFileChiudi"); }};
  const function<void()>& leaves = ways[4];
  store::mostPatience = 100;
  for (const bool inCell : {false, true}) {
    ASSERT_TRUE(start());
    const auto typed = [inCell] {
      const auto* cell = grid()->indexWidget(grid()->currentIndex());
      return inCell && cell != nullptr ? dynamic_cast<const QLineEdit&>(*cell).text()
                                       : boxText("txtTitolo");
    };
    for (const auto& go : ways) {
      SCOPED_TRACE(QStringLiteral("%1 %2").arg(inCell).arg(&go - ways).toStdString());
      selectByTab(0);
      goTo(3, "Titolo");
      const QString text = "Poi " + stored("Titolo");
      Outside other(folder_.path("esempio.tvx"), SQLite::OPEN_READWRITE);
      other.exec("BEGIN EXCLUSIVE");
      answer(platform::kOk);
      if (inCell) {
        press("F2");
        replace(text);
        press("Return");
        QTest::qWait(1);
      } else {
        fill("txtTitolo", text);
      }
      EXPECT_TRUE(message().contains("3260"));
      if (&go == &leaves) answer(platform::kYes);
      go();
      const QString asked = message();
      EXPECT_EQ(asked == "-", &go != &leaves);
      EXPECT_EQ(asked.contains("bloccato"), &go == &leaves) << "it says why";
      EXPECT_EQ(typed(), text);
      EXPECT_EQ(iRacCorr, 0);
      EXPECT_EQ(tabs()->SelectedTag(), QString("0"));
      EXPECT_EQ(list()->AbsolutePosition(), 3);
      other.exec("COMMIT");
      EXPECT_EQ(changesBy(go), "MAIN.Titolo=" + text);
      EXPECT_EQ(message(), QString("-"));
    }
    end();
  }
  store::mostPatience = 2000;
}

// Without its columns a collection is none, and what works on one does nothing. It can be chosen
// again in every way.
TEST_F(Faults, ACollectionThatCannotBeLoaded) {
  ASSERT_TRUE(start());
  auto* notice = control("frmGrid", "avvisoLettura");
  const function<void()> again[] = {[&] { click(notice->findChild<QWidget*>("cmdRiprova")); },
                                    [] { selectByTab(5); },
                                    [] { trigger("mnuRaccolteMedicinali"); }};
  for (const auto& choose : again) {
    selectByTab(0);
    aRaccolte(0).sFiltro = " WHERE MAIN.ID > 3";
    DBRefresh();
    folder_.outside("ALTER TABLE GRDCONFIG RENAME TO ALTRA");
    const QString before =
        folder_.found("SELECT * FROM ALTRA") + folder_.found("SELECT * FROM MED");
    answer(platform::kOk);
    trigger("mnuRaccolteMedicinali");
    EXPECT_TRUE(message().contains("InizializzaTab")) << message().toStdString();
    EXPECT_TRUE(notice->isVisible());
    EXPECT_EQ(title(), QString("Raccolta Medicinali non caricata"));
    for (const char* name : kCommands) trigger(name);
    press("F12 Alt+N Alt+C Alt+D F9 Ctrl+F");
    EXPECT_FALSE(aRaccolte(5).oForm->IsLoaded());
    EXPECT_EQ(grid()->ColumnCount(), 0);
    EXPECT_EQ(folder_.found("SELECT * FROM ALTRA") + folder_.found("SELECT * FROM MED"), before);
    folder_.outside("ALTER TABLE ALTRA RENAME TO GRDCONFIG");
    choose();
    EXPECT_EQ(title(), QString("Raccolta Medicinali"));
    EXPECT_EQ(status(), complete(count("MED")));
    EXPECT_FALSE(notice->isVisible());
    EXPECT_EQ(boxText("txtCod"), cell(0, "Cod"));
  }
}

TEST_F(Faults, AnArchiveThatStaysLocked) {
  store::mostPatience = 100;
  ASSERT_TRUE(start());
  Outside other(folder_.path("esempio.tvx"), SQLite::OPEN_READWRITE);
  other.exec("BEGIN IMMEDIATE");
  enter("txtTitolo");
  replace("Mai scritto");
  answer(platform::kNo);
  trigger("mnuFileChiudi");
  EXPECT_FALSE(platform::forms().isLoaded("frmGrid"));
  other.exec("COMMIT");
  EXPECT_EQ(count("MAIN WHERE Titolo = 'Mai scritto'"), 0);
  store::mostPatience = 2000;
}

// One message, then a notice in the list until the file is there again.
TEST_F(Faults, AListThatCannotBeRead) {
  platform::readPause = 20;
  ASSERT_TRUE(start());
  QFile file(folder_.path("esempio.tvx"));
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  const QByteArray whole = file.readAll();
  auto* notice = control("frmGrid", "avvisoLettura");
  EXPECT_FALSE(notice->isVisible());
  file.resize(100);
  answer(platform::kOk);
  press("End");
  QTest::qWait(300);
  EXPECT_TRUE(message().contains("3049"));
  EXPECT_TRUE(notice->isVisible());
  press("Up");
  QTest::qWait(300);
  EXPECT_EQ(message(), QString("-"));
  EXPECT_EQ(boxText("txtTitolo"), QString(""));
  EXPECT_FALSE(box("txtTitolo")->isEnabled());
  file.seek(0);
  file.write(whole);
  file.flush();
  click(notice->findChild<QWidget*>("cmdRiprova"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return !notice->isVisible(); }));
  EXPECT_EQ(boxText("txtTitolo"), stored("Titolo"));
  EXPECT_TRUE(box("txtTitolo")->isEnabled());
  platform::readPause = 2000;
}

TEST_F(Faults, AFileThatBreaks) {
  const function<void()> ways[] = {
      [] { press("End"); }, [] { click(box("cboLingua")); },    [] { selectByTab(3); },
      [] { press("F12"); }, [] { fill("txtTitolo", "Prova"); }, [] { trigger("mnuFileChiudi"); },
  };
  const QString path = folder_.path("esempio.tvx");
  QFile::copy(path, path + ".intero");
  for (const auto& act : ways) {
    QFile::remove(path);
    QFile::copy(path + ".intero", path);
    ASSERT_TRUE(start());
    QFile(path).resize(100);
    answerAll();
    act();
    QApplication::processEvents();
    // Ending the program asks nothing of the file.
    // A collection that cannot be opened is told once, and says so in its list.
    if (&act == &ways[2]) {
      EXPECT_EQ(platform::MessageBoxSeam::shown().size(), 1);
      EXPECT_TRUE(control("frmGrid", "avvisoLettura")->isVisible());
      EXPECT_FALSE(title().contains("corso"));
    }
    EXPECT_EQ(message().contains("3049"), &act != &ways[5]) << &act - ways;
    answerAll();
    end();
    message();
  }
}

// A counter that falls behind the keys in use: each attempt is told, leaves nothing and goes one
// further. Without one no record is made.
TEST_F(Faults, ACounterThatIsBehind) {
  const int records = count("MAIN");
  const int books = count("LIB");
  ASSERT_TRUE(start());
  folder_.outside("UPDATE CONT SET ID = (SELECT max(ID) FROM LIB) - 1");
  goTo(4);
  const QString code = stored("Cod");
  for (const int made : {0, 1}) {
    answerAll();
    press("F12");
    EXPECT_EQ(message().contains("3022"), made == 0);
    EXPECT_EQ(boxText("txtCod") == code, made == 0);
    EXPECT_EQ(count("MAIN"), records + made);
    EXPECT_EQ(count("LIB"), books + made);
  }
  folder_.outside("DELETE FROM CONT");
  answerAll();
  press("F12");
  EXPECT_TRUE(message().contains("cuore!lNewCont"));
  EXPECT_EQ(count("MAIN"), records + 1);
  EXPECT_EQ(count("LIB"), books + 1);
}

}  // namespace
}  // namespace tavolix
