#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QTest>
#include <QWheelEvent>

#include "core/modcuore.h"
#include "core/modutil.h"
#include "desk.h"
#include "model/campi.h"
#include "model/condizione.h"
#include "model/raccolte.h"
#include "platform/data_combo.h"
#include "platform/form.h"
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
  static void setText(const char* form, const char* name, const QString& text) {
    static_cast<QLineEdit*>(part(form, name))->setText(text);
  }
  // Applies one condition in the window; "refused" and the message, or the number of records.
  static QString filtered(const char* field, const char* test, const QString& value) {
    QString result;
    filter([&] {
      choose("frmFiltro", "cbpCampo(0)", field);
      choose("frmFiltro", "cboCondizione(0)", test);
      setText("frmFiltro", fieldIsDate(field) ? "txtDtaValore(0)" : "txtValore(0)", value);
      answer(platform::kOk);
      push("frmFiltro", "cmdFiltro");
      if (platform::forms()["frmFiltro"].IsVisible()) result = "refused";
    });
    const QString told = message();
    return told == "-" ? QString::number(list()->RecordCount()) : result + ' ' + told;
  }
  static bool fieldIsDate(const QString& field) { return field.startsWith("Data"); }
  // Searches among the children: the row that the sub-collection's window shows, nothing without.
  static QString child(const char* button) {
    QString found;
    QTimer::singleShot(0, qApp, [&] {
      platform::Form& sub = platform::forms()["frmSub"];
      if (!QTest::qWaitFor([&] { return sub.IsVisible(); }, 100)) return;
      EXPECT_EQ(iRacCorr, 9);
      const auto rows = sub.part<platform::DataControl>("dbSubCurr")->Recordset();
      EXPECT_EQ(rows->Value("AudID").toString(), stored("AUD.ID"));
      found = rows->Value("ID").toString();
      sub.Hide();
    });
    push("frmTrova", button);
    QTest::qWait(110);
    EXPECT_EQ(iRacCorr, 2);
    return found;
  }
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
      {{{"", condition(2, "Anno", "Maggiore", text("1.967,5"))},
        {"e..", condition(2, "Anno", "Minore", text("1.98e3"))}},
       " WHERE ((MAIN.Anno > 1967.5) AND MAIN.Anno < 1.98e3)",
       "Anno > 1967.5 AND Anno < 1980"},
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
  // In a collection that is entered with it there is no list, until one comes.
  const auto duration = [] { return cell(0, "Durata"); };
  const QString before = duration();
  selectByTab(0);
  answer(platform::kOk);
  selectByTab(2);
  EXPECT_TRUE(message().contains("modCuore!DBRefresh"));
  trigger("mnuEliminaFiltro");
  EXPECT_EQ(duration(), before);
  EXPECT_TRUE(cellAt(0, "Titolo").flags().testFlag(Qt::ItemIsEditable));
}

TEST_F(Query, FiltersByTheValueOfACell) {
  ASSERT_TRUE(start());
  const auto pick = [](const char* entry) {
    press("Shift+F10");
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    for (QAction* action : menu->actions()) {
      if (action->text().startsWith(entry)) action->trigger();
    }
    menu->close();
    QApplication::processEvents();
  };
  const std::pair<int, const char*> fields[] = {
      {0, "DtaAcq"}, {2, "Titolo"}, {2, "Autore"}, {2, "Anno"}, {2, "Originale"}};
  for (const auto& [collection, field] : fields) {
    selectByTab(collection);
    goTo(1, field);
    const QString shown = cell(1, field);
    int expected = 0;
    for (int row = 0; row < list()->RecordCount(); ++row) expected += cell(row, field) == shown;
    pick("&Filtra");
    EXPECT_EQ(list()->RecordCount(), expected) << field;
    EXPECT_EQ(cell(expected - 1, field), shown);
    EXPECT_EQ(status(), QStringLiteral("Elenco filtrato: %1 records").arg(expected));
    trigger("mnuEliminaFiltro");
  }
  goTo(1, "Durata");
  answer(platform::kOk);
  pick("&Filtra");
  EXPECT_TRUE(message().contains("non ha condizioni"));
  EXPECT_EQ(aRaccolte(2).sFiltro, QString());
  pick("&Ordina");
  EXPECT_EQ(aRaccolte(2).sOrdine, QString(" ORDER BY Durata"));
}

