#include <QLineEdit>
#include <QToolButton>

#include "desk.h"
#include "store/patience.h"

namespace tavolix {
namespace {

using std::function;

const char* const kEmpty = "Attenzione! 48 Non e' possibile inserire una descrizione vuota!";
const char* const kDouble = "Attenzione! 48 Voce gia' presente in elenco!";
const char* const kUsed =
    "Attenzione! 48 Impossibile cancellare una voce utilizzata nelle raccolte!";

// The list of values behind a combo.
class Lookup : public Desk {
 protected:
  static QWidget* part(const QString& name) { return control("frmTab", name); }
  static platform::DataGrid* values() { return static_cast<platform::DataGrid*>(part("grd")); }
  static bool isOpen() { return platform::forms()["frmTab"].IsVisible(); }
  static platform::BoundControl& combo(int campo) { return *aCampi(iRacCorr, campo).oControllo; }
  static QString current() { return value(values()->currentIndex().row()).data().toString(); }
  static QModelIndex value(int row, int column = 0) {
    return values()->model()->index(row, column);
  }
  // Presses the small button of a field's list.
  static void openList(int campo) {
    const QWidget* page = combo(campo).widget()->parentWidget();
    for (auto* button : page->findChildren<QToolButton*>()) {
      if (button->property("Tag").toString() == QString::number(campo)) button->click();
    }
  }
  static void open(int campo, const function<void()>& work) {
    inForm(
        "frmTab", [campo] { openList(campo); }, work);
  }
  static void add(const QString& text) {
    part("txtAdd")->setFocus();
    replace(text);
    press("Return");
  }
  // Types a text over the current value.
  static void rename(const QString& text) {
    values()->setFocus();
    press("F2");
    replace(text);
    press("Return");
    QTest::qWait(1);
  }
  static void push(const QString& name) { click(part(name)); }
  // Clicks the mark beside the second value.
  static void clickMark() {
    const QRect cell = values()->visualRect(value(1, 1));
    QTest::mouseClick(values()->viewport(), Qt::LeftButton, {}, cell.center());
  }
  static void markThird() {
    values()->setCurrentIndex(value(2));
    push("cmdPredefinito");
  }
  // A list of the file: texts in their order, the default marked with "*".
  QString inFile(const QString& list, int owner) const {
    const QString query =
        "SELECT \"Desc\" || iif(\"Default\", '*', '') FROM TAB WHERE TipoTab = '%1' AND "
        "TipoRac = %2 ORDER BY \"Desc\"";
    return folder_.found(query.arg(list).arg(owner)).replace('\n', '|');
  }
  QString languages() const { return inFile("LINGUA", -1); }
  // The languages, a list that all collections share, are b and d, in no record.
  void startWithLanguages() {
    folder_.outside(
        "DELETE FROM TAB WHERE TipoTab = 'LINGUA'; UPDATE MAIN SET TabLinguaID = 0;"
        "INSERT INTO TAB (TipoTab, TipoRac, \"Desc\", \"Default\")"
        " VALUES ('LINGUA', -1, 'b', 0), ('LINGUA', -1, 'd', 0)");
    ASSERT_TRUE(start());
  }
  static constexpr int kLingua = 6;  // the field's row in the first collection

