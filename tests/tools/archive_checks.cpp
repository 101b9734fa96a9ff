#include "tools/archive_checks.h"

#include <gtest/gtest.h>

#include "core/campi.h"
#include "core/modutil.h"
#include "core/raccolte.h"

namespace tavolix::builder {
namespace {

void expectNone(store::Database& database, const QString& query) {
  EXPECT_EQ(countOf(database, query), 0) << qPrintable(query);
}

void expectRecordsInTheirLists(store::Database& database) {
  expectNone(database, "SELECT RacID FROM MAIN GROUP BY RacID HAVING Count(*) > 1");
  expectNone(database, "SELECT RacID FROM MAIN, CONT WHERE RacID > CONT.ID");
  for (int i = 0; i < kRaccoltePrincipali; ++i) {
    const tRaccolta& collection = aRaccolte(i);
    const auto records = countOf(database, QString("SELECT * FROM MAIN WHERE TipoRac=%1").arg(i));
    EXPECT_EQ(countOf(database, collection.sQuery), records) << i;
    EXPECT_EQ(countOf(database, collection.sTabDettaglio), records) << i;
    if (collection.iSottoRaccolta < 0) continue;
    const tRaccolta& child = aRaccolte(collection.iSottoRaccolta);
    expectNone(database, QString("SELECT c.ID FROM %1 AS c LEFT JOIN %2 AS p ON c.%3 = p.%4 "
                                 "WHERE p.%4 Is Null")
                             .arg(child.sTabPrincipale, collection.sTabDettaglio, child.sCampoPadre,
                                  collection.sCampoID));
  }
}

void expectChoicesInTheirLists(store::Database& database) {
  const QString defaults = "SELECT TipoTab, TipoRac FROM TAB WHERE [Default] = True";
  EXPECT_GT(countOf(database, defaults), 0);
  expectNone(database, defaults + " GROUP BY TipoTab, TipoRac HAVING Count(*) > 1");
  const QString strangers =
      "SELECT m.ID FROM %1 AS m LEFT JOIN TAB AS t ON m.%2 = t.ID WHERE m.%2 <> 0 AND %3 "
      "(t.ID Is Null OR t.TipoTab <> %4 OR t.TipoRac <> %5)";
  for (int i = 0; i < kRaccolte; ++i) {
    for (int j = 0; j < iNumeroCampi(i); ++j) {
      const tCampo& campo = aCampi(i, j);
      if (campo.sTipo != CBO) continue;
      const QString table = sCampoQualificato(i, j).section('.', 0, 0);
      const QString own = table == "MAIN" ? QString("m.TipoRac = %1 AND").arg(i) : QString();
      expectNone(
          database,
          strangers.arg(table, campo.sCampoDB, own, sApici(campo.sCodTab)).arg(campo.iRacTab));
    }
  }
}

}  // namespace

QString sourceData() {
  return qEnvironmentVariable("TAVOLIX_SOURCE") + "/data";
}

qint64 countOf(store::Database& database, const QString& source) {
  return database.OpenRecordset(source, store::RecordsetType::Snapshot)->RecordCount();
}

QVector<QVariantList> rowsOf(store::Database& database, const QString& source,
                             const QStringList& columns) {
  const auto rows = database.OpenRecordset(source, store::RecordsetType::Snapshot);
  QVector<QVariantList> all(rows->RecordCount());
  for (const QString& column : columns) {
    const int field = rows->FieldIndex(column);
    for (qint64 i = 0; i < all.size(); ++i) all[i] << rows->ValueAt(i, field);
  }
  return all;
}

void expectConsistent(store::Database& database) {
  EXPECT_TRUE(database.IntegrityCheck());
  expectRecordsInTheirLists(database);
  expectChoicesInTheirLists(database);
}

}  // namespace tavolix::builder