TEST_F(Query, FindsRecordsOneAfterTheOther) {
  ASSERT_TRUE(start());
  selectByTab(2);
  trigger("mnuModTrova");
  choose("frmTrova", "cboCampo", "Titolo");
  static_cast<QLineEdit*>(part("frmTrova", "txtValore"))->setText("o");
  // The option that is chosen already leaves what was entered.
  click(part("frmTrova", "optRac"));
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
  const QString key = stored("RacID");
  window()->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window()));
  // In the list the keys go on with the search.
  leave();
  press("F3");
  EXPECT_EQ(stored("Titolo"), forward.value(1));
  press("Shift+F3");
  EXPECT_EQ(stored("Titolo"), forward.first());
  // What is being typed is written before the record is left.
  enter("txtNote");
  type("detto");
  push("frmTrova", "cmdSuccessivo");
  EXPECT_EQ(folder_.found("SELECT Note LIKE '%detto%' FROM MAIN WHERE RacID = " + key),
            QString("1"));
  // A search without a hit leaves the record as one to work on.
  setText("frmTrova", "txtValore", "nessuno di certo");
  push("frmTrova", "cmdSuccessivo");
  EXPECT_FALSE(list()->NoMatch());
  // What the store refuses is told, and the record stays; in an empty list nothing is found.
  choose("frmTrova", "cboCampo", "Titolo");
  const QString before = stored("RacID");
  {
    const QScopedValueRollback<QString> missing(aCampi(2, 1).sCampoDB, "Manca");
    answer(platform::kOk);
    push("frmTrova", "cmdSuccessivo");
  }
  EXPECT_TRUE(message().contains("frmTrova!Cerca"));
  EXPECT_EQ(stored("RacID"), before);
  choose("frmTrova", "cboCampo", "Anno");
  aRaccolte(2).sFiltro = " WHERE 1 = 0";
  DBRefresh();
  setText("frmTrova", "txtValore", "1967");
  push("frmTrova", "CSCmdBtn2");
  selectByTab(0);
  EXPECT_EQ(static_cast<QRadioButton*>(part("frmTrova", "optRac"))->text(),
            QString("Nella raccolta principale Libri"));
  EXPECT_FALSE(part("frmTrova", "optSubRac")->isEnabled());
  EXPECT_EQ(message(), QString("-"));
}

// Three records with two hits each, and others between them: the search goes on among the children
// it has found, as long as the record is the same.
TEST_F(Query, FindsAmongTheChildren) {
  ASSERT_TRUE(start());
  selectByTab(2);
  const QString pairs =
      "SELECT AudID FROM AUDSUB WHERE Titolo LIKE '%the%' GROUP BY AudID HAVING count(*) = 2 "
      "ORDER BY AudID LIMIT 3";
  const QStringList records = folder_.found(pairs).split('\n');
  ASSERT_EQ(records.size(), 3);
  const QString between = folder_.found(
      "SELECT group_concat(ID) FROM AUD WHERE ID NOT IN (SELECT AudID FROM AUDSUB WHERE Titolo "
      "LIKE '%the%')");
  aRaccolte(2).sFiltro = " WHERE AUD.ID IN (" + records.join(", ") + ", " + between + ")";
  DBRefresh();
  const auto hit = [&](int record, int number) {
    return folder_.found(
        QStringLiteral("SELECT ID FROM AUDSUB WHERE Titolo LIKE '%the%' AND AudID = %1 "
                       "ORDER BY ID LIMIT 1 OFFSET %2")
            .arg(records[record])
            .arg(number));
  };
  trigger("mnuModTrova");
  static_cast<QRadioButton*>(part("frmTrova", "optSubRac"))->click();
  choose("frmTrova", "cboCampo", "Titolo");
  setText("frmTrova", "txtValore", "the");
  // Not open yet: the current record is passed over.
  list()->FindFirst("AUD.ID = " + records[0]);
  EXPECT_EQ(child("cmdSuccessivo"), hit(1, 0));
  const struct {
    const char* button;
    QString found;
  } presses[] = {
      {"CSCmdBtn1", hit(0, 0)},     {"cmdSuccessivo", hit(0, 1)}, {"cmdPrecedente", hit(0, 0)},
      {"cmdSuccessivo", hit(0, 1)}, {"cmdSuccessivo", hit(1, 0)}, {"cmdSuccessivo", hit(1, 1)},
      {"cmdSuccessivo", hit(2, 0)}, {"cmdPrecedente", hit(1, 0)}, {"CSCmdBtn2", hit(2, 0)},
      {"cmdSuccessivo", hit(2, 1)}, {"cmdSuccessivo", QString()},
  };
  for (const auto& p : presses) EXPECT_EQ(child(p.button), p.found) << p.button;
  // Another record has become the current one.
  EXPECT_EQ(child("CSCmdBtn1"), hit(0, 0));
  list()->FindFirst("AUD.ID = " + records[2]);
  EXPECT_EQ(child("cmdSuccessivo"), hit(2, 0));
  // Another condition, among the same children.
  setText("frmTrova", "txtValore", "nessuno di certo");
  EXPECT_EQ(child("cmdSuccessivo"), QString());
  // The record goes, and the collection changes while the window is open.
  setText("frmTrova", "txtValore", "the");
  EXPECT_EQ(child("CSCmdBtn1"), hit(0, 0));
  answer(platform::kYes);
  trigger("mnuModElimina");
  EXPECT_EQ(child("CSCmdBtn1"), hit(1, 0));
  selectByTab(0);
  EXPECT_FALSE(part("frmTrova", "optSubRac")->isEnabled());
  selectByTab(2);
  EXPECT_TRUE(static_cast<QRadioButton*>(part("frmTrova", "optRac"))->isChecked());
}

