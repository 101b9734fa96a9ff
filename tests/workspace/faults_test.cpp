#include <QApplication>
#include <QDir>

#include "core/modcuore.h"
#include "core/raccolte.h"
#include "desk.h"

namespace tavolix {
namespace {

using std::function;

// What the program does when archive or settings are not as they should be: it says so, and
// goes on.
class Faults : public Desk {
 protected:
  // Lets messages that may come be answered.
  static void ready() {
    for (int i = 0; i < 40; ++i) answer(platform::kOk);
  }
  int inFile(const QString& table) const {
    return folder_.found("SELECT count(*) FROM " + table).toInt();
  }
  QString complete() const {
    return QStringLiteral("Elenco completo: %1 records").arg(inFile("LIB"));
  }
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
  const function<void()> ways[] = {
      [] { fill("txtTitolo", "Troppo tardi"); },
      [] {
        goTo(4, "Titolo");
        type("Troppo tardi");
        press(Qt::Key_Return);
      },
      [] {
        press(Qt::Key_Down);
        press(Qt::Key_Up);
      },
      [] { press(Qt::Key_F11); },
      [] { DBRefresh(); },
  };
  for (const auto& act : ways) {
    goTo(4);
    const QString key = stored("RacID");
    folder_.outside("DELETE FROM MAIN WHERE TipoRac = 0 AND RacID = " + key +
                    "; DELETE FROM LIB WHERE ID = " + key);
    ready();
    act();
    // What was typed for the row is told once more, and given up with it.
    press(Qt::Key_Escape);
    selectByTab(2);
    expectAlive(2);
    selectByTab(0);
    EXPECT_EQ(status(), complete());
  }
}

TEST_F(Faults, ADeletionOfWhatIsGone) {
  ASSERT_TRUE(start());
  const struct {
    QString gone;
    const char* told;
    int left;  // detail rows
  } cases[] = {{"MAIN WHERE TipoRac = 0 AND RacID = ", "primaria", 1},
               {"LIB WHERE ID = ", "secondaria", 0}};
  for (const auto& c : cases) {
    goTo(4);
    const QString key = stored("RacID");
    folder_.outside("DELETE FROM " + c.gone + key);
    answer(platform::kYes);
    ready();
    press(Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(message(), QString("Attenzione! 48 Errore in cancellazione tab ") + c.told);
    EXPECT_EQ(inFile("LIB WHERE ID = " + key), c.left);
    EXPECT_EQ(list()->RecordCount(), inFile("MAIN WHERE TipoRac = 0"));
  }
  expectAlive(0);
}

TEST_F(Faults, AListThatIsNotThere) {
  folder_.outside("DELETE FROM QUERYDEF WHERE Name IN ('Q_LIB', 'Q_VID')");
  const int all = inFile("MAIN");
  ready();
  ASSERT_TRUE(start());
  EXPECT_TRUE(message().contains("3078"));
  ready();
  for (const char* name : {"mnuModNuovo", "mnuModDuplica", "mnuModElimina", "mnuCancellaMultiplo",
                           "mnuEliminaFiltro", "mnuVarieSalva", "mnuMaxExtension"}) {
    trigger(name);
  }
  trigger("mnuMaxExtension");
  expectAlive(2);
  // The form of one collection never stands beside the rows of another.
  ready();
  selectByTab(3);
  EXPECT_TRUE(message().contains("3078"));
  EXPECT_EQ(list(), nullptr);
  press(Qt::Key_C, Qt::AltModifier);
  EXPECT_EQ(message(), QString("-"));
  EXPECT_EQ(inFile("MAIN"), all);
  expectAlive(2);
}

TEST_F(Faults, ALockedArchive) {
  ASSERT_TRUE(start());
  goTo(3);
  Outside other(folder_.path("esempio.tvx"), SQLite::OPEN_READWRITE);
  other.exec("BEGIN EXCLUSIVE");
  ready();
  fill("txtTitolo", "In attesa");
  EXPECT_TRUE(message().contains("3260"));
  EXPECT_EQ(boxText("txtTitolo"), QString("In attesa"));
  other.exec("COMMIT");
  EXPECT_EQ(changesBy([] { press(Qt::Key_Down); }), QString("MAIN.Titolo=In attesa"));
  EXPECT_EQ(message(), QString("-"));
  const int all = inFile("LIB");
  const QString counter = folder_.found("SELECT ID FROM CONT");
  other.exec("BEGIN EXCLUSIVE");
  ready();
  press(Qt::Key_F12);
  EXPECT_TRUE(message().contains("3260"));
  other.exec("COMMIT");
  EXPECT_EQ(inFile("LIB"), all);
  EXPECT_EQ(folder_.found("SELECT ID FROM CONT"), counter);
  expectAlive(2);
  selectByTab(0);
  press(Qt::Key_F12);
  EXPECT_EQ(inFile("LIB"), all + 1);
}

TEST_F(Faults, AFileThatBreaks) {
  const struct {
    const char* way;
    function<void()> act;
  } cases[] = {
      {"the last row", [] { press(Qt::Key_End); }},   {"a list", [] { click(box("cboLingua")); }},
      {"another collection", [] { selectByTab(3); }}, {"a new record", [] { press(Qt::Key_F12); }},
      {"typing", [] { fill("txtTitolo", "Prova"); }}, {"the end", [] { trigger("mnuFileChiudi"); }},
  };
  const QString path = folder_.path("esempio.tvx");
  QFile::copy(path, path + ".intero");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.way);
    QFile::remove(path);
    QFile::copy(path + ".intero", path);
    ASSERT_TRUE(start());
    QFile(path).resize(100);
    ready();
    c.act();
    QApplication::processEvents();
    EXPECT_EQ(message().contains("3049"), c.way != std::string("the end"));
    ready();
    end();
    message();
  }
}

// A counter behind the keys in use: each attempt is told, leaves nothing and goes one further.
TEST_F(Faults, ACounterThatIsBehind) {
  folder_.outside("UPDATE CONT SET ID = (SELECT max(ID) FROM LIB) - 1");
  const int records = inFile("MAIN");
  const int books = inFile("LIB");
  ASSERT_TRUE(start());
  for (const int made : {0, 1}) {
    ready();
    press(Qt::Key_F12);
    EXPECT_EQ(message().contains("3022"), made == 0);
    EXPECT_EQ(inFile("MAIN"), records + made);
    EXPECT_EQ(inFile("LIB"), books + made);
  }
}

TEST_F(Faults, SettingsThatAreNoSettings) {
  ASSERT_TRUE(start());
  QFile::remove(folder_.path("tvx.ini"));
  QDir(folder_.path()).mkdir("tvx.ini");
  expectAlive(5);
  trigger("mnuFileChiudi");
  EXPECT_EQ(message(), QString("-"));
  end();
  answer(platform::kOk);
  EXPECT_FALSE(start());
  EXPECT_EQ(message(), QString("Attenzione! 48 Nessun archivio da aprire."));
}

}  // namespace
}  // namespace tavolix
