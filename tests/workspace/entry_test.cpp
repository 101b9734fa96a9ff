#include "desk.h"
#include "platform/data_combo.h"
#include "store/value_text.h"

namespace tavolix {
namespace {

// What is typed into the boxes of the form and the cells of the list.
class Entry : public Desk {
 protected:
  void SetUp() override { ASSERT_TRUE(start()); }

  static void typeInCell(const QString& field, const QString& keys, Qt::Key last) {
    goTo(4, field);
    press(Qt::Key_F2);
    QApplication::activePopupWidget() == nullptr ? replace(keys) : type(keys);
    press(last);
  }
  // A combo opens its list for a letter, not for Shift alone.
  static void typeInBox(const QString& name, const QString& keys, Qt::Key last) {
    enter(name);
    const auto* combo = dynamic_cast<const platform::DataCombo*>(box(name));
    press(Qt::Key_Shift);
    EXPECT_FALSE(combo != nullptr && combo->DroppedDown());
    combo == nullptr ? replace(keys) : type(keys);
    EXPECT_TRUE(combo == nullptr || combo->DroppedDown());
    press(last);
    EXPECT_FALSE(combo != nullptr && combo->DroppedDown());
    leave();
  }
};

TEST_F(Entry, WritesJustItsColumn) {
  const QString text = "L'ombra, del vento!";
  const QString cut(15, 'x');
  const QString title(100, 't');
  const auto id = [this](const QString& list, const QString& value) {
    return folder_.found("SELECT ID FROM TAB WHERE TipoTab = '" + list + "' AND \"Desc\" = '" +
                         value + '\'');
  };
  const QString day = "MAIN.DtaAcq=" + QString::number(store::dayOfDate(QDate(2003, 2, 1)));
  const struct {
    int collection;
    QString box, field;  // without one of them, the other alone
    QString keys, shown, written;
  } cases[] = {
      {0, "txtTitolo", "Titolo", text, text, "MAIN.Titolo=" + text},
      {0, "txtTitolo", "Titolo", "", "", "MAIN.Titolo=-"},
      {0, "txtTitolo", "Titolo", QString(120, 't'), title, "MAIN.Titolo=" + title},
      {0, "txtAnno", "Anno", "20015", "2001", "MAIN.Anno=2001.0"},
      {0, "", "Cod", QString(20, 'x'), cut, "MAIN.Cod=" + cut},
      {0, "txtAnno", "Anno", "1984", "1984", "MAIN.Anno=1984.0"},
      {0, "txtAnno", "Anno", "abc", "", "MAIN.Anno=-"},
      {0, "txtAnno", "", "1a9b87", "1987", "MAIN.Anno=1987.0"},
      {0, "txtNote", "", "Una riga", "Una riga", "MAIN.Note=Una riga"},
      {0, "txtDtaAcq", "DtaAcq", "1-2-03", "01-02-2003", day},
      {0, "", "DtaAcq", "31-02-2003", "", "MAIN.DtaAcq=-"},
      {0, "txtDtaAcq", "", "31-02-2003", "01-02-2003", ""},
      {0, "txtValore", "", "12500", "12.500", "MAIN.Valore=12500.0"},
      {0, "txtLibEdizione", "", "Terza", "Terza", "LIB.Edizione=Terza"},
      {0, "cboLingua", "Lingua", "tede", "Tedesco", "MAIN.TabLinguaID=" + id("LINGUA", "Tedesco")},
      {0, "cboLibCollana", "Collana", "gli a", "Gli Adelphi",
       "LIB.TabCollanaID=" + id("COLLANA", "Gli Adelphi")},
      {2, "txtAudDurata", "Durata", "1:02:03", "1:02:03", "AUD.Durata=3723"},
      {2, "txtAudDurata", "", "345", "0:03:45", "AUD.Durata=225"},
      {2, "txtAudDurata", "", "1:75:00", "0:03:45", ""},
      {2, "txtAudNrSupporti", "", "777", "77", "AUD.NrSupporti=77.0"},
      {7, "txtTel(3)", "", "06 1234", "06 1234", "PER.Tel4=06 1234"},
      {7, "cboTipoTel(2)", "", "fa", "Fax", "PER.TABTel3ID=" + id("TIPOTEL3", "Fax")},
  };
  for (const auto& c : cases) {
    selectByTab(c.collection);
    for (const bool inCell : {true, false}) {
      if ((inCell ? c.field : c.box).isEmpty()) continue;
      SCOPED_TRACE(qPrintable((inCell ? c.field : c.box) + ' ' + c.keys));
      const auto typed = [&](Qt::Key last) {
        inCell ? typeInCell(c.field, c.keys, last) : typeInBox(c.box, c.keys, last);
      };
      const int row = inCell ? 4 : 3;
      goTo(row);
      if (inCell || c.box.startsWith("cbo")) {
        EXPECT_EQ(changesBy([&] { typed(Qt::Key_Escape); }), QString(""));
      }
      EXPECT_EQ(changesBy([&] { typed(Qt::Key_Tab); }), c.written);
      EXPECT_EQ(grid()->currentIndex().row(), row);
      // What could not be written is gone when the row is shown anew.
      press("Down Up");
      EXPECT_EQ(c.box.isEmpty() ? c.shown : boxText(c.box), c.shown);
      EXPECT_EQ(c.field.isEmpty() ? c.shown : cell(row, c.field), c.shown);
    }
  }
  // Until the row is shown anew the form has 0 for a number that was emptied in the list.
  selectByTab(0);
  typeInCell("Anno", "1984", Qt::Key_Tab);
  typeInCell("Anno", "", Qt::Key_Tab);
  EXPECT_EQ(boxText("txtAnno"), QString("0"));
  EXPECT_EQ(stored("Anno"), QString("-"));
}

TEST_F(Entry, TicksABoxOrACell) {
  selectByTab(2);
  for (const bool inCell : {false, true, true}) {
    const bool was = boxText("chkAudOriginale") != "No";
    inCell ? goTo(0, "Originale") : enter("chkAudOriginale");
    EXPECT_EQ(changesBy([] {
                press(Qt::Key_Space);
                leave();
              }),
              QString("AUD.Originale=") + (was ? "0" : "-1"));
    EXPECT_EQ(boxText("chkAudOriginale") != "No", !was);
  }
  // Texts of several lines are for the form alone.
  selectByTab(3);
  goTo(4);
  EXPECT_EQ(changesBy([] { typeInCell("Attori", "x", Qt::Key_Return); }), QString(""));
}

TEST_F(Entry, IsWrittenWhereverOneGoes) {
  const std::function<void()> ways[] = {
      [] { list()->MoveNext(); },
      [] {
        const QRect third = grid()->visualRect(cellAt(2, "Titolo"));
        QTest::mouseClick(grid()->viewport(), Qt::LeftButton, {}, third.center());
      },
      [] { press("F12"); },
      [] { press("F11"); },
      [] { selectByTab(2); },
      [] { press("Ctrl+M"); },
  };
  int texts = 0;
  for (const auto& go : ways) {
    for (const bool inCell : {false, true}) {
      selectByTab(0);
      goTo(0, "Titolo");
      inCell ? press("F2") : enter("txtTitolo");
      press("Ctrl+A");
      const QString text = QString::number(++texts);
      EXPECT_EQ(changesBy([&] {
                  type(text);
                  go();
                }),
                "MAIN.Titolo=" + text);
    }
  }
}

}  // namespace
}  // namespace tavolix