// Enter takes the row of an open list and no more; Tab and the window's letters take it and go on.
TEST_F(Query, LeavesOpenListsByTheirKeys) {
  ASSERT_TRUE(start());
  selectByTab(2);
  auto* form = &platform::forms()["frmFiltro"];
  filter([&] {
    // What is for the window closes the list, which is not opened again by it.
    for (const char* name : {"cboCondizione(0)", "cboAltro(1)"}) {
      auto* combo = static_cast<QComboBox*>(part("frmFiltro", name));
      for (const char* key : {"F2", "F9", "F12", "Ctrl+C", "Ctrl+L", "Ctrl+1", "Alt+X"}) {
        combo->setFocus();
        press(Qt::Key_F4);
        EXPECT_TRUE(combo->view()->isVisible());
        press(key);
        EXPECT_FALSE(combo->view()->isVisible()) << name << key;
      }
    }
    auto* field = static_cast<QComboBox*>(part("frmFiltro", "cbpCampo(0)"));
    field->setFocus();
    press(Qt::Key_F4);
    press(Qt::Key_L);
    press(Qt::Key_Tab);
    EXPECT_EQ(field->currentText(), QString("Lingua"));
    EXPECT_EQ(QApplication::focusWidget(), part("frmFiltro", "cboCondizione(0)"));
    QWheelEvent wheel({5, 5}, field->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {},
                      Qt::NoScrollPhase, false);
    for (QWidget* still : std::initializer_list<QWidget*>{field, pages()->tabBar()}) {
      QApplication::sendEvent(still, &wheel);
    }
    EXPECT_EQ(field->currentText(), QString("Lingua"));
    EXPECT_EQ(pages()->currentIndex(), 0);
    press(Qt::Key_Tab);
    // A key that comes to the list when that has closed is for what stands behind it.
    QWindow* closed = field->view()->window()->windowHandle();
    QKeyEvent late(QEvent::KeyPress, Qt::Key_I, Qt::NoModifier, "i");
    QApplication::sendEvent(closed, &late);
    QApplication::processEvents();
    type("ng");
    EXPECT_TRUE(
        static_cast<platform::DataCombo*>(part("frmFiltro", "cboValore(0)"))->DroppedDown());
    press(Qt::Key_Return);
    EXPECT_TRUE(form->IsVisible());
    press(Qt::Key_Return);
    EXPECT_FALSE(form->IsVisible());
  });
  EXPECT_EQ(QString::number(list()->RecordCount()),
            folder_.found("SELECT count(*) FROM MAIN JOIN TAB ON TabLinguaID = TAB.ID WHERE "
                          "MAIN.TipoRac = 2 AND \"Desc\" LIKE 'ing%'"));
  // The value goes from its list: the row forgets it.
  folder_.outside("UPDATE TAB SET \"Desc\" = '' WHERE \"Desc\" LIKE 'ing%'");
  list()->Requery();
  filter([&] {
    EXPECT_EQ(static_cast<platform::DataCombo*>(part("frmFiltro", "cboValore(0)"))->Value(), 0);
    press(Qt::Key_F4);
    press(Qt::Key_E, Qt::AltModifier);
    EXPECT_FALSE(form->IsVisible());
  });
}

