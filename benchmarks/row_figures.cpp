// Rows without windows: key sets in the stored and in other orders, and the reading of rows.

#include <benchmark/benchmark.h>

#include <QStringList>
#include <random>

#include "books.h"
#include "figures.h"
#include "store/database.h"

namespace bench {
namespace {

constexpr const char* kBooks = "Q_LIB";
constexpr int kRounds = 9;
constexpr int kPages = 20;  // in a sample
constexpr int kRowsOfPage = 50;
constexpr quint32 kSeed = 1998;

// A list that was read before comes back at once: each time it is asked for in other words.
double openTime(store::Database& database, const QString& source) {
  static int times = 0;
  const QString text = source + QString(++times, u' ');
  return secondsOf([&] {
    const auto rows = database.OpenRecordset(text, store::RecordsetType::Dynaset);
    benchmark::DoNotOptimize(rows->RecordCount());
    rows->Close();
  });
}

double rawKeysTime(const RawFile& file, const QByteArray& order) {
  return secondsOf([&] {
    RawStatement statement(file, "SELECT MAIN.ID, LIB.ID" + order);
    qint64 sum = 0;
    while (statement.step()) sum += statement.number(0) ^ statement.number(1);
    benchmark::DoNotOptimize(sum);
  });
}

QVector<Reading> keyFigure(const Ground& ground, const QString& name, const QString& source,
                           const QByteArray& order, double limit) {
  const store::DatabasePtr database = store::OpenDatabase(ground.archive());
  const RawFile file(ground.archive());
  const Sides sides = inTurn(
      kRounds, [&] { return openTime(*database, source); },
      [&] { return rawKeysTime(file, kBooksJoin + order); });
  return {compared(name, sides, limit)};
}

Figure ordered(const char* name, const char* field, const QByteArray& order) {
  const QString source = QStringLiteral("SELECT * FROM %1 ORDER BY %2")
                             .arg(QLatin1String(kBooks), QLatin1String(field));
  const QString title = QString::fromLatin1(name);
  return {title,
          [=](const Ground& ground) { return keyFigure(ground, title, source, order, 1.0); },
          {}};
}

struct Page {
  QVector<int> fields;  // of the recordset
  QByteArray sql;       // the same of one row, by the keys of MAIN and LIB
};

// The columns that the list of books shows.
QStringList listColumns(store::Database& database) {
  const auto config = database.OpenRecordset(
      QStringLiteral("SELECT * FROM GRDCONFIG WHERE NomeQuery = '%1'").arg(QLatin1String(kBooks)),
      store::RecordsetType::Snapshot);
  QStringList names;
  for (qint64 i = 0; i < config->RecordCount(); ++i) {
    names.append(config->ValueAt(i, config->FieldIndex(QStringLiteral("NomeCampo"))).toString());
  }
  config->Close();
  return names;
}

// A column as the plain engine reads it: of MAIN or LIB, or the text of a list by its key.
Page pageOf(const store::Recordset& rows, const QStringList& names) {
  const auto qualified = [](const store::FieldInfo& info) {
    return (info.table + u'.' + info.column).toUtf8();
  };
  Page page;
  QByteArray columns;
  QByteArray joins;
  for (const QString& name : names) {
    const int field = rows.FieldIndex(name);
    const store::FieldInfo& info = rows.Fields()[field];
    QByteArray column = qualified(info);
    if (!info.lookupKey.isEmpty()) {
      const QByteArray list = "T" + QByteArray::number(field);
      const store::FieldInfo& key = rows.Fields()[rows.FieldIndex(info.lookupKey)];
      joins += " LEFT JOIN TAB " + list + " ON " + list + ".ID = " + qualified(key);
      column = list + ".\"Desc\"";
    }
    columns += (columns.isEmpty() ? "" : ", ") + column;
    page.fields.append(field);
  }
  page.sql = "SELECT " + columns + kBooksJoin + joins + " WHERE MAIN.ID = ? AND LIB.ID = ?";
  return page;
}

void readPage(const store::Recordset& rows, const Page& page, qint64 first) {
  for (qint64 row = first; row < first + kRowsOfPage; ++row) {
    for (const int field : page.fields) benchmark::DoNotOptimize(rows.ValueAt(row, field));
  }
}

void readRawPage(RawFile& file, RawStatement& statement, const Page& page, const Keys& keys,
                 qint64 first) {
  file.run("BEGIN");
  for (qint64 row = first; row < first + kRowsOfPage; ++row) {
    statement.bind(1, keys[row].first);
    statement.bind(2, keys[row].second);
    if (!statement.step()) qFatal("a row is missing");
    for (int i = 0; i < page.fields.size(); ++i) benchmark::DoNotOptimize(statement.text(i));
    statement.reset();
  }
  file.run("COMMIT");
}

// Both sides go to the same random places, one sample behind the other.
QVector<Reading> pageFigure(const Ground& ground) {
  const store::DatabasePtr database = store::OpenDatabase(ground.archive());
  const auto rows =
      database->OpenRecordset(QString::fromLatin1(kBooks), store::RecordsetType::Dynaset);
  const Page page = pageOf(*rows, listColumns(*database));
  RawFile file(ground.archive());
  RawStatement statement(file, page.sql);
  const Keys keys = firstBooks(file, -1);
  if (keys.size() != rows->RecordCount()) qFatal("the two sides list different rows");
  std::mt19937 ours(kSeed);
  std::mt19937 raw(kSeed);
  const auto place = [&](std::mt19937& random) {
    return static_cast<qint64>(random()) % (rows->RecordCount() - kRowsOfPage);
  };
  const auto pages = [&](std::mt19937& random, auto&& read) {
    return secondsOf([&] {
             for (int i = 0; i < kPages; ++i) read(place(random));
           }) /
           kPages;
  };
  const Sides sides = inTurn(
      2 * kRounds, [&] { return pages(ours, [&](qint64 at) { readPage(*rows, page, at); }); },
      [&] { return pages(raw, [&](qint64 at) { readRawPage(file, statement, page, keys, at); }); });
  return {compared(QStringLiteral("pagina"), sides, 3.0)};
}

}  // namespace

QVector<Figure> rowFigures() {
  const QString chiavi = QStringLiteral("chiavi");
  return {
      {chiavi,
       [=](const Ground& ground) {
         return keyFigure(ground, chiavi, QString::fromLatin1(kBooks), kBooksOrder, 1.5);
       },
       {}},
      ordered("ordine_titolo", "Titolo", "ORDER BY MAIN.Titolo COLLATE NOCASE"),
      ordered("ordine_autore", "Autore",
              "LEFT JOIN TAB ON MAIN.TABAutoreID = TAB.ID ORDER BY TAB.\"Desc\" COLLATE NOCASE"),
      ordered("ordine_anno", "Anno", "ORDER BY MAIN.Anno"),
      {QStringLiteral("pagina"), pageFigure, {}},
  };
}

}  // namespace bench
