#include <QApplication>
#include <QClipboard>
#include <QDate>
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
  void turnTo(int collection) {
    if (iRacCorr != collection) selectByTab(collection);
  }
  QString keyOf(const char* code, int collection, const char* text) const {
    return folder_.found(QStringLiteral("SELECT ID FROM TAB WHERE TipoTab = '%1' AND TipoRac = %2"
                                        " AND \"Desc\" = '%3'")
                             .arg(code)
                             .arg(collection)
                             .arg(text));
  }
  static void paste(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    press(Qt::Key_V, Qt::ControlModifier);
  }
};

TEST_F(Typing, WritesJustTheColumnOfTheBox) {
  ASSERT_TRUE(start());
  const struct {
    int collection;
    const char* box;
    QString keys;
    QString shown;
    QString written;
  } cases[] = {
      {0, "txtTitolo", "L'ombra, del vento!", "L'ombra, del vento!",
       "MAIN.Titolo=L'ombra, del vento!"},
      {0, "txtTitolo", "", "", "MAIN.Titolo=-"},
      {0, "txtAnno", "1a9b87", "1987", "MAIN.Anno=1987.0"},
      {0, "txtAnno", "abc", "", "MAIN.Anno=-"},
      {0, "txtDescLibera", "Una prova", "Una prova", "MAIN.DescLibera=Una prova"},
      {0, "txtNote", "Una riga", "Una riga", "MAIN.Note=Una riga"},
      {0, "txtDtaAcq", "1-2-03", "01-02-2003", "MAIN.DtaAcq=" + dayOf(2003, 2, 1)},
      {0, "txtDtaPos", "29/02/1996", "29-02-1996", "MAIN.DtaPos=" + dayOf(1996, 2, 29)},
      {0, "txtValore", "12500", "12.500", "MAIN.Valore=12500.0"},
      {0, "txtVoto", "123", "12", "MAIN.Voto=12.0"},
      {0, "txtLibEdizione", "Terza", "Terza", "LIB.Edizione=Terza"},
      {1, "txtData", "24-12-1997", "24-12-1997", "RIV.Data=" + dayOf(1997, 12, 24)},
      {2, "txtAudDurata", "1:02:03", "1:02:03", "AUD.Durata=3723"},
      {2, "txtAudDurata", "345", "0:03:45", "AUD.Durata=225"},
      {2, "txtAudNrSupporti", "777", "77", "AUD.NrSupporti=77.0"},
      {3, "txtAttori", "Totò", "Totò", "VID.Attori=Totò"},
      {4, "txtNrSerie", "X-9", "X-9", "COM.NrSerie=X-9"},
      {5, "txtDtaScad", "31-01-99", "31-01-1999", "MED.DtaScad=" + dayOf(1999, 1, 31)},
      {6, "txtNumero", "44", "44", "OGG.Numero=44.0"},
      {7, "txtTel(3)", "06 1234", "06 1234", "PER.Tel4=06 1234"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(qPrintable(QString(c.box) + ' ' + c.keys));
    turnTo(c.collection);
    EXPECT_EQ(changesBy([&] { fill(c.box, c.keys); }), c.written);
    EXPECT_EQ(boxText(c.box), c.shown);
  }
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Typing, TicksBoxes) {
  ASSERT_TRUE(start());
  const struct {
    int collection;
    const char* box;
    const char* column;
  } cases[] = {{2, "chkAudOriginale", "AUD.Originale"},
               {4, "chkOriginale", "COM.Originale"},
               {4, "chkInstallato", "COM.Installato"},
               {5, "chkRicetta", "MED.Ricetta"}};
  for (const auto& c : cases) {
    turnTo(c.collection);
    const bool ticked = boxText(c.box) != "No";
    const auto toggle = [&] {
      enter(c.box);
      press(Qt::Key_Space);
      leave();
    };
    EXPECT_EQ(changesBy(toggle), QString(c.column) + (ticked ? "=0" : "=-1"));
    EXPECT_EQ(changesBy(toggle), QString(c.column) + (ticked ? "=-1" : "=0"));
  }
}

TEST_F(Typing, ChoosesFromLists) {
  ASSERT_TRUE(start());
  const struct {
    int collection;
    const char* box;
    const char* keys;
    const char* text;
    const char* code;
    int owner;
    const char* column;
  } cases[] = {
      {0, "cboLingua", "fr", "Francese", "LINGUA", -1, "MAIN.TabLinguaID"},
      {0, "cboLibCollana", "gli a", "Gli Adelphi", "COLLANA", 0, "LIB.TabCollanaID"},
      {2, "cboAudSupporto", "mu", "Musicassetta", "SUPPORTO", 2, "AUD.TABSupportoID"},
      {7, "cboTipoTel(2)", "fa", "Fax", "TIPOTEL3", 7, "PER.TABTel3ID"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.box);
    turnTo(c.collection);
    const QString key = keyOf(c.code, c.owner, c.text);
    ASSERT_FALSE(key.isEmpty());
    auto* combo = static_cast<platform::DataCombo*>(nullptr);
    const auto choose = [&](Qt::Key last) {
      enter(c.box);
      combo = dynamic_cast<platform::DataCombo*>(box(c.box));
      EXPECT_FALSE(combo->DroppedDown());
      type(c.keys);
      EXPECT_TRUE(combo->DroppedDown());
      EXPECT_EQ(boxText(c.box), QString(c.text));
      press(last);
      EXPECT_FALSE(combo->DroppedDown());
    };
    const QString before = boxText(c.box);
    ASSERT_NE(before, QString(c.text));
    EXPECT_EQ(changesBy([&] {
                choose(Qt::Key_Escape);
                leave();
              }),
              QString(""));
    EXPECT_EQ(boxText(c.box), before);
    EXPECT_EQ(changesBy([&] { choose(Qt::Key_Tab); }), QString(c.column) + '=' + key);
    EXPECT_FALSE(combo->hasFocus());
    EXPECT_EQ(boxText(c.box), QString(c.text));
    // The blank row takes the choice back.
    EXPECT_EQ(changesBy([&] {
                enter(c.box);
                press(Qt::Key_Home);
                press(Qt::Key_Home);
                press(Qt::Key_Return);
                leave();
              }),
              QString(c.column) + "=0");
    EXPECT_EQ(boxText(c.box), QString(""));
  }
}

TEST_F(Typing, LeavesListsClosedForKeysThatMoveOn) {
  ASSERT_TRUE(start());
  enter("cboGenere");
  auto* combo = dynamic_cast<platform::DataCombo*>(box("cboGenere"));
  for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt}) {
    press(key);
    EXPECT_FALSE(combo->DroppedDown()) << key;
  }
  press(Qt::Key_Tab);
  EXPECT_FALSE(combo->DroppedDown());
  EXPECT_FALSE(combo->hasFocus());
}