  // Opens a field's list on the value of the record, and leaves both as they are.
  void expectList(int collection, int campo) const {
    const tCampo& field = aCampi(collection, campo);
    SCOPED_TRACE(qPrintable(aRaccolte(collection).sNome + ' ' + field.sTitolo));
    const QString before = combo(campo).Text();
    open(campo, [&] {
      EXPECT_EQ(values()->window()->windowTitle(),
                "Raccolta " + aRaccolte(collection).sNome + ": " + field.sTitolo);
      const QStringList all = inFile(field.sCodTab, field.iRacTab).split('|');
      EXPECT_EQ(values()->model()->rowCount(), all.first().isEmpty() ? 0 : all.size());
      EXPECT_EQ(current(), before.isEmpty() ? QString(all.first()).remove('*') : before);
      EXPECT_EQ(QApplication::focusWidget(), part("txtAdd"));
      press("Esc");
      EXPECT_FALSE(isOpen());
    });
    EXPECT_EQ(combo(campo).Text(), before);
    EXPECT_TRUE(combo(campo).widget()->hasFocus());
  }
  void expectLists(int collection) const {
    for (int j = 0; j < iNumeroCampi(collection); ++j) {
      if (aCampi(collection, j).sTipo == CBO) expectList(collection, j);
    }
  }
};

TEST_F(Lookup, OpensForEveryComboOnTheValueOfTheRecord) {
  ASSERT_TRUE(start());
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    selectByTab(collection);
    expectLists(collection);
    const int sub = aRaccolte(collection).iSottoRaccolta;
    if (sub == -1) continue;
    const tRaccolta& children = aRaccolte(sub);
    list()->FindFirst(children.sRifPadre + " = " +
                      folder_.found("SELECT " + children.sCampoPadre + " FROM " +
                                    children.sTabPrincipale + " LIMIT 1"));
    inChildren([&] { expectLists(sub); });
  }
}

TEST_F(Lookup, KeepsTheList) {
  startWithLanguages();
  const struct {
    const char* what;
    function<void()> act;
    const char *list, *current, *told;
  } cases[] = {
      {"add", [] { add("c"); }, "b|c|d", "c", "-"},
      {"again, in capitals", [] { add("C"); }, "b|c|d", "c", kDouble},
      {"blanks only", [] { add("   "); }, "b|c|d", "c", "-"},
      {"with blanks before it", [] { add("  c"); }, "  c|b|c|d", "  c", "-"},
      {"another accent", [] { add(QStringLiteral("ç")); }, "  c|b|c|ç|d", "ç", "-"},
      {"quotes and wildcards", [] { add("l'*[%"); }, "  c|b|c|ç|d|l'*[%", "l'*[%", "-"},
      {"delete", [] { push("cmdElimina"); }, "  c|b|c|ç|d", "  c", "-"},
      {"rename", [] { rename("a"); }, "a|b|c|ç|d", "a", "-"},
      {"to itself, in capitals", [] { rename("A"); }, "A|b|c|ç|d", "A", "-"},
      {"to another's", [] { rename("D"); }, "A|b|c|ç|d", "A", kDouble},
      {"given up", [] { press("Esc"); }, "A|b|c|ç|d", "A", "-"},
      {"to nothing", [] { rename("  "); }, "A|b|c|ç|d", "A", kEmpty},
      {"given up again", [] { press("Esc"); }, "A|b|c|ç|d", "A", "-"},
      {"mark", [] { push("cmdPredefinito"); }, "A*|b|c|ç|d", "A", "-"},
      {"mark another", markThird, "A|b|c*|ç|d", "c", "-"},
      {"by the column", clickMark, "A|b*|c|ç|d", "b", "-"},
      {"no mark", [] { push("cmdNoPredefinito"); }, "A|b|c|ç|d", "", "-"},
      {"nothing current, nothing deleted", [] { push("cmdElimina"); }, "A|b|c|ç|d", "", "-"},
  };
  open(kLingua, [&] {
    for (const auto& c : cases) {
      answerAll();
      c.act();
      EXPECT_EQ(languages(), QString::fromUtf8(c.list)) << c.what;
      EXPECT_EQ(current(), QString::fromUtf8(c.current)) << c.what;
      EXPECT_EQ(message(), QString(c.told)) << c.what;
    }
  });
  // No value was current at the end: the record's stays.
  EXPECT_EQ(combo(kLingua).Text(), QString(""));
}

TEST_F(Lookup, HoldsWhoeverLeavesABadText) {
  startWithLanguages();
  const function<void()> ways[] = {
      [] { press("Down"); },
      [] { press("PgDown"); },
      [] { press("Alt+E"); },
      [] { push("cmdEsci"); },
      [] { push("cmdElimina"); },
      [] { push("cmdPredefinito"); },
      [] { part("txtAdd")->setFocus(); },
      [] { closeByBox("frmTab"); },
      clickMark,
  };
  open(kLingua, [&] {
    answer(platform::kOk);
    rename("d");
    EXPECT_EQ(message(), QString(kDouble));
    for (const auto& way : ways) {
      answer(platform::kOk);
      way();
      QTest::qWait(1);
      EXPECT_EQ(message(), QString(kDouble));
      EXPECT_TRUE(isOpen());
      auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
      ASSERT_NE(editor, nullptr);
      EXPECT_EQ(editor->text(), QString("d"));
      EXPECT_EQ(languages(), QString("b|d"));
    }
    // Another program deletes the value: what is typed for it is given up.
    folder_.outside("DELETE FROM TAB WHERE TipoTab = 'LINGUA' AND \"Desc\" = 'b'");
    answerAll();
    rename("e");
    push("cmdPredefinito");
    push("cmdElimina");
    message();
    add("g");
    EXPECT_EQ(languages(), QString("d|g"));
    push("cmdEsci");
    EXPECT_FALSE(isOpen());
  });
  EXPECT_EQ(combo(kLingua).Text(), QString("g"));
}

// A value that could not be added leaves the one that was current, to the list and to the record.
TEST_F(Lookup, GoesOnWithItsValueAfterALock) {
  startWithLanguages();
  folder_.outside("UPDATE MAIN SET TabLinguaID = (SELECT ID FROM TAB WHERE \"Desc\" = 'b')");
  DBRefresh();
  store::mostPatience = 100;
  open(kLingua, [&] {
    Outside other(folder_.path("esempio.tvx"), SQLite::OPEN_READWRITE);
    other.exec("BEGIN IMMEDIATE");
    answer(platform::kOk);
    add("c");
    EXPECT_TRUE(message().contains("3260"));
    other.exec("COMMIT");
    answer(platform::kOk);
    push("cmdElimina");
    EXPECT_EQ(message(), QString(kUsed));
    EXPECT_EQ(languages(), QString("b|d"));
    push("cmdEsci");
  });
  EXPECT_EQ(combo(kLingua).Text(), QString("b"));
  store::mostPatience = 2000;
}

TEST_F(Lookup, ShowsTheChosenValueWhereverTheListIsOffered) {
  ASSERT_TRUE(start());
  selectByTab(2);
  constexpr int autore = 2;
  constexpr int autoreBrano = 4;
  const QString value = QStringLiteral("0 Åberg d'Età");
  inChildren([&] {
    open(autoreBrano, [&] { add(value); });
    EXPECT_EQ(combo(autoreBrano).Text(), value);
  });
  EXPECT_EQ(folder_.found("SELECT TAB.\"Desc\" FROM AUDSUB JOIN TAB ON TAB.ID = TABAutoreID "
                          "WHERE AudID = " +
                          stored("AUD.ID") + " LIMIT 1"),
            value);
  enter("cboAutore");
  type(value);
  press("Tab");
  leave();
  EXPECT_EQ(cell(0, "Autore"), value);
  // A value in use is kept; one renamed shows its new text in form and list.
  open(autore, [&] {
    answer(platform::kOk);
    push("cmdElimina");
    EXPECT_EQ(message(), QString(kUsed));
    rename("0 Altro");
    push("cmdEsci");
  });
  EXPECT_EQ(combo(autore).Text(), QString("0 Altro"));
  EXPECT_EQ(cell(0, "Autore"), QString("0 Altro"));
}

TEST_F(Lookup, TakesUpATextThatIsMissing) {
  ASSERT_TRUE(start());
  constexpr int autore = 3;
  for (const Qt::Key last : {Qt::Key_Return, Qt::Key_Tab}) {
    enter("cboAutore");
    EXPECT_EQ(changesBy([last] {
                type("viganx");
                press(last);
                leave();
              }),
              QString(""));
  }
  enter("cboAutore");
  type("vigany");
  const auto open = [] { press("F2"); };
  inForm("frmTab", open, [] {
    EXPECT_EQ(static_cast<QLineEdit*>(part("txtAdd"))->text(), QString("vigany"));
    press("Return");
    push("cmdEsci");
  });
  EXPECT_EQ(combo(autore).Text(), QString("vigany"));
}

}  // namespace
}  // namespace tavolix
