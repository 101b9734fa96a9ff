#include "tools/generated_archive.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "core/campi.h"
#include "core/raccolte.h"
#include "store/text_order.h"
#include "tools/archive_checks.h"
#include "tools/archive_template.h"
#include "tools/italian_text.h"

namespace tavolix::builder {
namespace {

class GeneratedArchive : public ::testing::Test {
 protected:
  QString build(const char* name, const GeneratorOptions& options) {
    const QString path = folder_.filePath(QString::fromLatin1(name));
    buildArchive(sourceData(), path,
                 [&](store::Database& database) { addGeneratedRecords(database, options); });
    return path;
  }

  static QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  static qint64 rowsOfList(store::Database& database, const QString& code, int collection) {
    return countOf(database,
                   QStringLiteral("SELECT * FROM TAB WHERE TipoTab = '%1' AND TipoRac = %2")
                       .arg(code)
                       .arg(collection));
  }

  QTemporaryDir folder_;
};

TEST_F(GeneratedArchive, HoldsWhatItsOptionsSay) {
  const store::DatabasePtr database =
      store::OpenDatabase(build("prova.tvx", {2000, 1, {{{QStringLiteral("POS"), -1}, 300}}}));
  const std::pair<const char*, int> counts[] = {
      {"Q_LIB", 1000},  {"Q_RIV", 143},    {"Q_AUD", 143},   {"Q_VID", 143},
      {"Q_COM", 143},   {"Q_MED", 143},    {"Q_OGG", 143},   {"Q_PER", 142},
      {"Q_RIVSUB", 50}, {"Q_AUDSUB", 200}, {"Q_PERSUB", 50},
  };
  for (const auto& [query, count] : counts) {
    EXPECT_EQ(countOf(*database, QString::fromLatin1(query)), count) << query;
  }
  EXPECT_EQ(rowsOfList(*database, QStringLiteral("AUTORE"), 0), 50);
  EXPECT_EQ(rowsOfList(*database, QStringLiteral("POS"), -1), 300);
  EXPECT_TRUE(database->IntegrityCheck());
  expectEveryRecordInItsList(*database);
  expectChildrenHaveParents(*database);
  expectLookupsInTheirLists(*database);
  expectCounterCoversKeys(*database);
  expectOneDefaultAList(*database);
}

TEST_F(GeneratedArchive, FillsEveryFieldButOneInTen) {
  const store::DatabasePtr database = store::OpenDatabase(build("prova.tvx", {4000, 2, {}}));
  for (int i = 0; i < kRaccolte; ++i) {
    const QVector<QVariantList> records = recordsOf(*database, i);
    for (int j = 0; j < iNumeroCampi(i); ++j) {
      const QString column = aCampi(i, j).sCampoDB;
      const qint64 filled =
          std::count_if(records.begin(), records.end(),
                        [j](const QVariantList& record) { return !record[j].isNull(); });
      if (column == QLatin1String("Note")) {
        EXPECT_EQ(filled, (records.size() + 9) / 10) << i;
      } else {
        EXPECT_GE(filled, records.size() * 8 / 10) << i << ' ' << qPrintable(column);
      }
    }
  }
}

TEST_F(GeneratedArchive, IsTheSameForTheSameOptionsOnly) {
  const QByteArray first = contentOf(build("a.tvx", {400, 7, {}}));
  EXPECT_FALSE(first.isEmpty());
  EXPECT_EQ(first, contentOf(build("b.tvx", {400, 7, {}})));
  EXPECT_NE(first, contentOf(build("c.tvx", {400, 8, {}})));
}

TEST(ListSizes, NameAListOfTheFieldTable) {
  const auto size = parseListSize(QStringLiteral("autore:0:50000"));
  ASSERT_TRUE(size);
  EXPECT_EQ(size->list.code, QStringLiteral("AUTORE"));
  EXPECT_EQ(size->rows, 50000);
  EXPECT_TRUE(parseListSize(QStringLiteral("POS:-1:1")));
  for (const char* wrong : {"", "AUTORE", "AUTORE:0", "AUTORE:0:x", "AUTORE:x:5", "AUTORE:0:0",
                            "AUTORE:5:10", "COLORE:0:10", "AUTORE:0:10:1", "AUTORE:0:70001"}) {
    EXPECT_FALSE(parseListSize(QString::fromLatin1(wrong))) << wrong;
  }
}

TEST(ItalianText, NumbersGiveDifferentTexts) {
  for (QString (*make)(qint64) : {personName, listText}) {
    QSet<QByteArray> keys;
    for (qint64 i = 0; i < kListTexts; ++i) {
      std::string key;
      store::appendSortKey(make(i).toStdString(), key);
      keys.insert(QByteArray::fromStdString(key));
    }
    EXPECT_EQ(keys.size(), kListTexts);
  }
}

TEST(ItalianText, KeepsToItsLengths) {
  Random random(3);
  bool accent = false;
  bool apostrophe = false;
  for (int i = 0; i < 2000; ++i) {
    const QString text = title(random, i % 2 == 0 ? 40 : 150);
    const auto words = text.split(u' ').size();
    EXPECT_TRUE(words >= 2 && words <= 8) << qPrintable(text);
    EXPECT_LE(text.size(), i % 2 == 0 ? 40 : 150) << qPrintable(text);
    EXPECT_LE(prose(random, 500).size(), 500);
    accent = accent || text.contains(u'à');
    apostrophe = apostrophe || text.contains(u'\'');
  }
  EXPECT_TRUE(accent && apostrophe);
}

}  // namespace
}  // namespace tavolix::builder
