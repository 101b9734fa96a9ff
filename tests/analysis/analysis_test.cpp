// Both analyses against plain SQL over the file.

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>
#include <QRandomGenerator>
#include <QTableView>
#include <cmath>

#include "core/verbi.h"
#include "platform/data_combo.h"
#include "workspace/desk.h"

namespace tavolix {
namespace {

// Of each analysis. Each of them writes its queries to the disk.
constexpr int kComputations = 24;

// A number as the grid shows it.
QString grouped(double value) {
  QString digits = QString::number(static_cast<qint64>(std::abs(std::round(value))));
  for (qsizetype at = digits.size() - 3; at > 0; at -= 3) digits.insert(at, u'.');
  return value <= -0.5 ? '-' + digits : digits;
}
QString percent(double part, double whole) {
  if (whole == 0) return {};
  return QString::number(std::round(part / whole * 1000) / 10, 'f', 1).replace(u'.', u',') + u'%';
}

struct ListRow {
  QString value;
  bool none = false;  // Null
  int collection = 0;
  QString code, title;
  double worth = 0;
};

class Analyses : public Desk {
 protected:
  Analyses() {
    // Values that are Null, empty, of no list, no whole numbers, negative.
    folder_.outside(
        "INSERT INTO TAB (ID, TipoTab, TipoRac, \"Desc\") VALUES (90001, 'PROPRIETA', -1, ''),"
        " (90002, 'PROPRIETA', -1, 'L''amica d''Elsa'), (90003, 'STATO', -1, 'Da rilegare'),"
        " (90004, 'POS', -1, 'Cantina grande'), (90005, 'DOVEACQ', -1, 'Fiera di paese');"
        "UPDATE MAIN SET TabProprietaID = CASE RacID % 4 WHEN 0 THEN NULL WHEN 1 THEN 90001"
        " WHEN 2 THEN 90002 ELSE TabProprietaID END, TabStatoID = CASE RacID % 3 WHEN 0 THEN 90003"
        " ELSE TabStatoID END, TabPosID = CASE RacID % 5 WHEN 0 THEN 90004 ELSE TabPosID END,"
        " TabDoveAcqID = CASE RacID % 2 WHEN 0 THEN 90005 ELSE TabDoveAcqID END,"
        " Valore = CASE RacID % 6 WHEN 0 THEN NULL WHEN 1 THEN 0 WHEN 2 THEN 1234.5"
        " WHEN 3 THEN -20 ELSE RacID * 1000 END");
  }

  static QTableView* result(const char* form) {
    return platform::forms()[form].control<QTableView>("grd");
  }
  static QStringList rows(const char* form) {
    const QAbstractItemModel* model = result(form)->model();
    QStringList all;
    for (int row = 0; row < model->rowCount(); ++row) {
      QStringList cells;
      for (int i = 0; i < model->columnCount(); ++i)
        cells << model->index(row, i).data().toString();
      all << cells.join('|');
    }
    return all;
  }
  static QComboBox* combo(const char* form) {
    return platform::forms()[form].control<QComboBox>("cboCampo");
  }
  static void press(const char* form, const char* button) {
    platform::forms()[form].control<QAbstractButton>(button)->click();
  }
  static bool enabled(const char* form, const char* button) {
    return control(form, button)->isEnabled();
  }
  int draw(int below) { return static_cast<int>(chance_.bounded(below)); }

  // All records that the list may hold, in its order.
  QList<ListRow> records(const QString& column) const {
    const QString found = folder_.found(
        "SELECT t.\"Desc\" IS NULL, coalesce(t.\"Desc\", ''), m.TipoRac, coalesce(m.Cod, ''),"
        " coalesce(m.Titolo, ''), coalesce(m.Valore, 0) FROM MAIN m LEFT JOIN TAB t ON t.ID = m." +
        column + " WHERE m.TipoRac < 7");
    QList<ListRow> all;
    for (const QString& line : found.split('\n')) {
      const QStringList f = line.split('|');
      all.append({f[1], f[0] == "1", f[2].toInt(), f[3], f[4], f[5].toDouble()});
    }
    return all;
  }

