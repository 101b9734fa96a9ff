#include <QApplication>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QTabWidget>
#include <QTest>

#include "core/campi.h"
#include "core/modcuore.h"
#include "core/modmain.h"
#include "core/raccolte.h"
#include "desk.h"
#include "platform/bound_control.h"

namespace tavolix {
namespace {

using std::function;

// What the program does when archive or settings are not as they should be: it says so, and
// goes on.
class Faults : public Desk {
 protected:
  // Lets a message that may come be answered.
  static void ready(int answers = 4) {
    for (int i = 0; i < answers; ++i) answer(platform::kOk);
  }
  // How many records of a table the file has.
  int inFile(const QString& table) const {
    return folder_.found("SELECT count(*) FROM " + table).toInt();
  }
  static QString complete(int rows) {
    return QStringLiteral("Elenco completo: %1 records").arg(rows);
  }
  // The program still shows, changes and writes records.
  void expectAlive(int collection) {
    message();
    selectByTab(collection);
    EXPECT_EQ(iRacCorr, collection);
    goTo(3);
    EXPECT_EQ(boxText("txtCod"), cell(3, "Cod"));
    const QString key = stored("RacID");
    fill("txtNote", "ancora viva");
    EXPECT_EQ(
        folder_.found(QStringLiteral("SELECT Note FROM MAIN WHERE TipoRac = %1 AND RacID = %2")
                          .arg(collection)
                          .arg(key)),
        QString("ancora viva"));
    EXPECT_EQ(message(), QString("-"));
  }
};

TEST_F(Faults, ARowThatIsGone) {
  ASSERT_TRUE(start());
  const struct {
    const char* way;
    function<void()> act;
  } cases[] = {
      {"typing", [] { fill("txtTitolo", "Troppo tardi"); }},
      {"a tick", [] { fill("txtVoto", "5"); }},
      {"a cell",
       [] {
         goTo(4, "Titolo");
         type("Troppo tardi");
         press(Qt::Key_Return);
       }},
      {"keys",
       [] {
         leave();
         press(Qt::Key_Down);
         press(Qt::Key_Up);
         press(Qt::Key_Up);
       }},
      {"a copy", [] { press(Qt::Key_F11); }},
      {"a new record", [] { press(Qt::Key_F12); }},
      {"another collection",
       [] {
         selectByTab(2);
         selectByTab(0);
       }},
      {"sorting",
       [] {
         aRaccolte(0).sOrdine = " ORDER BY Titolo";
         DBRefresh();
       }},
      {"extension",
       [] {
         trigger("mnuMaxExtension");
         trigger("mnuMaxExtension");
       }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.way);
    goTo(4);
    const QString key = stored("RacID");
    folder_.outside("DELETE FROM MAIN WHERE TipoRac = 0 AND RacID = " + key +
                    "; DELETE FROM LIB WHERE ID = " + key);
    ready();
    c.act();
    message();
    // What was typed for the row is told once more, and given up with it.
    ready();
    press(Qt::Key_Escape);
    selectByTab(2);
    message();
    expectAlive(2);
    selectByTab(0);
    EXPECT_EQ(status(),
              "Elenco completo: " + folder_.found("SELECT count(*) FROM LIB") + " records");
  }
}

TEST_F(Faults, ADeletionOfWhatIsGone) {
  ASSERT_TRUE(start());
  const int all = inFile("LIB");
  goTo(4);
  const QString key = stored("RacID");
  folder_.outside("DELETE FROM MAIN WHERE TipoRac = 0 AND RacID = " + key);
  answer(platform::kYes);
  ready();
  press(Qt::Key_C, Qt::AltModifier);
  EXPECT_EQ(message(), QString("Attenzione! 48 Errore in cancellazione tab primaria"));
  EXPECT_EQ(status(), complete(all - 1));
  goTo(4);
  folder_.outside("DELETE FROM LIB WHERE ID = " + stored("RacID"));
  answer(platform::kYes);
  ready();
  press(Qt::Key_C, Qt::AltModifier);
  EXPECT_EQ(message(), QString("Attenzione! 48 Errore in cancellazione tab secondaria"));
  EXPECT_EQ(status(), complete(all - 2));
  expectAlive(0);
}

TEST_F(Faults, AColumnThatTheListDoesNotHave) {
  folder_.outside(
      "UPDATE GRDCONFIG SET NomeCampo = 'Prezzo', titolo = 'Prezzo'"
      " WHERE NomeQuery = 'Q_LIB' AND Colonna = 1");
  ASSERT_TRUE(start());
  EXPECT_EQ(message(), QString("-"));
  EXPECT_EQ(grid()->ColumnCount(), 12);
  EXPECT_EQ(cell(0, "Prezzo"), QString(""));
  expectAlive(0);
  QHeaderView* head = grid()->horizontalHeader();
  const int column = cellAt(0, "Prezzo").column();
  ready();
  QTest::mouseClick(head->viewport(), Qt::LeftButton, {},
                    {head->sectionViewportPosition(column) + 8, head->height() / 2});
  EXPECT_TRUE(message().contains("3061"));
  EXPECT_EQ(status(), complete(inFile("LIB")));
  // The order that cannot be stays until another is chosen; nothing else is shown meanwhile.
  ready();
  selectByTab(2);
  selectByTab(0);
  EXPECT_TRUE(message().contains("3061"));
  EXPECT_EQ(list(), nullptr);
  ready();
  QTest::mouseClick(head->viewport(), Qt::LeftButton, {},
                    {head->sectionViewportPosition(0) + 8, head->height() / 2});
  EXPECT_EQ(message(), QString("-"));
  EXPECT_EQ(list()->RecordCount(), inFile("LIB"));
  expectAlive(0);
}

TEST_F(Faults, AListThatIsNotThere) {
  folder_.outside("DELETE FROM QUERYDEF WHERE Name = 'Q_VID'");
  ASSERT_TRUE(start());
  ready();
  selectByTab(3);
  EXPECT_TRUE(message().contains("3078"));
  // The form of one collection never stands beside the rows of another.
  const store::RecordsetPtr rows = list();
  EXPECT_TRUE(iRacCorr != 3 || rows == nullptr || !rows->IsOpen() || rows->RecordCount() == 0);
  const QString all = folder_.found("SELECT count(*) FROM MAIN");
  answer(platform::kYes);
  ready();
  press(Qt::Key_C, Qt::AltModifier);
  EXPECT_EQ(message(), QString("-"));
  EXPECT_EQ(folder_.found("SELECT count(*) FROM MAIN"), all);
  ready();
  expectAlive(2);
}

TEST_F(Faults, AFirstListThatIsNotThere) {
  folder_.outside("DELETE FROM QUERYDEF WHERE Name = 'Q_LIB'");
  ready();
  ASSERT_TRUE(start());
  EXPECT_TRUE(message().contains("3078"));
  ready(20);
  for (const char* name : {"mnuModNuovo", "mnuModDuplica", "mnuModElimina", "mnuCancellaMultiplo",
                           "mnuEliminaFiltro", "mnuVarieSalva", "mnuMaxExtension"}) {
    trigger(name);
  }
  trigger("mnuMaxExtension");
  expectAlive(2);
}

TEST_F(Faults, ALockedArchive) {
  ASSERT_TRUE(start());
  goTo(3);
  const QString key = stored("RacID");
  Outside other(folder_.path("esempio.tvx"), SQLite::OPEN_READWRITE);
  other.exec("BEGIN EXCLUSIVE");
  ready();
  fill("txtTitolo", "In attesa");
  EXPECT_TRUE(message().contains("3260"));
  EXPECT_EQ(boxText("txtTitolo"), QString("In attesa"));
  other.exec("COMMIT");
  press(Qt::Key_Down);
  EXPECT_EQ(folder_.found("SELECT Titolo FROM MAIN WHERE TipoRac = 0 AND RacID = " + key),
            QString("In attesa"));
  EXPECT_EQ(message(), QString("-"));
  const int all = inFile("LIB");
  const QString counter = folder_.found("SELECT ID FROM CONT");
  other.exec("BEGIN EXCLUSIVE");
  ready(8);
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
    bool told;
  } cases[] = {
      {"scrolling",
       [] {
         for (int i = 0; i < 12; ++i) press(Qt::Key_PageDown);
       },
       true},
      {"the last row", [] { press(Qt::Key_End); }, true},
      {"a list",
       [] {
         enter("cboLingua");
         type("fr");
         press(Qt::Key_Return);
       },
       true},
      {"a list clicked", [] { click(box("cboLingua")); }, true},
      {"a list in a cell",
       [] {
         for (int i = 0; i < 7; ++i) press(Qt::Key_Right);
         press(Qt::Key_F2);
       },
       true},
      {"sorting",
       [] {
         aRaccolte(0).sOrdine = " ORDER BY Titolo";
         DBRefresh();
       },
       true},
      {"another collection",
       [] {
         selectByTab(3);
         selectByTab(0);
       },
       true},
      {"a new record", [] { press(Qt::Key_F12); }, true},
      {"a copy", [] { press(Qt::Key_F11); }, true},
      {"a deletion", [] { press(Qt::Key_C, Qt::AltModifier); }, true},
      {"typing", [] { fill("txtTitolo", "Prova"); }, true},
      {"columns", [] { trigger("mnuVarieSalva"); }, true},
      {"a larger window",
       [] {
         window()->resize(1300, 1400);
         grid()->viewport()->repaint();
       },
       true},
      {"the end", [] { trigger("mnuFileChiudi"); }, false},
  };
  const QByteArray whole = [this] {
    QFile file(folder_.path("esempio.tvx"));
    file.open(QIODevice::ReadOnly);
    return file.readAll();
  }();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.way);
    folder_.writeFile("esempio.tvx", whole);
    ASSERT_TRUE(start());
    ASSERT_GT(list()->RecordCount(), 500);
    QFile(folder_.path("esempio.tvx")).resize(100);
    if (QByteArray(c.way) == "a deletion") answer(platform::kYes);
    ready(40);
    c.act();
    QApplication::processEvents();
    const QString told = message();
    EXPECT_EQ(told.contains("3049"), c.told) << qPrintable(told);
    ready(40);
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

// Without its counter an archive gives the key 0: it is told each time, and made once at most.
TEST_F(Faults, AnArchiveWithoutACounter) {
  folder_.outside("DELETE FROM CONT");
  const int all = inFile("MAIN");
  ASSERT_TRUE(start());
  ready();
  press(Qt::Key_F12);
  EXPECT_TRUE(message().endsWith("Procedura: cuore!lNewCont"));
  EXPECT_EQ(inFile("MAIN"), all + 1);
  EXPECT_EQ(folder_.found("SELECT min(RacID) FROM MAIN"), QString("0"));
  ready();
  press(Qt::Key_F11);
  EXPECT_TRUE(message().contains("3022"));
  EXPECT_EQ(inFile("MAIN"), all + 1);
  EXPECT_EQ(folder_.found("SELECT count(DISTINCT RacID) FROM MAIN").toInt(), all + 1);
  expectAlive(2);
}

TEST_F(Faults, AFilterOrOrderThatCannotBe) {
  ASSERT_TRUE(start());
  for (const char* text : {" WHERE Prezzo > 1", " WHERE (", " ORDER BY Niente"}) {
    SCOPED_TRACE(text);
    QString& part = QString(text).contains("ORDER") ? aRaccolte(0).sOrdine : aRaccolte(0).sFiltro;
    part = text;
    ready();
    DBRefresh();
    EXPECT_TRUE(message().endsWith("Procedura: modCuore!DBRefresh"));
    EXPECT_EQ(list()->RecordCount(), inFile("LIB"));
    part.clear();
    expectAlive(0);
  }
}

TEST_F(Faults, SettingsThatAreNoSettings) {
  const struct {
    const char* way;
    function<void(const QString&)> spoil;
  } cases[] = {
      {"folder",
       [](const QString& path) {
         QFile::remove(path);
         QDir().mkdir(path);
       }},
      {"bytes",
       [](const QString& path) {
         QFile file(path);
         file.open(QIODevice::WriteOnly);
         file.write(QByteArray("[Application]\0\xFF\xFE", 16));
       }},
      {"missing", [](const QString& path) { QFile::remove(path); }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.way);
    ASSERT_TRUE(start());
    c.spoil(folder_.path("tvx.ini"));
    expectAlive(5);
    selectByTab(0);
    ready();
    trigger("mnuFileChiudi");
    EXPECT_EQ(message(), QString("-"));
    end();
    QDir(folder_.path("tvx.ini")).removeRecursively();
    c.spoil(folder_.path("tvx.ini"));
    ready();
    EXPECT_FALSE(start());
    EXPECT_EQ(message(), QString("Attenzione! 48 Nessun archivio da aprire."));
    end();
    QDir(folder_.path("tvx.ini")).removeRecursively();
    QFile::remove(folder_.path("tvx.ini"));
    QFile::copy(qEnvironmentVariable("TAVOLIX_DATA") + "/tvx.ini", folder_.path("tvx.ini"));
  }
}

TEST_F(Faults, AFileTakenAway) {
  ASSERT_TRUE(start());
  QFile::rename(folder_.path("esempio.tvx"), folder_.path("altrove.tvx"));
  ready(20);
  fill("txtTitolo", "Dove");
  press(Qt::Key_Down);
  selectByTab(2);
  press(Qt::Key_F12);
  press(Qt::Key_Escape);
  message();
  QFile::rename(folder_.path("altrove.tvx"), folder_.path("esempio.tvx"));
  ready(20);
  selectByTab(0);
  expectAlive(0);
}

}  // namespace
}  // namespace tavolix
