#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "core/campi.h"
#include "core/modcuore.h"
#include "core/modmain.h"
#include "core/raccolte.h"
#include "desk.h"
#include "platform/data_combo.h"
#include "platform/data_control.h"
#include "platform/form.h"

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
  static platform::DataCombo* combo(int campo) {
    return static_cast<platform::DataCombo*>(aCampi(iRacCorr, campo).oControllo->widget());
  }
  static QString current() {
    return values()->model()->index(values()->currentIndex().row(), 0).data().toString();
  }
  static void open(int campo, const function<void()>& work) {
    inForm(
        "frmTab", [campo] { openList(campo); }, work);
  }
  static void add(const QString& text) {
    part("txtAdd")->setFocus();
    press(Qt::Key_A, Qt::ControlModifier);
    type(text);
    press(Qt::Key_Return);
  }
  // Types a text over the current value.
  static void rename(const QString& text, Qt::Key end = Qt::Key_Return) {
    values()->setFocus();
    press(Qt::Key_F2);
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
    type(text);
    press(end);
    QTest::qWait(1);
  }
  static void choose(int row) { values()->setCurrentIndex(values()->model()->index(row, 0)); }
  static void push(const QString& name) { click(part(name)); }
  // A list of the file: texts in their order, the default marked with "*".
  QString inFile(const QString& list, int owner) const {
    return folder_
        .found(
            "SELECT \"Desc\" || CASE \"Default\" WHEN 0 THEN '' ELSE '*' END FROM TAB WHERE "
            "TipoTab = '" +
            list + "' AND TipoRac = " + QString::number(owner) + " ORDER BY \"Desc\"")
        .replace('\n', '|');
  }
  // A list of the fourth combo's kind (languages, shared by all), with these values.
  void startWithLanguages(const QStringList& values) {
    folder_.outside("DELETE FROM TAB WHERE TipoTab = 'LINGUA'");
    for (const QString& value : values) {
      folder_.outside(
          "INSERT INTO TAB (TipoTab, TipoRac, \"Desc\", \"Default\") VALUES "
          "('LINGUA', -1, '" +
          value + "', 0)");
    }
    folder_.outside("UPDATE MAIN SET TabLinguaID = 0");
    ASSERT_TRUE(start());
  }
  static constexpr int kLingua = 6;  // the field's row in the first collection
};

TEST_F(Lookup, OpensForEveryComboOnTheValueOfTheRecord) {
  ASSERT_TRUE(start());
  int opened = 0;
  const auto openAll = [&](int collection) {
    for (int j = 0; j < iNumeroCampi(collection); ++j) {
      if (aCampi(collection, j).sTipo != CBO) continue;
      SCOPED_TRACE(qPrintable(aRaccolte(collection).sNome + ' ' + aCampi(collection, j).sTitolo));
      const QString before = combo(j)->Text();
      open(j, [&] {
        ++opened;
        EXPECT_EQ(values()->window()->windowTitle(),
                  "Raccolta " + aRaccolte(collection).sNome + ": " + aCampi(collection, j).sTitolo);
        const QStringList all =
            inFile(aCampi(collection, j).sCodTab, aCampi(collection, j).iRacTab).split('|');
        EXPECT_EQ(values()->model()->rowCount(), all.first().isEmpty() ? 0 : all.size());
        EXPECT_EQ(current(), before.isEmpty() ? QString(all.first()).remove('*') : before);
        EXPECT_EQ(QApplication::focusWidget(), part("txtAdd"));
        press(Qt::Key_Escape);
        EXPECT_FALSE(isOpen());
      });
      EXPECT_EQ(combo(j)->Text(), before);
      EXPECT_TRUE(combo(j)->hasFocus());
    }
  };
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    if (collection != 0) selectByTab(collection);
    openAll(collection);
    const int sub = aRaccolte(collection).iSottoRaccolta;
    if (sub == -1) continue;
    const tRaccolta& children = aRaccolte(sub);
    list()->FindFirst(children.sRifPadre + " = " +
                      folder_.found("SELECT " + children.sCampoPadre + " FROM " +
                                    children.sTabPrincipale + " LIMIT 1"));
    inForm(
        "frmSub", [] { press(Qt::Key_F9); }, [&] { openAll(sub); });
  }
  EXPECT_GT(opened, 100);
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Lookup, KeepsTheList) {
  startWithLanguages({"b", "d"});
  const struct {
    const char* what;
    function<void()> act;
    const char* list;
    const char* current;
    const char* told;
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
      {"given up", [] { press(Qt::Key_Escape); }, "A|b|c|ç|d", "A", "-"},
      {"to nothing", [] { rename("  "); }, "A|b|c|ç|d", "A", kEmpty},
      {"given up again", [] { press(Qt::Key_Escape); }, "A|b|c|ç|d", "A", "-"},
      {"mark", [] { push("cmdPredefinito"); }, "A*|b|c|ç|d", "A", "-"},
      {"mark again", [] { push("cmdPredefinito"); }, "A*|b|c|ç|d", "A", "-"},
      {"mark another",
       [] {
         choose(2);
         push("cmdPredefinito");
       },
       "A|b|c*|ç|d", "c", "-"},
      {"by the column",
       [] {
         const QRect cell = values()->visualRect(values()->model()->index(1, 1));
         QTest::mouseClick(values()->viewport(), Qt::LeftButton, {}, cell.center());
       },
       "A|b*|c|ç|d", "b", "-"},
      {"no mark", [] { push("cmdNoPredefinito"); }, "A|b|c|ç|d", "", "-"},
      {"nothing current, nothing deleted", [] { push("cmdElimina"); }, "A|b|c|ç|d", "", "-"},
  };
  open(kLingua, [&] {
    for (const auto& c : cases) {
      for (int i = 0; i < 3; ++i) answer(platform::kOk);
      c.act();
      EXPECT_EQ(inFile("LINGUA", -1), QString::fromUtf8(c.list)) << c.what;
      EXPECT_EQ(current(), QString::fromUtf8(c.current)) << c.what;
      EXPECT_EQ(message(), QString(c.told)) << c.what;
    }
  });
  // No value was current at the end: the record's stays.
  EXPECT_EQ(combo(kLingua)->Text(), QString(""));
}

