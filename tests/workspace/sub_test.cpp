#include "desk.h"
#include "store/patience.h"

namespace tavolix {
namespace {

// The child rows of a record.
class Sub : public Desk {
 protected:
  void SetUp() override { ASSERT_TRUE(start()); }

  static QWidget* part(const QString& name) { return control("frmSub", name); }
  static platform::DataGrid* rows() { return static_cast<platform::DataGrid*>(part("grdSub")); }
  static QString field(int campo) { return aCampi(iRacCorr, campo).oControllo->Text(); }
  // Keys as they come from the window system: to the window that had the focus when they were
  // pressed, whatever opens meanwhile.
  static void strike(const QString& letters) {
    for (const QChar letter : letters) {
      const Qt::Key key = letter == u'\n' ? Qt::Key_Return : Qt::Key(letter.toUpper().unicode());
      const QString text = letter == u'\n' ? "\r" : QString(letter);
      QTest::sendKeyEvent(QTest::Click, QApplication::focusWindow(), key, text, {});
    }
  }
  static void strike(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWindow(), key, modifiers);
  }
};

TEST_F(Sub, ShowsTheRowsOfItsRecord) {
  for (const int collection : {2, 1, 7, 2}) {
    selectByTab(collection);
    for (const int row : {0, 3}) {
      goTo(row);
      const int sub = aRaccolte(collection).iSottoRaccolta;
      const tRaccolta& children = aRaccolte(sub);
      const QString heading = "Sottoraccolta " + children.sNome + " - " + field(0) + ' ' + field(1);
      const QString own =
          children.sTabPrincipale + " WHERE " + children.sCampoPadre + " = " + stored("RacID");
      inChildren([&] {
        EXPECT_EQ(iRacCorr, sub);
        EXPECT_EQ(rows()->window()->windowTitle(), heading);
        EXPECT_EQ(rows()->model()->rowCount(), count(own));
        EXPECT_GT(rows()->ColumnCount(), 4);
        for (int i = kRaccoltePrincipali; i < kRaccolte; ++i) {
          EXPECT_EQ(part(QStringLiteral("panRecord(%1)").arg(i))->isVisible(), i == sub);
        }
        press("Esc");
      });
      EXPECT_EQ(iRacCorr, collection);
    }
  }
}

// A disc with twelve pieces, typed as fast as the keys go, none of them waiting for a window.
TEST_F(Sub, TakesADiscFromTheKeyboardAlone) {
  selectByTab(2);
  QStringList expected;
  strike(Qt::Key_N, Qt::AltModifier);
  strike("Disco nuovo\nbea\n");
  QTimer::singleShot(0, qApp, [&] {
    for (int i = 1; i <= 12; ++i) {
      strike(Qt::Key_N, Qt::AltModifier);
      strike(
          QStringLiteral("%1\n%2%3\n1\nBrano %1\nth\njaz\n\nnota %1").arg(i).arg(i % 10).arg(30));
      expected << QStringLiteral("%1|%2|1|Brano %1|The Beatles|1|nota %1")
                      .arg(i)
                      .arg(60 * (i % 10) + 30);
    }
    strike(Qt::Key_Escape);
    strike("codice");
  });
  strike(Qt::Key_F9);
  ASSERT_TRUE(QTest::qWaitFor([] { return !platform::forms()["frmSub"].IsVisible(); }));
  QTest::qWait(50);
  EXPECT_EQ(stored("Titolo"), QString("Disco nuovo"));
  const QString pieces =
      "SELECT CAST(NrBrano AS INTEGER), Durata, CAST(NrSupporto AS INTEGER), Titolo,"
      " (SELECT \"Desc\" FROM TAB WHERE ID = TABAutoreID), TabGenereID > 0, Note"
      " FROM AUDSUB WHERE AudID = ";
  EXPECT_EQ(folder_.found(pieces + stored("AUD.ID")), expected.join('\n'));
}

TEST_F(Sub, AddsCopiesAndDeletes) {
  selectByTab(1);
  const QString own = "RIVSUB WHERE RivID = " + stored("RIV.ID");
  folder_.outside("DELETE FROM " + own);
  auto* add = part("cmdAddNew");
  const auto colour = [add] { return add->palette().color(QPalette::ButtonText); };
  inChildren([&] {
    const QColor before = colour();
    const auto expectEmpty = [&] {
      EXPECT_FALSE(part("panRecord(8)")->isEnabled());
      EXPECT_FALSE(part("cmdCancella")->isEnabled() || part("cmdDuplica")->isEnabled());
      EXPECT_TRUE(QTest::qWaitFor([&] { return colour() != before; }));
    };
    expectEmpty();
    press("Alt+N");
    EXPECT_TRUE(part("panRecord(8)")->isEnabled() && part("cmdCancella")->isEnabled());
    type("L'articolo");
    press("Return Alt+D");
    EXPECT_EQ(field(0), QString("L'articolo"));
    replace("Copia");
    press("Return");
    answer(platform::kNo);
    press("Alt+C");
    EXPECT_EQ(message(), QString("Attenzione! 36 Vuoi veramente cancellare il record corrente?"));
    EXPECT_EQ(folder_.found("SELECT Titolo FROM " + own), QString("L'articolo\nCopia"));
    for (int left = 1; left >= 0; --left) {
      answer(platform::kYes);
      press("Alt+C");
      EXPECT_EQ(count(own), left);
    }
    expectEmpty();
    closeByBox("frmSub");
    EXPECT_EQ(colour(), before);
  });
  EXPECT_EQ(iRacCorr, 1);
}

TEST_F(Sub, CleansACellThatIsNoNumber) {
  selectByTab(2);
  inChildren([&] {
    rows()->setCurrentIndex(rows()->model()->index(1, 0));
    rows()->setFocus();
    press("F2");
    replace("x");
    press("Return");
    QTest::qWait(1);
    EXPECT_EQ(rows()->model()->index(1, 0).data().toString(), QString("1"));
    EXPECT_EQ(field(0), QString("1"));
  });
}

TEST_F(Sub, ShowsAndAddsNoRowsWhereItCannot) {
  // Nothing was opened before, then the same, then another sub-collection.
  for (const int before : {-1, 2, 1}) {
    if (before != -1) {
      selectByTab(before);
      inChildren([] {});
    }
    selectByTab(2);
    aRaccolte(9).sCampoPadre = "NonEsiste";
    goTo(2);
    answerAll();
    inChildren([] {
      EXPECT_NE(message(), QString("-"));
      EXPECT_EQ(rows()->model()->rowCount(), 0);
      for (int i = kRaccoltePrincipali; i < kRaccolte; ++i) {
        const auto* panel = part(QStringLiteral("panRecord(%1)").arg(i));
        EXPECT_FALSE(panel->isVisible() && panel->isEnabled()) << i;
      }
      answer(platform::kOk);
      press("Alt+N");
    });
    EXPECT_EQ(iRacCorr, 2);
    aRaccolte(9).sCampoPadre = "AudID";
  }
  // A record that another program has deleted, with its rows shown.
  const QString key = stored("AUD.ID");
  inChildren([&] {
    for (const char* row : {"MAIN WHERE RacID = ", "AUD WHERE ID = ", "AUDSUB WHERE AudID = "}) {
      folder_.outside("DELETE FROM " + (row + key));
    }
    answerAll();
    press("Alt+D Alt+N");
    EXPECT_NE(message(), QString("-"));
    EXPECT_EQ(count("AUDSUB WHERE AudID = " + key), 0);
  });
}

// A row that could not be made leaves the one that was current, and takes no keys of it.
TEST_F(Sub, GoesOnWithItsRowAfterALock) {
  selectByTab(2);
  const QString own = "AUDSUB WHERE AudID = " + stored("AUD.ID");
  const int before = count(own);
  store::mostPatience = 100;
  inChildren([&] {
    for (const char* key : {"Alt+N", "Alt+D"}) {
      rows()->setCurrentIndex(rows()->model()->index(1, 0));
      Outside other(folder_.path("esempio.tvx"), SQLite::OPEN_READWRITE);
      other.exec("BEGIN IMMEDIATE");
      answer(platform::kOk);
      press(key);
      EXPECT_TRUE(message().contains("3260"));
      other.exec("COMMIT");
      part("txtSubAudTitolo")->setFocus();
      replace(key);
      press("Return");
      EXPECT_EQ(count(own + " AND Titolo = '" + key + "'"), 1);
    }
  });
  EXPECT_EQ(count(own), before);
  store::mostPatience = 2000;
}

TEST_F(Sub, CopiesTheStoredDateOfOneThatIsNone) {
  selectByTab(7);
  const QString own = "PERSUB WHERE PerID = " + stored("PER.ID");
  folder_.outside("UPDATE PERSUB SET Data = 36526");
  inChildren([] {
    part("txtPerDta")->setFocus();
    replace("31022000");
    press("Alt+D");
  });
  EXPECT_EQ(count(own + " AND Data IS NULL"), 0);
}

}  // namespace
}  // namespace tavolix
