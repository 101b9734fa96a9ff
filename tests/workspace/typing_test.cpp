#include <QApplication>
#include <QClipboard>
#include <QTabWidget>
#include <QTest>

#include "core/campi.h"
#include "core/modcuore.h"
#include "core/raccolte.h"
#include "desk.h"
#include "platform/bound_control.h"
#include "platform/data_combo.h"
#include "platform/record_model.h"
#include "workspace/moduli.h"

namespace tavolix {
namespace {

QString dayOf(int year, int month, int day) {
  return QString::number(platform::dayOfDate(QDate(year, month, day)));
}

class Typing : public Desk {
 protected:
  static void turnTo(int collection) {
    if (iRacCorr != collection) selectByTab(collection);
  }
  static void over(const QString& name) {
    enter(name);
    press(Qt::Key_A, Qt::ControlModifier);
  }
};

TEST_F(Typing, WritesJustTheColumnOfTheBox) {
  ASSERT_TRUE(start());
  const struct {
    int collection;
    const char* box;
    QString keys, shown, written;
  } cases[] = {
      {0, "txtTitolo", "L'ombra, del vento!", "L'ombra, del vento!",
       "MAIN.Titolo=L'ombra, del vento!"},
      {0, "txtTitolo", "", "", "MAIN.Titolo=-"},
      {0, "txtAnno", "1a9b87", "1987", "MAIN.Anno=1987.0"},
      {0, "txtAnno", "abc", "", "MAIN.Anno=-"},
      {0, "txtNote", "Una riga", "Una riga", "MAIN.Note=Una riga"},
      {0, "txtDtaAcq", "1-2-03", "01-02-2003", "MAIN.DtaAcq=" + dayOf(2003, 2, 1)},
      {0, "txtDtaAcq", "31-02-2003", "01-02-2003", ""},
      {0, "txtDtaPos", "29/02/1996", "29-02-1996", "MAIN.DtaPos=" + dayOf(1996, 2, 29)},
      {0, "txtValore", "12500", "12.500", "MAIN.Valore=12500.0"},
      {0, "txtLibEdizione", "Terza", "Terza", "LIB.Edizione=Terza"},
      {2, "txtAudDurata", "1:02:03", "1:02:03", "AUD.Durata=3723"},
      {2, "txtAudDurata", "345", "0:03:45", "AUD.Durata=225"},
      {2, "txtAudDurata", "1:75:00", "0:03:45", ""},
      {2, "txtAudNrSupporti", "777", "77", "AUD.NrSupporti=77.0"},
      {7, "txtTel(3)", "06 1234", "06 1234", "PER.Tel4=06 1234"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(qPrintable(QString(c.box) + ' ' + c.keys));
    turnTo(c.collection);
    EXPECT_EQ(changesBy([&] { fill(c.box, c.keys); }), c.written);
    // What could not be written is gone when the row is shown anew.
    press(Qt::Key_Down);
    press(Qt::Key_Up);
    EXPECT_EQ(boxText(c.box), c.shown);
  }
  selectByTab(5);
  const bool ticked = boxText("chkRicetta") != "No";
  for (const bool was : {ticked, !ticked}) {
    enter("chkRicetta");
    EXPECT_EQ(changesBy([] {
                press(Qt::Key_Space);
                leave();
              }),
              QString("MED.Ricetta=") + (was ? "0" : "-1"));
  }
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Typing, ChoosesFromLists) {
  ASSERT_TRUE(start());
  const struct {
    int collection;
    const char *box, *keys;
    QString text, list, column;
  } cases[] = {
      {0, "cboLingua", "fr", "Francese", "LINGUA", "MAIN.TabLinguaID="},
      {7, "cboTipoTel(2)", "fa", "Fax", "TIPOTEL3", "PER.TABTel3ID="},
  };
  for (const auto& c : cases) {
    turnTo(c.collection);
    const auto choose = [&](Qt::Key last) {
      enter(c.box);
      const auto* combo = static_cast<platform::DataCombo*>(box(c.box));
      press(Qt::Key_Shift);
      EXPECT_FALSE(combo->DroppedDown());
      type(c.keys);
      EXPECT_TRUE(combo->DroppedDown());
      EXPECT_EQ(boxText(c.box), c.text);
      press(last);
      EXPECT_FALSE(combo->DroppedDown());
      leave();
    };
    EXPECT_EQ(changesBy([&] { choose(Qt::Key_Escape); }), QString(""));
    EXPECT_NE(boxText(c.box), c.text);
    const QString key = folder_.found("SELECT ID FROM TAB WHERE TipoTab = '" + c.list +
                                      "' AND \"Desc\" = '" + c.text + "'");
    EXPECT_EQ(changesBy([&] { choose(Qt::Key_Tab); }), c.column + key);
  }
}

TEST_F(Typing, TakesNoMoreThanTheColumnHolds) {
  ASSERT_TRUE(start());
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    turnTo(collection);
    for (int j = 0; j < iNumeroCampi(collection); ++j) {
      const tCampo& campo = aCampi(collection, j);
      if (campo.sTipo != TXTSTR) continue;
      SCOPED_TRACE(qPrintable(aRaccolte(collection).sNome + ' ' + campo.sTitolo));
      const int most = boxOf(modules()[static_cast<std::size_t>(collection)], j).maxLength;
      EXPECT_TRUE(0 < most && most <= list()->Fields()[list()->FieldIndex(campo.sCampoDB)].size);
      QGuiApplication::clipboard()->setText(QString(most + 5, 'x'));
      over(campo.sControllo);
      press(Qt::Key_V, Qt::ControlModifier);
      type("y");
      leave();
      EXPECT_EQ(stored(campo.sCampoDB), QString(most, 'x'));
    }
  }
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Typing, GoesThroughAllFieldsByReturn) {
  ASSERT_TRUE(start());
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    turnTo(collection);
    const QStringList before = fileRow();
    enter(aCampi(collection, 0).sControllo);
    const int count = iNumeroCampi(collection);
    for (int j = 0; j < count; ++j) {
      const tCampo& campo = aCampi(collection, j);
      const tCampo& next = aCampi(collection, (j + 1) % count);
      SCOPED_TRACE(qPrintable(aRaccolte(collection).sNome + ' ' + campo.sTitolo));
      press(j % 2 == 0 ? Qt::Key_Return : Qt::Key_Enter);
      // In a text of several lines it is a new line.
      if (campo.oControllo->widget()->inherits("QPlainTextEdit")) {
        EXPECT_TRUE(campo.oControllo->Text().startsWith('\n'));
        press(Qt::Key_Backspace);
        CampoSuccessivo();
        QApplication::processEvents();
      }
      const QWidget* popup = QApplication::activePopupWidget();
      EXPECT_EQ(popup != nullptr ? popup->parentWidget() : QApplication::focusWidget(),
                next.oControllo->widget());
      EXPECT_EQ(pages()->currentIndex(), next.iPagina);
    }
    press(Qt::Key_Escape);
    leave();
    EXPECT_EQ(fileRow(), before);
  }
}

TEST_F(Typing, MarksTheBoxWithTheFocus) {
  ASSERT_TRUE(start());
  const QStringList boxes = {"txtTitolo", "cboGenere", "txtAnno", "txtNote", "txtDtaAcq"};
  const auto grounds = [&] {
    QVector<QColor> all;
    for (const QString& name : boxes) {
      const QPalette palette = box(name)->palette();
      all << palette.color(name.startsWith("cbo") ? QPalette::Button : QPalette::Base);
    }
    return all;
  };
  const QVector<QColor> normal = grounds();
  for (int i = 0; i < boxes.size(); ++i) {
    enter(boxes[i]);
    QVector<QColor> marked = normal;
    marked[i] = QColor(0xFF, 0xFF, 0xC0);
    EXPECT_EQ(grounds(), marked) << qPrintable(boxes[i]);
  }
  leave();
  EXPECT_EQ(grounds(), normal);
}

TEST_F(Typing, IsWrittenWhereverOneGoes) {
  ASSERT_TRUE(start());
  const std::function<void()> ways[] = {
      [] { list()->MoveNext(); },
      [] {
        const QRect third = grid()->visualRect(cellAt(2, "Titolo"));
        QTest::mouseClick(grid()->viewport(), Qt::LeftButton, {}, third.center());
      },
      [] { press(Qt::Key_F12); },
      [] { press(Qt::Key_F11); },
      [] { selectByTab(2); },
      [] { press(Qt::Key_M, Qt::ControlModifier); },
      [] { trigger("mnuRaccolteVideo"); },
  };
  int texts = 0;
  for (const auto& go : ways) {
    for (const bool inCell : {false, true}) {
      turnTo(0);
      goTo(0, "Titolo");
      if (!inCell) over("txtTitolo");
      const QString text = QString::number(++texts);
      EXPECT_EQ(changesBy([&] {
                  type(text);
                  go();
                }),
                "MAIN.Titolo=" + text);
    }
  }
  EXPECT_EQ(message(), QString("-"));
}

}  // namespace
}  // namespace tavolix