TEST_F(Lookup, HoldsWhoeverLeavesABadText) {
  startWithLanguages({"b", "d"});
  open(kLingua, [&] {
    const function<void()> ways[] = {
        [] { press(Qt::Key_Down); },
        [] { press(Qt::Key_PageDown); },
        [] { press(Qt::Key_E, Qt::AltModifier); },
        [] { push("cmdEsci"); },
        [] { push("cmdElimina"); },
        [] { push("cmdPredefinito"); },
        [] { part("txtAdd")->setFocus(); },
        [] { platform::forms()["frmTab"].Unload(); },
        [] {
          const QRect cell = values()->visualRect(values()->model()->index(1, 1));
          QTest::mouseClick(values()->viewport(), Qt::LeftButton, {}, cell.center());
        },
    };
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
      EXPECT_EQ(inFile("LINGUA", -1), QString("b|d"));
    }
    press(Qt::Key_Escape);
    push("cmdEsci");
    EXPECT_FALSE(isOpen());
  });
}

TEST_F(Lookup, ShowsTheChosenValueWhereverTheListIsOffered) {
  ASSERT_TRUE(start());
  selectByTab(2);
  constexpr int autore = 2;
  constexpr int autoreBrano = 4;
  const QString value = QStringLiteral("0 Åberg d'Età");
  inForm(
      "frmSub", [] { press(Qt::Key_F9); },
      [&] {
        open(autoreBrano, [&] { add(value); });
        EXPECT_EQ(combo(autoreBrano)->Text(), value);
      });
  EXPECT_EQ(folder_.found("SELECT TAB.\"Desc\" FROM AUDSUB JOIN TAB ON TAB.ID = TABAutoreID "
                          "WHERE AudID = " +
                          stored("AUD.ID") + " LIMIT 1"),
            value);
  combo(autore)->setFocus();
  EXPECT_TRUE(combo(autore)->SelectText(value));
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
  EXPECT_EQ(combo(autore)->Text(), QString("0 Altro"));
  EXPECT_EQ(cell(0, "Autore"), QString("0 Altro"));
}

TEST_F(Lookup, SurvivesAValueThatAnotherProgramDeletes) {
  startWithLanguages({"b", "d", "f"});
  open(kLingua, [&] {
    choose(1);
    folder_.outside("DELETE FROM TAB WHERE TipoTab = 'LINGUA' AND \"Desc\" = 'd'");
    for (int i = 0; i < 4; ++i) answer(platform::kOk);
    rename("e", Qt::Key_Return);
    push("cmdPredefinito");
    push("cmdElimina");
    message();
    add("g");
    EXPECT_EQ(message(), QString("-"));
    EXPECT_EQ(inFile("LINGUA", -1), QString("b|f|g"));
  });
  EXPECT_EQ(combo(kLingua)->Text(), QString("g"));
}

}  // namespace
}  // namespace tavolix
