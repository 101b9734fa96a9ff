#include <QPushButton>
#include <QTabWidget>
#include <QTest>

#include "core/campi.h"
#include "core/modcuore.h"
#include "core/raccolte.h"
#include "desk.h"
#include "platform/bound_control.h"
#include "platform/flash_target.h"
#include "workspace/frmmain.h"

namespace tavolix {
namespace {

using std::function;

class Record : public Desk {
 protected:
  qint64 count(const QString& table) const {
    return folder_.found("SELECT count(*) FROM " + table).toLongLong();
  }
  QString counter() const { return folder_.found("SELECT ID FROM CONT"); }
  // Start value of a list as the archive has it, 0 for none.
  QString defaultOf(const tCampo& campo) const {
    const QString id =
        folder_.found(QStringLiteral("SELECT ID FROM TAB WHERE TipoTab = '%1' AND TipoRac = %2"
                                     " AND \"Default\" <> 0")
                          .arg(campo.sCodTab)
                          .arg(campo.iRacTab));
    return id.isEmpty() ? "0" : id;
  }
  // The stored value of a field in the file; no choice counts as 0.
  QString inFile(const QString& key, int j) const {
    const tRaccolta& raccolta = aRaccolte(iRacCorr);
    const tCampo& campo = aCampi(iRacCorr, j);
    const QString where = campo.bPrincipale
                              ? raccolta.sTabPrincipale + " WHERE " + raccolta.sCampoLegame
                              : raccolta.sTabDettaglio + " WHERE " + raccolta.sCampoID;
    const QString value =
        folder_.found("SELECT \"" + campo.sCampoDB + "\" FROM " + where + '=' + key);
    return value == "-" && (campo.sTipo == CBO || campo.sTipo == CHK) ? "0" : value;
  }
  void expectNewRecord(const QString& key) const {
    EXPECT_EQ(folder_.found("SELECT TipoRac FROM MAIN WHERE RacID = " + key),
              QString::number(iRacCorr));
    EXPECT_EQ(folder_.found("SELECT count(*) FROM " + aRaccolte(iRacCorr).sTabDettaglio +
                            " WHERE ID = " + key),
              QString("1"));
    EXPECT_EQ(stored("RacID"), key);
    EXPECT_EQ(grid()->currentIndex().row(), list()->AbsolutePosition());
    EXPECT_EQ(pages()->currentIndex(), 0);
    EXPECT_TRUE(aCampi(iRacCorr, 1).oControllo->widget()->hasFocus());
  }
};

TEST_F(Record, IsMadeByKeyMenuOrButton) {
  ASSERT_TRUE(start());
  const struct {
    const char* way;
    function<void()> make;
  } cases[] = {
      {"Alt+N in the list",
       [] {
         leave();
         press(Qt::Key_N, Qt::AltModifier);
       }},
      {"Alt+N in a box",
       [] {
         enter("txtNote");
         press(Qt::Key_N, Qt::AltModifier);
       }},
      {"Alt+N on another page",
       [] {
         enter("txtVoto");
         press(Qt::Key_N, Qt::AltModifier);
       }},
      {"F12", [] { press(Qt::Key_F12); }},
      {"button", [] { click(mainControl("cmdAddNew")); }},
      {"menu", [] { trigger("mnuModNuovo"); }},
      {"extended list",
       [] {
         trigger("mnuMaxExtension");
         press(Qt::Key_F12);
       }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.way);
    const qint64 before = count("LIB");
    const QString key = QString::number(counter().toLongLong() + 1);
    c.make();
    EXPECT_EQ(counter(), key);
    EXPECT_EQ(status(), QStringLiteral("Elenco completo: %1 records").arg(before + 1));
    EXPECT_TRUE(form()->isVisible());
    EXPECT_FALSE(action("mnuMaxExtension")->isChecked());
    expectNewRecord(key);
    type(c.way);
    leave();
    EXPECT_EQ(folder_.found("SELECT Titolo FROM MAIN WHERE TipoRac = 0 AND RacID = " + key),
              QString(c.way));
    EXPECT_EQ(cell(grid()->currentIndex().row(), "Titolo"), QString(c.way));
  }
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Record, BeginsWithTheListsStartValues) {
  folder_.outside(
      "UPDATE TAB SET \"Default\" = -1 WHERE ID IN"
      " (SELECT max(ID) FROM TAB WHERE TipoTab IN ('GENERE', 'STATO') GROUP BY TipoTab, TipoRac)");
  ASSERT_TRUE(start());
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    if (collection != 0) selectByTab(collection);
    press(Qt::Key_F12);
    const QString key = counter();
    expectNewRecord(key);
    for (int j = 0; j < iNumeroCampi(collection); ++j) {
      const tCampo& campo = aCampi(collection, j);
      const QString empty = campo.sTipo == CHK ? "0" : "-";
      EXPECT_EQ(inFile(key, j), campo.sTipo == CBO ? defaultOf(campo) : empty)
          << collection << qPrintable(campo.sTitolo);
    }
  }
  selectByTab(0);
  press(Qt::Key_F12);
  EXPECT_EQ(boxText("cboLingua"), QString("Italiano"));
  EXPECT_EQ(cell(grid()->currentIndex().row(), "Lingua"), QString("Italiano"));
}

TEST_F(Record, IsCopiedWithAllItsFields) {
  ASSERT_TRUE(start());
  const function<void()> ways[] = {[] { press(Qt::Key_F11); },
                                   [] { press(Qt::Key_D, Qt::AltModifier); },
                                   [] { click(mainControl("cmdDuplica")); }};
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    if (collection != 0) selectByTab(collection);
    for (int row = 0; row < 3; ++row) {
      goTo(row * 20 + 2);
      const QString original = stored("RacID");
      const qint64 before = count(aRaccolte(collection).sTabDettaglio);
      ways[row]();
      const QString copy = counter();
      EXPECT_NE(copy, original);
      EXPECT_EQ(count(aRaccolte(collection).sTabDettaglio), before + 1);
      expectNewRecord(copy);
      for (int j = 0; j < iNumeroCampi(collection); ++j) {
        EXPECT_EQ(inFile(copy, j), inFile(original, j))
            << collection << qPrintable(aCampi(collection, j).sTitolo);
      }
    }
  }
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Record, IsDeletedAfterAQuestion) {
  ASSERT_TRUE(start());
  const function<void()> ways[] = {[] { press(Qt::Key_C, Qt::AltModifier); },
                                   [] { click(mainControl("cmdCancella")); },
                                   [] { trigger("mnuModElimina"); }};
  for (const auto& way : ways) {
    goTo(5);
    const QString key = stored("RacID");
    const qint64 before = count("LIB");
    const QString question = "Attenzione! 36 Vuoi veramente cancellare il record corrente (" +
                             stored("Cod") + ' ' + stored("Titolo") + ")?";
    answer(platform::kNo);
    way();
    EXPECT_EQ(message(), question);
    EXPECT_EQ(count("LIB"), before);
    EXPECT_EQ(stored("RacID"), key);
    answer(platform::kYes);
    way();
    EXPECT_EQ(message(), question);
    EXPECT_EQ(status(), QStringLiteral("Elenco completo: %1 records").arg(before - 1));
    EXPECT_EQ(folder_.found("SELECT count(*) FROM MAIN WHERE TipoRac = 0 AND RacID = " + key),
              QString("0"));
    EXPECT_EQ(folder_.found("SELECT count(*) FROM LIB WHERE ID = " + key), QString("0"));
    EXPECT_EQ(boxText("txtCod"), stored("Cod"));
  }
}

