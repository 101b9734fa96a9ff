// Filter, find and sort: from the button that is pressed to the painted list, beside one query of
// the plain engine.

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <array>

#include "books.h"
#include "core/modcuore.h"
#include "core/modmain.h"
#include "core/modutil.h"
#include "core/verbi.h"
#include "desk.h"
#include "figures.h"
#include "hits.h"
#include "model/raccolte.h"
#include "platform/data_combo.h"
#include "platform/data_control.h"
#include "platform/form.h"
#include "store/page_checksum.h"
#include "workspace/frmmain.h"

namespace bench {
namespace {

constexpr int kRounds = 9;
constexpr int kPresses = 100;
constexpr int kAudio = 2;
constexpr int kDiscs = 20000;
constexpr double kChildLimit = 1.0;  // seconds
constexpr double kFrame = 1.0 / 60;

const QString kFilter = QStringLiteral("frmFiltro");
const QString kFind = QStringLiteral("frmTrova");
const QString kSort = QStringLiteral("frmOrdina");

template <typename T>
T* control(const QString& form, const QString& name) {
  return platform::forms()[form].control<T>(name);
}

void choose(const QString& form, const QString& name, const QString& text) {
  auto* combo = control<QComboBox>(form, name);
  if (combo->findText(text) < 0) qFatal("%s is not offered", qPrintable(text));
  combo->setCurrentIndex(combo->findText(text));
}

void push(const QString& form, const char* name) {
  control<QPushButton>(form, QString::fromLatin1(name))->click();
}

qint64 listed() {
  return tavolix::dbElenco().Recordset()->RecordCount();
}

// A row of the filter; the value is a text, or the key of a list's value.
struct Row {
  QString connector;
  QString field;
  QString condition;
  QVariant value;
};

void fill(int index, const Row& row) {
  const QString place = QStringLiteral("(%1)").arg(index);
  if (index > 0) choose(kFilter, "cboAltro" + place, row.connector);
  choose(kFilter, "cbpCampo" + place, row.field);
  choose(kFilter, "cboCondizione" + place, row.condition);
  if (row.value.typeId() == QMetaType::QString) {
    control<QLineEdit>(kFilter, "txtValore" + place)->setText(row.value.toString());
  } else {
    auto* combo = control<platform::DataCombo>(kFilter, "cboValore" + place);
    tavolix::ImpostaValoreCombo(*combo, 1, row.value);
  }
}

QAction* command(const char* name) {
  return tavolix::FrmMain().Window()->findChild<QAction*>(QLatin1String(name));
}

double secondsToFilter(const QVector<Row>& rows) {
  std::chrono::steady_clock::time_point start;
  inForm(
      kFilter, [] { command("mnuModFiltra")->trigger(); },
      [&] {
        for (int i = 0; i < rows.size(); ++i) fill(i, rows[i]);
        start = std::chrono::steady_clock::now();
        push(kFilter, "cmdFiltro");
      });
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double secondsOfRaw(const RawFile& file, const QByteArray& condition, const QByteArray& order,
                    qint64* count) {
  return secondsOf([&] {
    RawStatement statement(file, "SELECT MAIN.ID, LIB.ID" + kBooksJoin + condition + order);
    *count = 0;
    while (statement.step()) ++*count;
  });
}

// The list in force read once more, in other words: the store alone.
double secondsToRead() {
  const QString text = tavolix::sTestoElenco(tavolix::aRaccolte(tavolix::iRacCorr)) + u' ';
  return secondsOf([&] {
    const auto rows = tavolix::dbArc->OpenRecordset(text, store::RecordsetType::Dynaset);
    if (rows->RecordCount() != listed()) qFatal("the list differs");
    rows->Close();
  });
}

// The rounds ask for different values: a list that was read before comes back at once.
void filterScene(const QStringList& files, const std::function<QVector<Row>(int part)>& rows,
                 const std::function<QByteArray(int part)>& condition) {
  const RawFile file(files[1]);
  for (int i = -1; i < kRounds; ++i) {
    const int part = i + 1;
    qint64 count = 0;
    const double raw = secondsOfRaw(file, "WHERE " + condition(part) + " ", kBooksOrder, &count);
    const double ours = secondsToFilter(rows(part));
    if (listed() != count || count == 0) qFatal("the two sides list different rows");
    if (i < 0) continue;
    report("ours", ours);
    report("read", secondsToRead());
    report("raw", raw);
  }
}

qint64 author(const QStringList& files, int part) {
  return Hits::author(RawFile(files[1]), part);
}

void containsScene(const QStringList& files) {
  filterScene(
      files,
      [](int part) {
        return QVector<Row>{{{}, "Titolo", "Contiene", Hits::mark(part)}};
      },
      [](int part) { return "MAIN.Titolo LIKE '%" + Hits::mark(part).toUtf8() + "%'"; });
}

void lookupScene(const QStringList& files) {
  filterScene(
      files,
      [&](int part) {
        return QVector<Row>{{{}, "Autore", "Uguale", author(files, part)}};
      },
      [&](int part) { return "MAIN.TABAutoreID = " + QByteArray::number(author(files, part)); });
}

void yearScene(const QStringList& files) {
  filterScene(
      files,
      [](int part) {
        return QVector<Row>{{{}, "Anno", "Uguale", QString::number(Hits::year(part))}};
      },
      [](int part) { return "MAIN.Anno = " + QByteArray::number(Hits::year(part)); });
}

void mixedScene(const QStringList& files) {
  filterScene(
      files,
      [&](int part) {
        return QVector<Row>{{{}, "Titolo", "Contiene", Hits::mark(part)},
                            {"e..", "Anno", "Maggiore", QString("1800")},
                            {"o..", "Autore", "Uguale", author(files, part + 1)},
                            {"e..", "Valutazione", "Minore o uguale", QString("80")},
                            {"o..", "Titolo", "Uguale", QString("La virtu'")}};
      },
      [&](int part) {
        return "((((MAIN.Titolo LIKE '%" + Hits::mark(part).toUtf8() +
               "%') AND MAIN.Anno > 1800) OR MAIN.TABAutoreID = " +
               QByteArray::number(author(files, part + 1)) +
               ") AND MAIN.Voto <= 80) OR MAIN.Titolo = 'La virtu''' COLLATE NOCASE ";
      });
}

void openFind(const QString& field) {
  tavolix::verbi().Cerca();
  choose(kFind, QStringLiteral("cboCampo"), field);
}

double secondsToFind(const QString& text, const char* button) {
  control<QLineEdit>(kFind, QStringLiteral("txtValore"))->setText(text);
  return secondsOf([&] {
    push(kFind, button);
    showAll();
  });
}

// The next one over and over: faster than the screen shows it, and each one seen.
void nextScene(const QStringList& files) {
  const RawFile file(files[1]);
  const auto rows = tavolix::dbElenco().Recordset();
  openFind(QStringLiteral("Titolo"));
  for (int part = 0; part <= kRounds; ++part) {
    control<QLineEdit>(kFind, QStringLiteral("txtValore"))->setText(Hits::mark(part));
    rows->MoveFirst();
    showAll();
    const double ours = secondsOf([&] {
      for (int i = 0; i < kPresses; ++i) push(kFind, "cmdSuccessivo");
      showAll();
    });
    if (rows->AbsolutePosition() < kPresses) qFatal("the search stands still");
    const double shown = secondsOf([&] {
      push(kFind, "cmdSuccessivo");
      showAll();
    });
    qint64 count = 0;
    const QByteArray like = "WHERE MAIN.Titolo LIKE '%" + Hits::mark(part).toUtf8() + "%' ";
    const double raw = secondsOfRaw(file, like, kBooksOrder, &count);
    if (part == 0) continue;
    report("ours", ours);
    report("raw", raw);
    report("shown", shown);
  }
}

void lastScene(const QStringList&) {
  openFind(QStringLiteral("Titolo"));
  for (int i = 0; i < Hits::kWords; ++i) {
    const double first = secondsToFind(Hits::firstWord(i), "CSCmdBtn1");
    if (tavolix::dbElenco().Recordset()->AbsolutePosition() != 0) qFatal("not the first");
    tavolix::dbElenco().Recordset()->Move(1);
    showAll();
    const double last = secondsToFind(Hits::lastWord(i), "CSCmdBtn1");
    if (tavolix::dbElenco().Recordset()->AbsolutePosition() != listed() - 1) qFatal("not the last");
    if (i == 0) continue;
    report("ours", last);
    report("raw", first);
  }
}

struct Key {
  const char* field;
  const char* plain;
};

double secondsToSort(const std::array<Key, 3>& keys) {
  std::chrono::steady_clock::time_point start;
  inForm(
      kSort, [] { command("mnuOrdina")->trigger(); },
      [&] {
        for (std::size_t i = 0; i < keys.size(); ++i) {
          choose(kSort, QStringLiteral("cboCampo(%1)").arg(i), QString::fromLatin1(keys[i].field));
        }
        start = std::chrono::steady_clock::now();
        push(kSort, "cmdElabora");
      });
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The three columns in each order.
void sortScene(const QStringList& files) {
  const RawFile file(files[1]);
  std::array<Key, 3> keys = {{{"Anno", "MAIN.Anno"},
                              {"Autore", "TAB.\"Desc\" COLLATE NOCASE"},
                              {"Titolo", "MAIN.Titolo COLLATE NOCASE"}}};
  const auto less = [](const Key& a, const Key& b) { return qstrcmp(a.field, b.field) < 0; };
  do {
    QByteArray order;
    for (const Key& key : keys) order += (order.isEmpty() ? "" : ", ") + QByteArray(key.plain);
    qint64 count = 0;
    report("raw", secondsOfRaw(file, "LEFT JOIN TAB ON MAIN.TABAutoreID = TAB.ID ",
                               "ORDER BY " + order, &count));
    report("ours", secondsToSort(keys));
  } while (std::next_permutation(keys.begin(), keys.end(), less));
}

// Discs up to a number; none of the pieces holds what is searched for.
void childScene(const QStringList&) {
  if (listed() < kDiscs) qFatal("too few discs");
  openFind(QStringLiteral("Titolo"));
  control<QAbstractButton>(kFind, QStringLiteral("optSubRac"))->click();
  choose(kFind, QStringLiteral("cboCampo"), QStringLiteral("Titolo"));
  for (int i = 0; i < kRounds; ++i) {
    report("time", secondsToFind(QStringLiteral("nessuno %1").arg(i), "CSCmdBtn1"));
  }
}

QString discs(const Ground& ground) {
  const QString path = ground.copy(QStringLiteral("dischi.tvx"));
  RawFile(path, store::checkedFileLayer())
      .run(
          "CREATE TEMP TABLE n AS WITH RECURSIVE n(i) AS (SELECT max(ID) + 1 FROM AUD UNION ALL "
          "SELECT i + 1 FROM n LIMIT 20000 - (SELECT count(*) FROM AUD)) SELECT i FROM n;"
          "INSERT INTO AUD (ID) SELECT i FROM n;"
          "INSERT INTO MAIN (RacID, TipoRac) SELECT i, 2 FROM n");
  return path;
}

QVector<Reading> childFigure(const Ground& ground) {
  const QString name = QStringLiteral("trova_figli");
  return {{name, median(ground.play(name, {discs(ground)}, kAudio)["time"]), kChildLimit}};
}

QVector<Reading> nextFigure(const Ground& ground) {
  const QString name = QStringLiteral("trova_100");
  const Found found = ground.play(name, Hits::archives(ground));
  return {compared(name, sidesOf(found), 1.5),
          {QStringLiteral("trova_passo"), median(found["shown"]), kFrame}};
}

// Where an index finds the rows, painting them takes longer than finding them: what is compared
// is the store's part.
Figure indexed(const char* name, const Scene& scene) {
  const QString title = QString::fromLatin1(name);
  return {title,
          [=](const Ground& ground) {
            const Found found = ground.play(title, Hits::archives(ground));
            return QVector<Reading>{compared(title, sidesOf(found, "read"), 1.5),
                                    {title + "_dip", median(found["ours"]), kFrame}};
          },
          scene};
}

Figure query(const char* name, const Scene& scene, double limit) {
  const QString title = QString::fromLatin1(name);
  return {title,
          [=](const Ground& ground) {
            return QVector<Reading>{
                compared(title, sidesOf(ground.play(title, Hits::archives(ground))), limit)};
          },
          scene};
}

}  // namespace

QVector<Figure> queryFigures() {
  return {
      query("filtro_testo", containsScene, 1.2),
      indexed("filtro_lista", lookupScene),
      indexed("filtro_anno", yearScene),
      query("filtro_cinque", mixedScene, 1.2),
      {QStringLiteral("trova_100"), nextFigure, nextScene},
      query("trova_ultimo", lastScene, 1.2),
      query("ordina_tre", sortScene, 1.0),
      {QStringLiteral("trova_figli"), childFigure, childScene},
  };
}

}  // namespace bench