  void computeList();

  QRandomGenerator chance_{20};
};

const char* kNames[] = {"Libri", "Riviste", "Audio", "Video", "Software", "Medicinali", "Oggetti"};

// One computation of the multi-collection list, drawn at random.
void Analyses::computeList() {
  const char* const form = "frmInfoAcc";
  const char* columns[] = {"TabProprietaID", "TabStatoID", "TabDoveAcqID", "TabPosID"};
  const int attribute = draw(4);
  combo(form)->setCurrentIndex(attribute);
  bool left[7];
  for (int i = 0; i < 7; ++i) {
    left[i] = draw(3) == 0;
    platform::forms()[form].control<QCheckBox>(QString("chkRac(%1)").arg(i))->setChecked(!left[i]);
  }
  const QList<ListRow> before = records(columns[attribute]);
  const bool one = draw(2) == 0;
  const QString wanted =
      one && draw(3) > 0 ? before[draw(static_cast<int>(before.size()))].value : "";
  press(form, one ? "optUno" : "optTutti");
  if (one) platform::forms()[form].control<platform::DataCombo>("cboFiltro")->SelectText(wanted);
  press(form, "cmdElabora");

  QStringList expected;
  double total = 0;
  for (const ListRow& row : records(columns[attribute])) {
    const bool out = left[row.collection];
    bool listed = !out;
    if (one && wanted.isEmpty()) listed = (!row.none && row.value.isEmpty()) || (row.none && !out);
    if (one && !wanted.isEmpty()) listed = row.value == wanted && !out;
    if (!listed) continue;
    total += row.worth;
    expected << QStringList{row.value, kNames[row.collection], row.code, row.title,
                            row.worth == 0 ? "" : grouped(row.worth)}
                    .join('|');
  }
  // The grid's rows with what stands in the first row of their group alone.
  QStringList shown;
  QString value("\x7f"), collection;
  QStringList groups;
  for (const QString& line : rows(form)) {
    QStringList cells = line.split('|');
    if (line == "||||") break;
    // A blank value can only begin a list, and begins its group with a collection.
    const bool begins = !cells[0].isEmpty() || value == "\x7f";
    if (begins) value = cells[0];
    ASSERT_FALSE(begins && cells[1].isEmpty());
    if (!cells[1].isEmpty()) {
      collection = cells[1];
      // Null and the empty text are two groups with one face.
      if (!value.isEmpty())
        groups << value + '/' + QString::number(std::find(kNames, kNames + 7, collection) - kNames);
    }
    shown << QStringList{value, collection, cells[2], cells[3], cells[4]}.join('|');
  }
  EXPECT_EQ(groups.removeDuplicates(), 0) << "a group comes twice";
  QStringList values;
  for (const QString& group : groups) {
    if (values.isEmpty() || values.last() != group.section('/', 0, -2)) {
      values << group.section('/', 0, -2);
    }
  }
  for (int i = 1; i < values.size(); ++i) {
    EXPECT_LT(folder_
                  .found("SELECT '" + QString(values[i - 1]).replace("'", "''") +
                         "' COLLATE ITALIANO >= '" + QString(values[i]).replace("'", "''") + "'")
                  .toInt(),
              1);
  }
  const QStringList all = rows(form);
  if (total != 0) {
    EXPECT_EQ(all.last(), "|||T O T A L E|" + grouped(total));
    EXPECT_EQ(all.size(), shown.size() + 2);
  } else {
    EXPECT_EQ(all.size(), shown.size());
  }
  expected.sort();
  shown.sort();
  EXPECT_EQ(shown, expected);
  EXPECT_EQ(enabled(form, "cmdStampa"), !expected.isEmpty());
}

TEST_F(Analyses, ListsAsPlainSqlDoes) {
  ASSERT_TRUE(start());
  inForm(
      "frmInfoAcc", [] { trigger("mnuAnalisiInfoAcc"); },
      [&] {
        EXPECT_FALSE(enabled("frmInfoAcc", "cmdStampa"));
        for (int i = 0; i < kComputations && !HasFailure(); ++i) computeList();
        result("frmInfoAcc")->setFocus();
        Desk::press("Ctrl+A Ctrl+C");
        EXPECT_EQ(QApplication::clipboard()->text().replace('\t', '|').trimmed(),
                  rows("frmInfoAcc").join('\n').trimmed());
        Desk::press("Return");
        EXPECT_TRUE(platform::forms()["frmInfoAcc"].IsVisible());
      });
}

TEST_F(Analyses, GroupsAsPlainSqlDoes) {
  ASSERT_TRUE(start());
  const char* const form = "frmGruppi";
  for (int collection = 0; collection < 8; ++collection) {
    selectByTab(collection);
    ASSERT_EQ(iRacCorr, collection);
    const tRaccolta& entry = aRaccolte(collection);
    inForm(
        form, [] { trigger("mnuAnalisiRaggruppamenti"); },
        [&] {
          EXPECT_GT(rows(form).size(), 2) << "the form opens computed";
          for (int i = 0; i < kComputations / 8 && !HasFailure(); ++i) {
            combo(form)->setCurrentIndex(draw(combo(form)->count()));
            const tCampo& field = aCampi(collection, combo(form)->currentData().toInt());
            ASSERT_FALSE(field.sCampoDB.isEmpty())
                << collection << ' ' << qPrintable(combo(form)->currentText());
            const bool filtered = draw(2) == 0;
            aRaccolte(collection).sFiltro = draw(2) == 0 ? "" : " WHERE MAIN.Valore > 500";
            press(form, filtered ? "optSeleRecord" : "optTuttiRecord");
            press(form, "cmdElabora");
            const bool narrow = filtered && !entry.sFiltro.isEmpty();
            const QStringList found =
                folder_
                    .found(
                        "SELECT coalesce(t.\"Desc\", ''), count(*), coalesce(sum(m.Valore), 0)"
                        " FROM MAIN m JOIN " +
                        entry.sTabDettaglio + " d ON d.ID = m.RacID LEFT JOIN TAB t ON t.ID = " +
                        (field.bPrincipale ? "m." : "d.") + field.sCampoDB + " WHERE m.TipoRac = " +
                        QString::number(collection) + (narrow ? " AND m.Valore > 500" : "") +
                        " GROUP BY " + (field.bPrincipale ? "m." : "d.") + field.sCampoDB +
                        " ORDER BY t.\"Desc\" COLLATE ITALIANO")
                    .split('\n', Qt::SkipEmptyParts);
            double quantity = 0, worth = 0;
            for (const QString& line : found) {
              quantity += line.section('|', -2, -2).toDouble();
              worth += line.section('|', -1).toDouble();
            }
            QStringList expected;
            for (const QString& line : found) {
              const double n = line.section('|', -2, -2).toDouble();
              const double v = line.section('|', -1).toDouble();
              expected << QStringList{line.section('|', 0, -3), grouped(n), percent(n, quantity),
                                      grouped(v), percent(v, worth)}
                              .join('|');
            }
            if (!found.isEmpty()) {
              expected << "||||"
                       << "T O T A L E|" + grouped(quantity) + "|100%|" + grouped(worth) + "|100%";
            }
            EXPECT_EQ(rows(form), expected) << qPrintable(field.sTitolo) << filtered;
            EXPECT_EQ(enabled(form, "cmdStampa"), !expected.isEmpty());
          }
          press(form, "cmdEsci");
        });
    aRaccolte(collection).sFiltro.clear();
  }
}

}  // namespace
}  // namespace tavolix