TEST_F(Typing, KeepsWhatIsNoDateOrTimeOut) {
  ASSERT_TRUE(start());
  const struct {
    int collection;
    const char* box;
    const char* keys;
  } cases[] = {{0, "txtDtaAcq", "31-02-2003"}, {0, "txtDtaAcq", "99-99-9999"},
               {0, "txtDtaAcq", "12"},         {0, "txtDtaPos", "01-13-2003"},
               {2, "txtAudDurata", "1:75:00"}, {5, "txtDtaScad", "00-00-0000"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.keys);
    turnTo(c.collection);
    const QString before = boxText(c.box);
    EXPECT_EQ(changesBy([&] { fill(c.box, c.keys); }), QString(""));
    // The row shows what it holds as soon as it is shown anew.
    EXPECT_EQ(changesBy([] {
                press(Qt::Key_Down);
                press(Qt::Key_Up);
              }),
              QString(""));
    EXPECT_EQ(boxText(c.box), before);
  }
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Typing, RefusesLettersInNumbers) {
  ASSERT_TRUE(start());
  for (const char* name : {"txtAnno", "txtDim", "txtValore", "txtVoto"}) {
    EXPECT_EQ(changesBy([&] {
                enter(name);
                type("abc;,.");
                leave();
              }),
              QString(""));
  }
}