TEST_F(Record, TakesItsSubRecordsAlong) {
  ASSERT_TRUE(start());
  const struct {
    int collection;
    const char* table;
    const char* parent;
  } cases[] = {{1, "RIVSUB", "RivID"}, {2, "AUDSUB", "AudID"}, {7, "PERSUB", "PerID"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.table);
    selectByTab(c.collection);
    const QString key =
        folder_.found(QStringLiteral("SELECT max(%1) FROM %2").arg(c.parent, c.table));
    const QString where = QStringLiteral("%1 WHERE %2 = %3").arg(c.table, c.parent, key);
    const qint64 all = count(c.table);
    const qint64 own = count(where);
    ASSERT_GT(own, 0);
    list()->FindFirst("RacID = " + key);
    answer(platform::kYes);
    press(Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(count(where), 0);
    EXPECT_EQ(count(c.table), all - own);
    EXPECT_EQ(count(aRaccolte(c.collection).sTabDettaglio + " WHERE ID = " + key), 0);
  }
}

TEST_F(Record, IsDeletedWithAllThatAreShown) {
  ASSERT_TRUE(start());
  selectByTab(2);
  aRaccolte(2).sFiltro = " WHERE Anno > 1980";
  DBRefresh();
  const qint64 shown = list()->RecordCount();
  const qint64 all = count("AUD");
  const qint64 children =
      count("AUDSUB WHERE AudID NOT IN (SELECT RacID FROM MAIN WHERE TipoRac = 2 AND Anno > 1980)");
  ASSERT_GT(shown, 0);
  ASSERT_LT(shown, all);
  answer(platform::kNo);
  trigger("mnuCancellaMultiplo");
  EXPECT_EQ(message(), QString("Attenzione! 36 Vuoi veramente cancellare tutti i record "
                               "correntemente visualizzati nell'elenco?"));
  EXPECT_EQ(count("AUD"), all);
  answer(platform::kYes);
  trigger("mnuCancellaMultiplo");
  EXPECT_EQ(status(), QString("Elenco filtrato: 0 records"));
  EXPECT_EQ(count("AUD"), all - shown);
  EXPECT_EQ(count("MAIN WHERE TipoRac = 2"), all - shown);
  EXPECT_EQ(count("AUDSUB"), children);
  EXPECT_FALSE(pages()->isEnabled());
  click(mainControl("cmdBar(8)"));
  EXPECT_EQ(status(), QStringLiteral("Elenco completo: %1 records").arg(all - shown));
  EXPECT_TRUE(pages()->isEnabled());
}

TEST_F(Record, IsAskedForInAnEmptyList) {
  using platform::FlashTarget;
  ASSERT_TRUE(start("modello.tvx"));
  auto* cmdAddNew = mainControl("cmdAddNew");
  const platform::BgrColor normal = FlashTarget::ForeColor(mainControl("cmdEspandi"));
  for (const char* name : {"cmdCancella", "cmdDuplica"})
    EXPECT_FALSE(mainControl(name)->isEnabled());
  EXPECT_FALSE(pages()->isEnabled());
  EXPECT_TRUE(cmdAddNew->hasFocus());
  const platform::BgrColor red = platform::qbColor(12);
  EXPECT_TRUE(QTest::qWaitFor([&] { return FlashTarget::ForeColor(cmdAddNew) == red; }));
  EXPECT_TRUE(QTest::qWaitFor([&] { return FlashTarget::ForeColor(cmdAddNew) == normal; }));
  for (const char* name : {"mnuModElimina", "mnuModDuplica", "mnuCancellaMultiplo"}) trigger(name);
  press(Qt::Key_C, Qt::AltModifier);
  EXPECT_EQ(message(), QString("-"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return FlashTarget::ForeColor(cmdAddNew) == red; }));
  press(Qt::Key_Space);
  EXPECT_EQ(FlashTarget::ForeColor(cmdAddNew), normal);
  EXPECT_TRUE(pages()->isEnabled());
  EXPECT_EQ(status(), QString("Elenco completo: 1 records"));
  EXPECT_EQ(folder_.found("SELECT RacID, TipoRac FROM MAIN", "modello.tvx"), QString("1|0"));
  answer(platform::kYes);
  press(Qt::Key_C, Qt::AltModifier);
  EXPECT_EQ(status(), QString("Elenco completo: 0 records"));
  EXPECT_FALSE(pages()->isEnabled());
  EXPECT_TRUE(cmdAddNew->hasFocus());
  selectByTab(3);
  EXPECT_FALSE(pages()->isEnabled());
  EXPECT_TRUE(cmdAddNew->hasFocus());
}

TEST_F(Record, ThatAnotherProgramDeletedIsReported) {
  ASSERT_TRUE(start());
  const struct {
    const char* deleted;
    const char* told;
    const char* rest;
  } cases[] = {
      {"DELETE FROM MAIN WHERE TipoRac = 0 AND RacID = ", "primaria", "LIB WHERE ID = "},
      {"DELETE FROM LIB WHERE ID = ", "secondaria", "MAIN WHERE TipoRac = 0 AND RacID = "},
  };
  for (const auto& c : cases) {
    goTo(7);
    const QString key = stored("RacID");
    const QString mainId = stored("MAIN.ID");
    folder_.outside(c.deleted + key);
    answer(platform::kOk);
    FrmMain().CancellaRecord(mainId.toLongLong());
    EXPECT_EQ(message(), QString("Attenzione! 48 Errore in cancellazione tab ") + c.told);
    EXPECT_EQ(count(c.rest + key), c.told[0] == 'p' ? 1 : 0);
    DBRefresh();
    EXPECT_FALSE(fileRow().isEmpty());
  }
}

}  // namespace
}  // namespace tavolix
