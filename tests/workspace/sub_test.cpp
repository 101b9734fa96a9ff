#include <QApplication>
#include <QPushButton>
#include <QTest>

#include "core/campi.h"
#include "core/modcuore.h"
#include "core/modmain.h"
#include "core/raccolte.h"
#include "desk.h"
#include "platform/bound_control.h"
#include "platform/data_control.h"
#include "platform/form.h"

namespace tavolix {
namespace {

using std::function;

// The child rows of a record.
class Sub : public Desk {
 protected:
  static QWidget* part(const QString& name) { return control("frmSub", name); }
  static platform::DataGrid* rows() { return static_cast<platform::DataGrid*>(part("grdSub")); }
  static void open(const function<void()>& work) {
    inForm(
        "frmSub", [] { press(Qt::Key_F9); }, work);
  }
  static QString field(int campo) { return aCampi(iRacCorr, campo).oControllo->Text(); }
  // Keys as they come from the window system: to the window that had the focus when they were
  // pressed, whatever opens meanwhile.
  static void strike(const QString& letters) {
    for (const QChar letter : letters) {
      if (letter == u'\n') {
        strike(Qt::Key_Return);
      } else {
        QTest::sendKeyEvent(QTest::Click, QApplication::focusWindow(),
                            Qt::Key(letter.toUpper().unicode()), QString(letter), {});
      }
    }
  }
  static void strike(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWindow(), key, modifiers);
  }
  QString children(const QString& table, const QString& link, const QString& parent) const {
    return folder_.found("SELECT count(*) FROM " + table + " WHERE " + link + " = " + parent);
  }
};

TEST_F(Sub, ShowsTheRowsOfItsRecord) {
  ASSERT_TRUE(start());
  const struct {
    int collection;
    const char* table;
    const char* link;
  } cases[] = {{2, "AUDSUB", "AudID"},
               {1, "RIVSUB", "RivID"},
               {7, "PERSUB", "PerID"},
               {2, "AUDSUB", "AudID"}};
  for (const auto& c : cases) {
    selectByTab(c.collection);
    for (const int row : {0, 3}) {
      goTo(row);
      const int sub = aRaccolte(c.collection).iSottoRaccolta;
      const QString parent = stored(aRaccolte(sub).sRifPadre);
      open([&] {
        EXPECT_EQ(iRacCorr, sub);
        EXPECT_EQ(rows()->window()->windowTitle(), "Sottoraccolta " + aRaccolte(sub).sNome + " - " +
                                                       aCampi(c.collection, 0).oControllo->Text() +
                                                       ' ' +
                                                       aCampi(c.collection, 1).oControllo->Text());
        EXPECT_EQ(QString::number(rows()->model()->rowCount()), children(c.table, c.link, parent));
        EXPECT_GT(rows()->ColumnCount(), 4);
        for (int i = kRaccoltePrincipali; i < kRaccolte; ++i) {
          EXPECT_EQ(part(QStringLiteral("panRecord(%1)").arg(i))->isVisible(), i == sub);
        }
        press(Qt::Key_Escape);
      });
      EXPECT_EQ(iRacCorr, c.collection);
    }
  }
  EXPECT_EQ(message(), QString("-"));
}

// A disc with twelve pieces, typed as fast as the keys go, none of them waiting for a window.
TEST_F(Sub, TakesADiscFromTheKeyboardAlone) {
  ASSERT_TRUE(start());
  selectByTab(2);
  const QString piece = QStringLiteral(
      "SELECT CAST(NrBrano AS INTEGER), Durata, CAST(NrSupporto AS INTEGER), Titolo, (SELECT "
      "\"Desc\" "
      "FROM TAB WHERE ID = TABAutoreID), TabGenereID > 0, Note "
      "FROM AUDSUB WHERE AudID = ");
  QStringList expected;
  strike(Qt::Key_N, Qt::AltModifier);
  strike("Disco nuovo\nbea");
  strike(Qt::Key_Return);
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
  EXPECT_EQ(folder_.found(piece + stored("AUD.ID")).replace('\n', ' '), expected.join(' '));
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Sub, AddsCopiesAndDeletes) {
  ASSERT_TRUE(start());
  selectByTab(1);
  const QString parent = stored("RIV.ID");
  folder_.outside("DELETE FROM RIVSUB WHERE RivID = " + parent);
  auto* add = static_cast<QPushButton*>(part("cmdAddNew"));
  const auto colour = [add] { return add->palette().color(QPalette::ButtonText); };
  open([&] {
    const QColor before = colour();
    EXPECT_FALSE(part("panRecord(8)")->isEnabled());
    EXPECT_FALSE(part("cmdCancella")->isEnabled() || part("cmdDuplica")->isEnabled());
    EXPECT_TRUE(QTest::qWaitFor([&] { return colour() != before; }));
    press(Qt::Key_N, Qt::AltModifier);
    EXPECT_TRUE(part("panRecord(8)")->isEnabled() && part("cmdCancella")->isEnabled());
    type("L'articolo");
    press(Qt::Key_Return);
    press(Qt::Key_D, Qt::AltModifier);
    EXPECT_EQ(field(0), QString("L'articolo"));
    press(Qt::Key_A, Qt::ControlModifier);
    type("Copia");
    press(Qt::Key_Return);
    answer(platform::kNo);
    press(Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(message(), QString("Attenzione! 36 Vuoi veramente cancellare il record corrente?"));
    EXPECT_EQ(folder_.found("SELECT Titolo FROM RIVSUB WHERE RivID = " + parent),
              QString("L'articolo\nCopia"));
    answer(platform::kYes);
    press(Qt::Key_C, Qt::AltModifier);
    answer(platform::kYes);
    press(Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(children("RIVSUB", "RivID", parent), QString("0"));
    message();
    EXPECT_FALSE(part("panRecord(8)")->isEnabled());
    EXPECT_TRUE(QTest::qWaitFor([&] { return colour() != before; }));
    platform::forms()["frmSub"].Unload();  // by the window's box
    EXPECT_EQ(colour(), before);
  });
  EXPECT_EQ(iRacCorr, 1);
}

TEST_F(Sub, CleansACellThatIsNoNumber) {
  ASSERT_TRUE(start());
  selectByTab(2);
  open([&] {
    rows()->setCurrentIndex(rows()->model()->index(1, 0));
    rows()->setFocus();
    press(Qt::Key_F2);
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
    type("x");
    press(Qt::Key_Return);
    QTest::qWait(1);
    EXPECT_EQ(rows()->model()->index(1, 0).data().toString(), QString("1"));
    EXPECT_EQ(field(0), QString("1"));
  });
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Sub, GoesWithItsParent) {
  ASSERT_TRUE(start());
  selectByTab(2);
  const QString parent = stored("AUD.ID");
  folder_.outside(
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
      "INSERT INTO AUDSUB (AudID, NrBrano) SELECT " +
      parent + ", i FROM n");
  const int all = folder_.found("SELECT count(*) FROM AUDSUB").toInt();
  const int own = children("AUDSUB", "AudID", parent).toInt();
  EXPECT_GT(own, 5000);
  answer(platform::kYes);
  press(Qt::Key_C, Qt::AltModifier);
  message();
  EXPECT_EQ(folder_.found("SELECT count(*) FROM AUDSUB").toInt(), all - own);
  // A record that another program has deleted, with its rows shown.
  const QString key = stored("AUD.ID");
  open([&] {
    folder_.outside("DELETE FROM MAIN WHERE RacID = " + key +
                    "; DELETE FROM AUDSUB WHERE AudID = " + key +
                    "; DELETE FROM AUD WHERE ID = " + key);
    for (int i = 0; i < 6; ++i) answer(platform::kOk);
    press(Qt::Key_D, Qt::AltModifier);
    press(Qt::Key_N, Qt::AltModifier);
    EXPECT_NE(message(), QString("-"));
    EXPECT_EQ(children("AUDSUB", "AudID", key), QString("0"));
  });
  EXPECT_EQ(iRacCorr, 2);
}

TEST_F(Sub, ShowsNoOtherRecordsRowsAfterAFailure) {
  ASSERT_TRUE(start());
  selectByTab(2);
  open([] {});
  aRaccolte(9).sCampoPadre = "NonEsiste";
  goTo(2);
  answer(platform::kOk);
  open([&] {
    EXPECT_NE(message(), QString("-"));
    EXPECT_EQ(rows()->model()->rowCount(), 0);
    answer(platform::kOk);
    press(Qt::Key_N, Qt::AltModifier);
  });
  EXPECT_EQ(iRacCorr, 2);
  CaricaRegistroRaccolte();
}

}  // namespace
}  // namespace tavolix
