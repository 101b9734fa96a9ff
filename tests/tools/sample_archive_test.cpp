#include "tools/sample_archive.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "tools/archive_checks.h"
#include "tools/archive_template.h"

namespace tavolix::builder {
namespace {

class SampleArchive : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder_ = new QTemporaryDir;
    const QString path = folder_->filePath(QStringLiteral("esempio.tvx"));
    buildArchive(sourceData(), path, [](store::Database& database) {
      addSampleRecords(database, sourceData() + QStringLiteral("/sample"));
    });
    database_ = store::OpenDatabase(path);
  }
  static void TearDownTestSuite() {
    database_.reset();
    delete folder_;
  }

  static QVariant valueOf(const char* query, const char* code, const char* column) {
    const auto rows =
        database_->OpenRecordset(QString::fromLatin1(query), store::RecordsetType::Snapshot);
    rows->FindFirst(QStringLiteral("Cod = '%1'").arg(QLatin1String(code)));
    return rows->NoMatch() ? QVariant() : rows->Value(QString::fromLatin1(column));
  }

  static QTemporaryDir* folder_;
  static store::DatabasePtr database_;
};

QTemporaryDir* SampleArchive::folder_ = nullptr;
store::DatabasePtr SampleArchive::database_;

TEST_F(SampleArchive, HasEnoughRecordsInEveryCollection) {
  const std::pair<const char*, int> least[] = {
      {"Q_LIB", 300},    {"Q_RIV", 60},     {"Q_AUD", 100},   {"Q_VID", 150},
      {"Q_COM", 60},     {"Q_MED", 40},     {"Q_OGG", 80},    {"Q_PER", 60},
      {"Q_RIVSUB", 200}, {"Q_AUDSUB", 900}, {"Q_PERSUB", 80},
  };
  for (const auto& [query, count] : least) {
    EXPECT_GE(countOf(*database_, QString::fromLatin1(query)), count) << query;
  }
}

TEST_F(SampleArchive, IsConsistent) {
  EXPECT_TRUE(database_->IntegrityCheck());
  expectEveryRecordInItsList(*database_);
  expectChildrenHaveParents(*database_);
  expectLookupsInTheirLists(*database_);
  expectCounterCoversKeys(*database_);
  expectOneDefaultAList(*database_);
}

TEST_F(SampleArchive, KeepsEachKindOfValue) {
  EXPECT_EQ(valueOf("Q_LIB", "L001", "Titolo"), QStringLiteral("Il nome della rosa"));
  EXPECT_EQ(valueOf("Q_LIB", "L001", "Autore"), QStringLiteral("Eco Umberto"));
  EXPECT_EQ(valueOf("Q_LIB", "L001", "Anno"), 1980);
  EXPECT_EQ(valueOf("Q_LIB", "L001", "DtaAcq"), 29685);  // 9 April 1981
  EXPECT_TRUE(valueOf("Q_LIB", "L001", "Note")
                  .toString()
                  .startsWith(QStringLiteral("Premio Strega 1981.\n")));
  EXPECT_TRUE(valueOf("Q_LIB", "L001", "Traduttore").isNull());
  EXPECT_EQ(valueOf("Q_AUD", "A001", "Durata"), 43 * 60 + 4);
  EXPECT_EQ(valueOf("Q_AUD", "A001", "Originale"), -1);
  EXPECT_EQ(valueOf("Q_COM", "S001", "Originale"), 0);
  EXPECT_EQ(valueOf("Q_RIV", "R001", "Data"), -14061);  // 1 July 1861
}

TEST_F(SampleArchive, MagazinesAreTitledByNameAndNumber) {
  const QStringList columns = {QStringLiteral("Titolo"), QStringLiteral("Testata"),
                               QStringLiteral("Numero")};
  for (const QVariantList& row : rowsOf(*database_, QStringLiteral("Q_RIV"), columns)) {
    const QString number =
        row[2].isNull() ? QString() : QStringLiteral(" n. %1").arg(row[2].toInt());
    EXPECT_EQ(row[0].toString(), row[1].toString() + number);
  }
}

}  // namespace
}  // namespace tavolix::builder
