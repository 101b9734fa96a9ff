#include <QPushButton>
#include <QRegularExpression>
#include <QTabWidget>

#include "core/campi.h"
#include "core/modcuore.h"
#include "core/raccolte.h"
#include "desk.h"
#include "platform/bound_control.h"

namespace tavolix {
namespace {

using std::function;

class Record : public Desk {
 protected:
  int count(const QString& table) const {
    return folder_.found("SELECT count(*) FROM " + table).toInt();
  }
  static QString complete(int rows) {
    return QStringLiteral("Elenco completo: %1 records").arg(rows);
  }
  // The fields of a record in the file; no choice counts as 0.
  QStringList inFile(const QString& key) const {
    const QStringList row = fileRow(iRacCorr, key);
    QStringList values;
    for (int j = 0; j < iNumeroCampi(iRacCorr); ++j) {
      const QString start = sCampoQualificato(iRacCorr, j) + '=';
      const QRegularExpression column('^' + start, QRegularExpression::CaseInsensitiveOption);
      const QString value = row.filter(column).join('+').mid(start.size());
      values << (value == "-" && aCampi(iRacCorr, j).sTipo.startsWith('C') ? "0" : value);
    }
    return values;
  }
  // What a new record begins with: the start values of its lists, else nothing.
  QStringList startValues() const {
    QStringList values;
    for (int j = 0; j < iNumeroCampi(iRacCorr); ++j) {
      const tCampo& campo = aCampi(iRacCorr, j);
      const QString id =
          folder_.found("SELECT ID FROM TAB WHERE \"Default\" <> 0 AND TipoTab = '" +
                        campo.sCodTab + "' AND TipoRac = " + QString::number(campo.iRacTab));
      values << (!id.isEmpty() ? id : campo.sTipo.startsWith('C') ? "0" : "-");
    }
    return values;
  }
  // The counter's record is new, current, and stands ready to be typed into.
  void expectNew(const QStringList& values) const {
    const QString key = folder_.found("SELECT ID FROM CONT");
    EXPECT_EQ(stored("RacID"), key);
    EXPECT_EQ(folder_.found("SELECT TipoRac FROM MAIN WHERE RacID = " + key),
              QString::number(iRacCorr));
    EXPECT_EQ(count(aRaccolte(iRacCorr).sTabDettaglio + " WHERE ID = " + key), 1);
    EXPECT_EQ(inFile(key).join('|'), values.join('|'));
    EXPECT_EQ(grid()->currentIndex().row(), list()->AbsolutePosition());
    EXPECT_TRUE(form()->isVisible());
    EXPECT_EQ(pages()->currentIndex(), 0);
    EXPECT_TRUE(aCampi(iRacCorr, 1).oControllo->widget()->hasFocus());
  }
};

TEST_F(Record, IsMadeByKeyMenuOrButton) {
  ASSERT_TRUE(start());
  const function<void()> ways[] = {
      [] { press(Qt::Key_N, Qt::AltModifier); },
      [] {
        enter("txtVoto");  // on the last page
        press(Qt::Key_N, Qt::AltModifier);
      },
      [] { click(mainControl("cmdAddNew")); },
      [] { trigger("mnuModNuovo"); },
      [] {
        trigger("mnuMaxExtension");
        press(Qt::Key_F12);
      },
  };
  int rows = count("LIB");
  for (const auto& make : ways) {
    const int counter = folder_.found("SELECT ID FROM CONT").toInt();
    make();
    EXPECT_EQ(folder_.found("SELECT ID FROM CONT").toInt(), counter + 1);
    EXPECT_EQ(status(), complete(++rows));
    expectNew(startValues());
    EXPECT_EQ(changesBy([] {
                type("Nuovo");
                leave();
              }),
              QString("MAIN.Titolo=Nuovo"));
    EXPECT_EQ(cell(grid()->currentIndex().row(), "Titolo"), QString("Nuovo"));
  }
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Record, BeginsWithStartValuesOrAsACopy) {
  folder_.outside(
      "UPDATE TAB SET \"Default\" = -1 WHERE ID IN"
      " (SELECT max(ID) FROM TAB WHERE TipoTab IN ('GENERE', 'STATO') GROUP BY TipoTab, TipoRac)");
  ASSERT_TRUE(start());
  for (int collection = 0; collection < kRaccoltePrincipali; ++collection) {
    SCOPED_TRACE(collection);
    if (collection != 0) selectByTab(collection);
    press(Qt::Key_F12);
    expectNew(startValues());
    for (const int row : {2, 22}) {
      goTo(row);
      const QStringList values = inFile(stored("RacID"));
      row == 2 ? press(Qt::Key_F11) : press(Qt::Key_D, Qt::AltModifier);
      expectNew(values);
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
    const QStringList before = fileRow();
    const int rows = count("LIB");
    const QString question = "Attenzione! 36 Vuoi veramente cancellare il record corrente (" +
                             stored("Cod") + ' ' + stored("Titolo") + ")?";
    answer(platform::kNo);
    way();
    EXPECT_EQ(message(), question);
    EXPECT_EQ(fileRow(), before);
    answer(platform::kYes);
    way();
    EXPECT_EQ(status(), complete(rows - 1));
    EXPECT_EQ(count("MAIN WHERE TipoRac = 0 AND RacID = " + key), 0);
    EXPECT_EQ(count("LIB WHERE ID = " + key), 0);
    EXPECT_EQ(boxText("txtCod"), stored("Cod"));
  }
}

TEST_F(Record, IsDeletedWithAllThatAreShown) {
  ASSERT_TRUE(start());
  selectByTab(2);
  aRaccolte(2).sFiltro = " WHERE Anno > 1980";
  DBRefresh();
  const QString shown = "(SELECT RacID FROM MAIN WHERE TipoRac = 2 AND Anno > 1980)";
  const int rest = count("AUD WHERE ID NOT IN " + shown);
  const int children = count("AUDSUB WHERE AudID NOT IN " + shown);
  const int all = count("AUD");
  ASSERT_TRUE(0 < rest && rest < all);
  answer(platform::kNo);
  trigger("mnuCancellaMultiplo");
  EXPECT_EQ(message(), QString("Attenzione! 36 Vuoi veramente cancellare tutti i record "
                               "correntemente visualizzati nell'elenco?"));
  EXPECT_EQ(count("AUD"), all);
  answer(platform::kYes);
  trigger("mnuCancellaMultiplo");
  EXPECT_EQ(status(), QString("Elenco filtrato: 0 records"));
  EXPECT_EQ(count("AUD"), rest);
  EXPECT_EQ(count("MAIN WHERE TipoRac = 2"), rest);
  EXPECT_EQ(count("AUDSUB"), children);
  EXPECT_FALSE(pages()->isEnabled());
  click(mainControl("cmdBar(8)"));
  EXPECT_EQ(status(), complete(rest));
  EXPECT_TRUE(pages()->isEnabled());
}

TEST_F(Record, IsAskedForInAnEmptyList) {
  ASSERT_TRUE(start("modello.tvx"));
  const auto expectEmpty = [] {
    EXPECT_EQ(status(), complete(0));
    for (QWidget* widget :
         {mainControl("cmdCancella"), mainControl("cmdDuplica"), static_cast<QWidget*>(pages())}) {
      EXPECT_FALSE(widget->isEnabled());
    }
    EXPECT_TRUE(mainControl("cmdAddNew")->hasFocus());
  };
  expectEmpty();
  for (const char* name : {"mnuModElimina", "mnuModDuplica", "mnuCancellaMultiplo"}) trigger(name);
  EXPECT_EQ(message(), QString("-"));
  press(Qt::Key_Space);
  EXPECT_TRUE(pages()->isEnabled());
  EXPECT_EQ(folder_.found("SELECT RacID, TipoRac FROM MAIN", "modello.tvx"), QString("1|0"));
  answer(platform::kYes);
  press(Qt::Key_C, Qt::AltModifier);
  expectEmpty();
  selectByTab(3);
  expectEmpty();
}

}  // namespace
}  // namespace tavolix