// What is typed is a value and nothing else.
TEST_F(Query, TakesAnyTextForAValue) {
  ASSERT_TRUE(start());
  selectByTab(2);
  const QString all = QString::number(list()->RecordCount());
  folder_.outside(
      "UPDATE MAIN SET Titolo = 'PERCH\u00c9 \\ \"no\"; -- %_ l''arte', Cod = 'x' WHERE ID = " +
      stored("MAIN.ID"));
  const QString date = "Specificare una data valida per il campo Data di acquisto";
  const QString number = "Specificare un valore numerico per il campo Anno";
  const struct {
    const char* field;
    const char* test;
    QString value;
    QString result;
  } cases[] = {
      {"Titolo", "Contiene", QString::fromUtf8("perch\u00e9"), "1"},
      {"Titolo", "Contiene", "perche'", "0"},
      {"Titolo", "Contiene", "l'arte", "1"},
      {"Titolo", "Contiene", "' OR 1=1 --", "0"},
      {"Titolo", "Contiene", "\\ \"no\"; -- %_", "1"},
      {"Titolo", "Contiene", "'; DELETE FROM MAIN; --", "0"},
      {"Titolo", "Contiene", "[pq]erch?", "1"},
      {"Titolo", "Contiene", "[", "0"},
      {"Titolo", "Contiene", QString(3, ' '), "0"},
      {"Titolo", "Contiene", QString(30000, 'a'), "0"},
      {"Titolo", "Uguale", "*", "0"},
      {"Titolo", "Diverso", "x' OR 'a' = 'a", all},
      {"Anno", "Uguale", "-0", "0"},
      {"Anno", "Uguale", "1e400", number},
      {"Anno", "Maggiore", "-", number},
      {"Anno", "Maggiore", "", number},
      {"Anno", "Maggiore", "3000,5", "0"},
      {"Data di acquisto", "Uguale", "31-02-2000", date},
      {"Data di acquisto", "Maggiore", "", date},
      {"Data di acquisto", "Maggiore", "31-12-2199", "0"},
  };
  for (const auto& c : cases) {
    const QString result = filtered(c.field, c.test, c.value);
    const bool counts = c.result.front().isDigit();
    EXPECT_TRUE(counts ? result == c.result : result.contains(c.result))
        << c.field << ' ' << qPrintable(c.value.left(40)) << ": " << qPrintable(result);
  }
  // A value that another program deletes while the window is open: its records still hold the key.
  const QString author = folder_.found("SELECT max(TABAutoreID) FROM MAIN WHERE TipoRac = 2");
  filter([&] {
    choose("frmFiltro", "cbpCampo(0)", "Autore");
    auto* combo = static_cast<platform::DataCombo*>(part("frmFiltro", "cboValore(0)"));
    ImpostaValoreCombo(*combo, 1, author);
    folder_.outside("DELETE FROM TAB WHERE ID = " + author);
    push("frmFiltro", "cmdFiltro");
  });
  EXPECT_EQ(
      QString::number(list()->RecordCount()),
      folder_.found("SELECT count(*) FROM MAIN WHERE TipoRac = 2 AND TABAutoreID = " + author));
  trigger("mnuEliminaFiltro");
  EXPECT_EQ(QString::number(list()->RecordCount()), all);
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
  const QHeaderView* heading = grid()->horizontalHeader();
  const int marked = heading->sortIndicatorSection();
  ASSERT_GE(marked, 0);
  EXPECT_EQ(grid()->Column(marked).dataField, QString("Genere"));
  EXPECT_EQ(heading->sortIndicatorOrder(), Qt::DescendingOrder);
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
  EXPECT_EQ(heading->sortIndicatorSection(), -1);
}

}  // namespace
}  // namespace tavolix