TEST_F(Typing, TakesNoMoreThanTheColumnHolds) {
  ASSERT_TRUE(start());
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    turnTo(collection);
    const Module& module = modules()[static_cast<std::size_t>(collection)];
    for (int j = 0; j < iNumeroCampi(collection); ++j) {
      const tCampo& campo = aCampi(collection, j);
      const int most = boxOf(module, j).maxLength;
      if (campo.sTipo != TXTSTR) continue;
      SCOPED_TRACE(qPrintable(aRaccolte(collection).sNome + ' ' + campo.sTitolo));
      EXPECT_GT(most, 0);
      EXPECT_LE(most, list()->Fields()[list()->FieldIndex(campo.sCampoDB)].size);
      enter(campo.sControllo);
      press(Qt::Key_A, Qt::ControlModifier);
      paste(QString(most + 5, 'x'));
      type("y");
      leave();
      EXPECT_EQ(stored(campo.sCampoDB), QString(most, 'x'));
    }
  }
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Typing, CleansWhatIsPasted) {
  ASSERT_TRUE(start());
  const QString pasted = QStringLiteral("uno\r\ndue") + QChar(0) + QStringLiteral("tre\tq");
  const struct {
    const char* box;
    QString written;
  } cases[] = {
      {"txtTitolo", "MAIN.Titolo=uno duetre q"},
      {"txtDescLibera", "MAIN.DescLibera=uno duetre q"},
      {"txtNote", "MAIN.Note=uno\nduetre\tq"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(changesBy([&] {
                enter(c.box);
                press(Qt::Key_A, Qt::ControlModifier);
                paste(pasted);
                leave();
              }),
              c.written);
  }
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
      SCOPED_TRACE(qPrintable(aRaccolte(collection).sNome + ' ' + campo.sTitolo));
      const tCampo& next = aCampi(collection, (j + 1) % count);
      if (campo.oControllo->widget()->inherits("QPlainTextEdit")) {
        const QString text = campo.oControllo->Text();
        press(Qt::Key_Return);
        EXPECT_EQ(campo.oControllo->Text(), '\n' + text);
        EXPECT_TRUE(campo.oControllo->widget()->hasFocus());
        press(Qt::Key_Backspace);
        EXPECT_EQ(campo.oControllo->Text(), text);
        CampoSuccessivo();
        QApplication::processEvents();
      } else {
        press(j % 2 == 0 ? Qt::Key_Return : Qt::Key_Enter);
      }
      ASSERT_TRUE(form()->isAncestorOf(next.oControllo->widget()));
      QWidget* popup = QApplication::activePopupWidget();
      QWidget* focused = popup != nullptr ? popup->parentWidget() : QApplication::focusWidget();
      EXPECT_EQ(focused, next.oControllo->widget());
      EXPECT_EQ(pages()->currentIndex(), next.iPagina);
    }
    press(Qt::Key_Escape);
    leave();
    EXPECT_EQ(fileRow(), before);
  }
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Typing, MarksTheBoxWithTheFocus) {
  ASSERT_TRUE(start());
  const auto ground = [](const char* name) {
    const QPalette palette = box(name)->palette();
    return dynamic_cast<platform::DataCombo*>(box(name)) != nullptr
               ? palette.color(QPalette::Button)
               : palette.color(QPalette::Base);
  };
  const QColor yellow(0xFF, 0xFF, 0xC0);
  const char* const boxes[] = {"txtTitolo", "cboGenere", "txtAnno",
                               "txtNote",   "txtDtaAcq", "txtValore"};
  QVector<QColor> normal;
  for (const char* name : boxes) normal << ground(name);
  for (const char* name : boxes) {
    enter(name);
    for (int i = 0; i < normal.size(); ++i) {
      EXPECT_EQ(ground(boxes[i]), boxes[i] == name ? yellow : normal[i]) << name << ' ' << boxes[i];
    }
  }
  enter("txtCod");
  press(Qt::Key_Return);
  EXPECT_EQ(ground("txtTitolo"), yellow);
  EXPECT_NE(ground("txtCod"), yellow);
  leave();
  for (int i = 0; i < normal.size(); ++i) EXPECT_EQ(ground(boxes[i]), normal[i]) << boxes[i];
  selectByTab(2);
  enter("chkAudOriginale");
  EXPECT_NE(box("chkAudOriginale")->palette().color(QPalette::Window), yellow);
  EXPECT_NE(box("chkAudOriginale")->palette().color(QPalette::Base), yellow);
}

TEST_F(Typing, IsWrittenWhenTheRowOrTheWindowIsLeft) {
  ASSERT_TRUE(start());
  const struct {
    const char* way;
    std::function<void()> move;
  } cases[] = {
      {"next row", [] { list()->MoveNext(); }},
      {"click",
       [] {
         const QRect third = grid()->visualRect(cellAt(2, "Titolo"));
         QTest::mouseClick(grid()->viewport(), Qt::LeftButton, {}, third.center());
       }},
      {"new record", [] { press(Qt::Key_F12); }},
      {"copy", [] { press(Qt::Key_F11); }},
  };
  for (const auto& c : cases) {
    goTo(0);
    EXPECT_EQ(changesBy([&] {
                enter("txtTitolo");
                press(Qt::Key_A, Qt::ControlModifier);
                type(c.way);
                c.move();
              }),
              QString("MAIN.Titolo=") + c.way);
  }
}

}  // namespace
}  // namespace tavolix
