// The archives that the makers build from the program's own sources.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "core/raccolte.h"
#include "tools/archive_checks.h"
#include "tools/archive_template.h"
#include "tools/generated_archive.h"
#include "tools/sample_archive.h"

namespace tavolix::builder {
namespace {

class Archives : public ::testing::Test {
 protected:
  QString build(const QString& name, const std::function<void(store::Database&)>& fill = {}) {
    const QString path = folder_.filePath(name);
    buildArchive(sourceData(), path, fill);
    return path;
  }
  QString generate(const QString& name, const GeneratorOptions& options) {
    return build(name, [&](store::Database& rows) { addGeneratedRecords(rows, options); });
  }

  QTemporaryDir folder_;
};

TEST_F(Archives, TemplateShowsItsEmptyLists) {
  const store::DatabasePtr database = store::OpenDatabase(build("modello.tvx"));
  const QDir queries(sourceData() + "/queries", "*.sql");
  EXPECT_EQ(database->QueryDefs().size(), queries.entryList().size());
  for (const QString& name : database->QueryDefs()) {
    if (name.startsWith("Q_Aggiorna")) continue;
    EXPECT_EQ(countOf(*database, name), 0) << qPrintable(name);
  }
  const auto settings = rowsOf(*database, "CFG", {"dsc", "nVal", "sVal"});
  EXPECT_TRUE(settings.contains({"DB_APPLICATION", QVariant(), "Tavolix"}));
  EXPECT_TRUE(settings.contains({"PWD", QVariant(), ""}));
  QHash<QString, int> columns;
  for (const auto& row : rowsOf(*database, "GRDCONFIG", {"NomeQuery", "Colonna"})) {
    EXPECT_EQ(row[1], columns[row[0].toString()]++) << qPrintable(row[0].toString());
  }
  EXPECT_EQ(columns.size(), kRaccolte);
  expectConsistent(*database);
}

TEST_F(Archives, SampleKeepsEachKindOfValue) {
  const store::DatabasePtr database =
      store::OpenDatabase(build("esempio.tvx", [](store::Database& rows) {
        addSampleRecords(rows, sourceData() + "/sample");
      }));
  expectConsistent(*database);
  const struct {
    const char *query, *code, *column;
    QVariant value;
  } cases[] = {
      {"Q_LIB", "L001", "Autore", "Eco Umberto"},  {"Q_LIB", "L001", "Anno", 1980.0},
      {"Q_LIB", "L001", "DtaAcq", 29685},  // 9 April 1981
      {"Q_LIB", "L001", "Traduttore", QVariant()}, {"Q_AUD", "A001", "Durata", 43 * 60 + 4},
      {"Q_AUD", "A001", "Originale", -1},          {"Q_COM", "S001", "Originale", 0},
      {"Q_RIV", "R001", "Data", -14061},  // 1 July 1861
  };
  for (const auto& c : cases) {
    EXPECT_TRUE(rowsOf(*database, c.query, {"Cod", c.column}).contains({c.code, c.value}))
        << c.code << ' ' << c.column;
  }
  // A magazine's title is made of its name and number.
  for (const auto& row : rowsOf(*database, "Q_RIV", {"Titolo", "Testata", "Numero"})) {
    const QString number = row[2].isNull() ? "" : " n. " + row[2].toString();
    EXPECT_EQ(row[0].toString(), row[1].toString() + number);
  }
}

TEST_F(Archives, GeneratedOnesHoldWhatTheirOptionsSay) {
  const store::DatabasePtr database =
      store::OpenDatabase(generate("prova.tvx", {2000, 1, {{{"POS", -1}, 300}}}));
  const QString list = "SELECT * FROM TAB WHERE TipoTab = '%1'";
  const std::pair<QString, int> counts[] = {
      {"Q_LIB", 1000},   {"Q_RIV", 143},         {"Q_PER", 142},
      {"Q_AUDSUB", 200}, {list.arg("POS"), 300}, {list.arg("COLLANA"), 50},
  };
  for (const auto& [source, count] : counts) {
    EXPECT_EQ(countOf(*database, source), count) << qPrintable(source);
  }
  expectConsistent(*database);
}

TEST_F(Archives, GeneratedOnesAreTheSameForTheSameSeedOnly) {
  const auto content = [this](const QString& name, quint64 seed) {
    QFile file(generate(name, {400, seed, {}}));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  };
  const QByteArray first = content("a.tvx", 7);
  EXPECT_FALSE(first.isEmpty());
  EXPECT_EQ(first, content("b.tvx", 7));
  EXPECT_NE(first, content("c.tvx", 8));
}

TEST(ListSizes, NameAListOfTheFieldTable) {
  const auto size = parseListSize("autore:0:50000");
  ASSERT_TRUE(size);
  EXPECT_EQ(size->list.code, "AUTORE");
  EXPECT_EQ(size->rows, 50000);
  for (const char* wrong : {"", "AUTORE:0", "AUTORE:0:x", "AUTORE:x:5", "AUTORE:0:0", "AUTORE:5:10",
                            "COLORE:0:10", "AUTORE:0:10:1", "AUTORE:0:70001"}) {
    EXPECT_FALSE(parseListSize(wrong)) << wrong;
  }
}

}  // namespace
}  // namespace tavolix::builder
