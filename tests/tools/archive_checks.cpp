#include "tools/archive_checks.h"

#include <gtest/gtest.h>

#include "core/campi.h"
#include "core/raccolte.h"

namespace tavolix::builder {
namespace {

QSet<qint64> keysOf(store::Database& database, const QString& table, const QString& column) {
  QSet<qint64> keys;
  for (const QVariant& key : valuesOf(database, table, column)) keys.insert(key.toLongLong());
  return keys;
}

// The lists that hold each row of TAB, as "CODE:COLLECTION".
QHash<qint64, QString> listOfKey(store::Database& database) {
  QHash<qint64, QString> lists;
  const QStringList columns = {QStringLiteral("ID"), QStringLiteral("TipoTab"),
                               QStringLiteral("TipoRac")};
  for (const QVariantList& row : rowsOf(database, QStringLiteral("TAB"), columns)) {
    lists.insert(row[0].toLongLong(), row[1].toString() + u':' + row[2].toString());
  }
  return lists;
}

}  // namespace

QString sourceData() {
  return qEnvironmentVariable("TAVOLIX_SOURCE") + QStringLiteral("/data");
}

qint64 countOf(store::Database& database, const QString& source) {
  return database.OpenRecordset(source, store::RecordsetType::Snapshot)->RecordCount();
}

QVector<QVariantList> rowsOf(store::Database& database, const QString& source,
                             const QStringList& columns) {
  const auto rows = database.OpenRecordset(source, store::RecordsetType::Snapshot);
  QVector<int> fields;
  for (const QString& column : columns) fields.append(rows->FieldIndex(column));
  QVector<QVariantList> all;
  for (qint64 i = 0; i < rows->RecordCount(); ++i) {
    QVariantList values;
    for (const int field : fields) values.append(rows->ValueAt(i, field));
    all.append(values);
  }
  return all;
}

QVector<QVariantList> recordsOf(store::Database& database, int collection) {
  QStringList columns;
  for (int j = 0; j < iNumeroCampi(collection); ++j) {
    columns.append(aCampi(collection, j).sCampoDB);
  }
  return rowsOf(database, aRaccolte(collection).sQuery, columns);
}

QVariantList valuesOf(store::Database& database, const QString& source, const QString& column) {
  QVariantList values;
  for (const QVariantList& row : rowsOf(database, source, {column})) values.append(row[0]);
  return values;
}

void expectEveryRecordInItsList(store::Database& database) {
  QHash<int, qint64> records;
  const QString main = QStringLiteral("MAIN");
  for (const QVariant& collection : valuesOf(database, main, QStringLiteral("TipoRac"))) {
    ++records[collection.toInt()];
  }
  for (int i = 0; i < kRaccoltePrincipali; ++i) {
    EXPECT_EQ(countOf(database, aRaccolte(i).sQuery), records.take(i)) << i;
    EXPECT_EQ(countOf(database, aRaccolte(i).sQuery), countOf(database, aRaccolte(i).sTabDettaglio))
        << i;
  }
  EXPECT_TRUE(records.isEmpty());
}

void expectChildrenHaveParents(store::Database& database) {
  for (int i = 0; i < kRaccoltePrincipali; ++i) {
    if (aRaccolte(i).iSottoRaccolta < 0) continue;
    const tRaccolta& child = aRaccolte(aRaccolte(i).iSottoRaccolta);
    const QSet<qint64> parents =
        keysOf(database, aRaccolte(i).sTabDettaglio, aRaccolte(i).sCampoID);
    for (const QVariant& parent : valuesOf(database, child.sTabPrincipale, child.sCampoPadre)) {
      ASSERT_TRUE(parents.contains(parent.toLongLong())) << qPrintable(child.sNome);
    }
  }
}

void expectLookupsInTheirLists(store::Database& database) {
  const QHash<qint64, QString> lists = listOfKey(database);
  for (int i = 0; i < kRaccolte; ++i) {
    for (const QVariantList& record : recordsOf(database, i)) {
      for (int j = 0; j < iNumeroCampi(i); ++j) {
        const tCampo& campo = aCampi(i, j);
        if (campo.sTipo != QLatin1String(CBO) || record[j].toLongLong() == 0) continue;
        ASSERT_EQ(lists.value(record[j].toLongLong()),
                  campo.sCodTab + u':' + QString::number(campo.iRacTab));
      }
    }
  }
}

void expectCounterCoversKeys(store::Database& database) {
  const QVariantList counter = valuesOf(database, QStringLiteral("CONT"), QStringLiteral("ID"));
  ASSERT_EQ(counter.size(), 1);
  const QVariantList used = valuesOf(database, QStringLiteral("MAIN"), QStringLiteral("RacID"));
  QSet<qint64> keys;
  for (const QVariant& key : used) {
    EXPECT_LE(key.toLongLong(), counter[0].toLongLong());
    EXPECT_GT(key.toLongLong(), 0);
    keys.insert(key.toLongLong());
  }
  EXPECT_EQ(keys.size(), used.size());
}

void expectOneDefaultAList(store::Database& database) {
  QSet<QString> lists;
  const QStringList columns = {QStringLiteral("TipoTab"), QStringLiteral("TipoRac"),
                               QStringLiteral("Default")};
  for (const QVariantList& row : rowsOf(database, QStringLiteral("TAB"), columns)) {
    ASSERT_TRUE(row[2] == -1 || row[2] == 0);
    if (row[2] == 0) continue;
    const QString list = row[0].toString() + row[1].toString();
    EXPECT_FALSE(lists.contains(list)) << qPrintable(list);
    lists.insert(list);
  }
  EXPECT_FALSE(lists.isEmpty());
}

}  // namespace tavolix::builder
