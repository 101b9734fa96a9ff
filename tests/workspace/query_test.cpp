#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "core/campi.h"
#include "core/modcuore.h"
#include "core/raccolte.h"
#include "desk.h"
#include "platform/data_combo.h"
#include "platform/form.h"
#include "query/condizione.h"
#include "query/frmordina.h"
#include "query/frmtrova.h"

namespace tavolix {
namespace {

using std::function;

// The row of a field of the field table, by its title.
int fieldOf(int collection, const QString& title) {
  int j = 0;
  while (aCampi(collection, j).sTitolo != title) ++j;
  return j;
}

class Query : public Desk {
 protected:
  static Condizione condition(int collection, const char* field, const char* test,
                              const ValoreCondizione& value) {
    return {fieldOf(collection, QString::fromUtf8(field)), QString::fromUtf8(test), value};
  }
  static QWidget* part(const char* form, const QString& name) { return control(form, name); }
  static void choose(const char* form, const QString& name, const QString& text) {
    auto* combo = static_cast<QComboBox*>(part(form, name));
    ASSERT_GE(combo->findText(text), 0) << qPrintable(text);
    combo->setCurrentIndex(combo->findText(text));
  }
  static void write(const char* form, const QString& name, const QString& text) {
    part(form, name)->setFocus();
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
    type(text);
  }
  static void filter(const function<void()>& work) {
    inForm(
        "frmFiltro", [] { action("mnuModFiltra")->trigger(); }, work);
  }
  static void push(const char* form, const char* name) { click(part(form, name)); }
};

// Each kind of field with each of its conditions: the text, and the rows of a plain query.
TEST_F(Query, PutsConditionsIntoSql) {
  ASSERT_TRUE(start());
  const ValoreCondizione none;
  const auto text = [](const char* value) { return ValoreCondizione{value, 0, {}, false}; };
  const auto value = [](qint64 key) { return ValoreCondizione{{}, key, {}, false}; };
  const auto day = [](qint64 number) { return ValoreCondizione{{}, 0, number, false}; };
  const struct {
    QVector<RigaFiltro> rows;
    const char* clause;  // or the refusal
    const char* plain;   // what a plain query asks
  } cases[] = {
      {{{"", condition(2, "Titolo", "Contiene", text("ro"))},
        {"e..", condition(2, "Anno", "Maggiore", text("1990"))}},
       " WHERE ((MAIN.Titolo Like '*ro*') AND MAIN.Anno > 1990)",
       "Titolo LIKE '%ro%' AND Anno > 1990"},
      {{{"", condition(2, "Anno", "Minore o uguale", text("1970"))},
        {"o..", condition(2, "Originale", "Uguale", none)},
        {"e..", condition(2, "Anno", "Maggiore o uguale", text("-1"))}},
       " WHERE (((MAIN.Anno <= 1970) OR AUD.Originale = 0) AND MAIN.Anno >= -1)",
       "(Anno <= 1970 OR Originale = 0) AND Anno >= -1"},
      {{{"", condition(2, "Titolo", "Uguale", text("l'arte"))}},
       " WHERE (MAIN.Titolo = 'l''arte')",
       "Titolo = 'l''arte'"},
      {{{"", condition(2, "Note", "Uguale", none)}},
       " WHERE ((MAIN.Note = '' or MAIN.Note Is Null) )",
       "ifnull(Note, '') = ''"},
      {{{"", condition(2, "Note", "Diverso", none)}},
       " WHERE ((MAIN.Note <> '' and MAIN.Note Is Not Null) )",
       "ifnull(Note, '') <> ''"},
      {{{"", condition(2, "Autore", "Uguale", value(3))}},
       " WHERE (MAIN.TABAutoreID = 3)",
       "TABAutoreID = 3"},
      {{{"", condition(2, "Autore", "Diverso", value(3))}},
       " WHERE (MAIN.TABAutoreID <> 3)",
       "TABAutoreID <> 3"},
      {{{"", condition(2, "Data di acquisto", "Minore", day(35000))}},
       " WHERE (MAIN.DtaAcq < 35000)",
       "DtaAcq < 35000"},
      {{{"", condition(2, "Titolo", "Contiene", text("a"))},
        {"e..", condition(2, "Titolo", "Contiene", none)}},
       "!Non e' possibile usare un valore vuoto per la condizione 'Contiene'!",
       ""},
      {{{"", condition(2, "Anno", "Uguale", text("1e400"))}},
       "!Specificare un valore numerico per il campo Anno",
       ""},
      {{{"", condition(2, "Anno", "Uguale", text("1 or 1=1"))}},
       "!Specificare un valore numerico per il campo Anno",
       ""},
      {{{"", condition(2, "Data di acquisto", "Uguale", none)}},
       "!Specificare una data valida per il campo Data di acquisto",
       ""},
      {{}, "", "1"},
  };
  selectByTab(2);
  for (const auto& c : cases) {
    const Esito esito =
        ClausolaFiltro(2, {c.rows.constData(), static_cast<std::size_t>(c.rows.size())});
    EXPECT_EQ(esito.sRifiuto.isEmpty() ? esito.sTesto : '!' + esito.sRifiuto,
              QString::fromUtf8(c.clause));
    if (*c.plain == '\0') continue;
    aRaccolte(2).sFiltro = esito.sTesto;
    DBRefresh();
    EXPECT_EQ(QString::number(list()->RecordCount()),
              folder_.found(QStringLiteral("SELECT count(*) FROM MAIN JOIN AUD ON RacID = AUD.ID "
                                           "WHERE TipoRac = 2 AND (%1)")
                                .arg(c.plain)))
        << c.clause;
  }
  const struct {
    Condizione asked;
    const char* text;
  } searches[] = {
      {condition(2, "Titolo", "contiene", text("x")), "MAIN.Titolo Like '*x*'"},
      {condition(2, "Titolo", "inizia per", text("x")), "MAIN.Titolo Like 'x*'"},
      {condition(2, "Titolo", "uguale a", none), "MAIN.Titolo = '' or MAIN.Titolo Is Null "},
      {condition(2, "Anno", "uguale a", text("1967")), "MAIN.Anno = 1967"},
      {condition(2, "Titolo", "inizia per", none),
       "!Non e' possibile usare un valore vuoto per la condizione 'inizia per'!"},
  };
  for (const auto& c : searches) {
    const Esito esito = CondizioneTrova(2, c.asked);
    EXPECT_EQ(esito.sRifiuto.isEmpty() ? esito.sTesto : '!' + esito.sRifiuto, QString(c.text));
  }
  EXPECT_EQ(sClausolaOrdine({"", "Titolo", "Anno"}, true),
            QString(" ORDER BY Titolo DESC , Anno DESC "));
}

TEST_F(Query, FiltersTheListAndRemembersItsRows) {
  ASSERT_TRUE(start());
  selectByTab(2);
  const qint64 all = list()->RecordCount();
  filter([&] {
    EXPECT_EQ(QApplication::focusWidget(), part("frmFiltro", "cbpCampo(0)"));
    answer(platform::kOk);
    press(Qt::Key_Return);
    EXPECT_TRUE(message().contains("'Contiene'"));
    EXPECT_TRUE(platform::forms()["frmFiltro"].IsVisible());
    EXPECT_EQ(QApplication::focusWidget(), part("frmFiltro", "txtValore(0)"));
    choose("frmFiltro", "cbpCampo(0)", "Titolo");
    write("frmFiltro", "txtValore(0)", "o");
    EXPECT_FALSE(part("frmFiltro", "cboAltro(2)")->isVisible());
    choose("frmFiltro", "cboAltro(1)", "e..");
    choose("frmFiltro", "cbpCampo(1)", "Anno");
    choose("frmFiltro", "cboCondizione(1)", "Maggiore");
    write("frmFiltro", "txtValore(1)", "x1980");
    EXPECT_TRUE(part("frmFiltro", "cboAltro(2)")->isVisible());
    push("frmFiltro", "cmdFiltro");
    EXPECT_FALSE(platform::forms()["frmFiltro"].IsVisible());
  });
  const QString found = folder_.found(
      "SELECT count(*) FROM MAIN WHERE TipoRac = 2 AND Titolo LIKE '%o%' AND Anno > 1980");
  EXPECT_EQ(status(), "Elenco filtrato: " + found + " records");
  EXPECT_TRUE(mainControl("cmdBar(8)")->isEnabled());
  selectByTab(0);
  EXPECT_TRUE(status().startsWith("Elenco completo"));
  selectByTab(2);
  EXPECT_EQ(status(), "Elenco filtrato: " + found + " records");
  trigger("mnuEliminaFiltro");
  EXPECT_EQ(list()->RecordCount(), all);
  filter([&] {
    // Filled again: another collection was filtered meanwhile by none.
    EXPECT_EQ(static_cast<QLineEdit*>(part("frmFiltro", "txtValore(0)"))->text(), QString("o"));
    choose("frmFiltro", "cboAltro(1)", "");
    EXPECT_FALSE(part("frmFiltro", "cbpCampo(1)")->isVisible());
    choose("frmFiltro", "cbpCampo(0)", "Titolo");
    write("frmFiltro", "txtValore(0)", "nessuno di certo");
    push("frmFiltro", "cmdFiltro");
  });
  EXPECT_EQ(status(), QString("Elenco filtrato: 0 records"));
  EXPECT_FALSE(pages()->isEnabled());
  filter([&] { push("frmFiltro", "cmdAnnulla"); });
  EXPECT_EQ(list()->RecordCount(), all);
  // A clause that the store refuses: the list stays as it was.
  aRaccolte(2).sFiltro = " WHERE (MAIN.Anno = 1,5)";
  answer(platform::kOk);
  DBRefresh();
  EXPECT_TRUE(message().contains("modCuore!DBRefresh"));
  EXPECT_EQ(list()->RecordCount(), all);
}

TEST_F(Query, FindsRecordsOneAfterTheOther) {
  ASSERT_TRUE(start());
  selectByTab(2);
  trigger("mnuModTrova");
  choose("frmTrova", "cboCampo", "Titolo");
  static_cast<QLineEdit*>(part("frmTrova", "txtValore"))->setText("o");
  QStringList forward;
  const auto press1 = [&](const char* name) {
    push("frmTrova", name);
    return stored("Titolo");
  };
  QString title = press1("CSCmdBtn1");
  while (forward.isEmpty() || forward.last() != title) {
    forward << title;
    title = press1("cmdSuccessivo");
  }
  EXPECT_EQ(
      forward.size(),
      folder_.found("SELECT count(*) FROM MAIN WHERE TipoRac = 2 AND Titolo LIKE '%o%'").toInt());
  QStringList back;
  title = press1("CSCmdBtn2");
  while (back.isEmpty() || back.first() != title) {
    back.prepend(title);
    title = press1("cmdPrecedente");
  }
  EXPECT_EQ(back.join('|'), forward.join('|'));
  // What is being typed is written before the record is left.
  const QString key = stored("RacID");
  window()->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window()));
  enter("txtNote");
  type("detto");
  push("frmTrova", "cmdSuccessivo");
  EXPECT_EQ(folder_.found("SELECT Note LIKE '%detto%' FROM MAIN WHERE RacID = " + key),
            QString("1"));
  selectByTab(0);
  EXPECT_EQ(static_cast<QRadioButton*>(part("frmTrova", "optRac"))->text(),
            QString("Nella raccolta principale Libri"));
  EXPECT_FALSE(part("frmTrova", "optSubRac")->isEnabled());
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Query, FindsAmongTheChildren) {
  ASSERT_TRUE(start());
  selectByTab(2);
  trigger("mnuModTrova");
  static_cast<QRadioButton*>(part("frmTrova", "optSubRac"))->click();
  choose("frmTrova", "cboCampo", "Titolo");
  static_cast<QLineEdit*>(part("frmTrova", "txtValore"))->setText("love");
  const QString hits = folder_.found(
      "SELECT AUDSUB.ID FROM AUDSUB JOIN MAIN ON RacID = AudID WHERE TipoRac = 2 AND "
      "AUDSUB.Titolo LIKE '%love%' ORDER BY AudID, AUDSUB.ID");
  QStringList found;
  const auto search = [&](const char* name) {
    bool shown = false;
    QTimer::singleShot(0, qApp, [&] {
      platform::Form& sub = platform::forms()["frmSub"];
      if (!QTest::qWaitFor([&] { return sub.IsVisible(); }, 200)) return;
      shown = true;
      EXPECT_EQ(iRacCorr, 9);
      const auto rows = sub.part<platform::DataControl>("dbSubCurr")->Recordset();
      EXPECT_EQ(rows->Value("AudID").toString(), stored("AUD.ID"));
      found << rows->Value("ID").toString();
      sub.Hide();
    });
    push("frmTrova", name);
    QTest::qWait(210);
    EXPECT_EQ(iRacCorr, 2);
    return shown;
  };
  bool more = search("CSCmdBtn1");
  while (more) more = search("cmdSuccessivo");
  EXPECT_EQ(found.join('\n'), hits);
  EXPECT_GT(found.size(), 1);
  found.clear();
  EXPECT_TRUE(search("CSCmdBtn2"));
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Query, SortsByUpToThreeColumns) {
  ASSERT_TRUE(start());
  selectByTab(2);
  inForm(
      "frmOrdina", [] { action("mnuOrdina")->trigger(); },
      [&] {
        choose("frmOrdina", "cboCampo(0)", "Genere");
        choose("frmOrdina", "cboCampo(2)", "Anno");
        static_cast<QRadioButton*>(part("frmOrdina", "optDecr"))->click();
        push("frmOrdina", "cmdElabora");
      });
  EXPECT_EQ(aRaccolte(2).sOrdine, QString(" ORDER BY Genere DESC , Anno DESC "));
  QStringList shown;
  for (int row = 0; row < list()->RecordCount(); ++row)
    shown << cell(row, "Genere") + cell(row, "Anno");
  EXPECT_GE(shown.first(), shown.last());
  inForm(
      "frmOrdina", [] { action("mnuOrdina")->trigger(); },
      [&] {
        EXPECT_EQ(static_cast<QComboBox*>(part("frmOrdina", "cboCampo(0)"))->currentText(),
                  QString(""));
        press(Qt::Key_Return);
      });
  EXPECT_EQ(aRaccolte(2).sOrdine, QString(""));
}

}  // namespace
}  // namespace tavolix
