#include "tools/archive_checks.h"

#include <gtest/gtest.h>

#include <QHash>
#include <QSet>

#include "core/campi.h"
#include "core/raccolte.h"

namespace tavolix::builder {
namespace {

void expectRecordsInTheirLists(store::Database& database) {
  QHash<int, qint64> records;
  QSet<qint64> keys;
  const qint64 counter = rowsOf(database, "CONT", {"ID"}).first().first().toLongLong();
  for (const QVariantList& row : rowsOf(database, "MAIN", {"TipoRac", "RacID"})) {
    const qint64 key = row[1].toLongLong();
    EXPECT_TRUE(key <= counter && !keys.contains(key)) << key;
    keys << key;
    ++records[row[0].toInt()];
  }
  for (int i = 0; i < kRaccoltePrincipali; ++i) {
    EXPECT_EQ(countOf(database, aRaccolte(i).sQuery), records[i]) << i;
    EXPECT_EQ(countOf(database, aRaccolte(i).sTabDettaglio), records[i]) << i;
  }
}

void expectChildrenHaveParents(store::Database& database) {
  for (int i = 0; i < kRaccoltePrincipali; ++i) {
    if (aRaccolte(i).iSottoRaccolta < 0) continue;
    const tRaccolta& child = aRaccolte(aRaccolte(i).iSottoRaccolta);
    const auto parents = rowsOf(database, aRaccolte(i).sTabDettaglio, {aRaccolte(i).sCampoID});
    for (const auto& row : rowsOf(database, child.sTabPrincipale, {child.sCampoPadre})) {
      ASSERT_TRUE(parents.contains(row)) << qPrintable(child.sNome);
    }
  }
}

void expectChoicesInTheirLists(store::Database& database) {
  QHash<qint64, QString> lists;  // of each key
  QSet<QString> withDefault;
  for (const auto& row : rowsOf(database, "TAB", {"ID", "TipoTab", "TipoRac", "Default"})) {
    const QString list = row[1].toString() + row[2].toString();
    lists[row[0].toLongLong()] = list;
    EXPECT_FALSE(row[3] != 0 && withDefault.contains(list)) << qPrintable(list);
    if (row[3] != 0) withDefault << list;
  }
  EXPECT_FALSE(withDefault.isEmpty());
  for (int i = 0; i < kRaccolte; ++i) {
    QStringList columns;
    for (int j = 0; j < iNumeroCampi(i); ++j) columns << aCampi(i, j).sCampoDB;
    for (const QVariantList& record : rowsOf(database, aRaccolte(i).sQuery, columns)) {
      for (int j = 0; j < iNumeroCampi(i); ++j) {
        const tCampo& campo = aCampi(i, j);
        if (campo.sTipo != CBO || record[j] == 0) continue;
        ASSERT_EQ(lists[record[j].toLongLong()], campo.sCodTab + QString::number(campo.iRacTab));
      }
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
  expectChildrenHaveParents(database);
  expectChoicesInTheirLists(database);
}

}  // namespace tavolix::builder
