// The archives that the makers build from the program's own sources, and from sources with a
// mistake in them.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <filesystem>
#include <optional>

#include "model/campi.h"
#include "model/cifratura.h"
#include "model/raccolte.h"
#include "model/testi.h"
#include "tools/archive_template.h"
#include "tools/generated_archive.h"
#include "tools/sample_archive.h"

namespace tavolix::builder {
namespace {

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

// What must hold in every archive, whatever it holds: each record is in its list, each child has
// its parent, each choice is one of its list, keys are counted, a list has one default at most.
void expectConsistent(store::Database& database) {
  EXPECT_TRUE(database.IntegrityCheck());
  expectRecordsInTheirLists(database);
  expectChoicesInTheirLists(database);
}

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
  EXPECT_EQ(database->QueryDefs().size(), kRaccolte + queries.entryList().size());
  for (const QString& name : database->QueryDefs()) {
    if (name.startsWith("Q_Aggiorna")) continue;
    EXPECT_EQ(countOf(*database, name), 0) << qPrintable(name);
  }
  const auto settings = rowsOf(*database, "CFG", {"dsc", "nVal", "sVal"});
  EXPECT_TRUE(settings.contains({"DB_APPLICATION", QVariant(), "Tavolix"}));
  EXPECT_TRUE(settings.contains({"PWD", 0.0, sCodiceCifrato("")}));
  QHash<QString, int> columns;
  for (const QVariantList& row :
       rowsOf(*database, "GRDCONFIG", {"NomeQuery", "Colonna", "titolo", "Larghezza"})) {
    EXPECT_EQ(row[1], columns[row[0].toString()]++) << qPrintable(row[0].toString());
    EXPECT_GE(row[3].toInt(), 100 * row[2].toString().size()) << qPrintable(row[2].toString());
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
  EXPECT_EQ(parseListSize("autore:0:50000").value_or(ListSize{}).rows, 50000);
  for (const char* wrong : {"", "AUTORE:0", "AUTORE:0:x", "AUTORE:x:5", "AUTORE:0:0", "AUTORE:5:10",
                            "COLORE:0:10", "AUTORE:0:10:1", "AUTORE:0:70001"}) {
    EXPECT_FALSE(parseListSize(wrong)) << wrong;
  }
}

const QByteArray kLists = "TipoTab\tTipoRac\tDesc\tDefault\n";
const QByteArray kGrids = "NomeQuery\tColonna\tNomeCampo\ttitolo\tLarghezza\n";

// A copy of the sources.
class SourceErrors : public ::testing::Test {
 protected:
  SourceErrors() {
    std::filesystem::copy(sourceData().toStdString(), folder_.path().toStdString(),
                          std::filesystem::copy_options::recursive);
  }

  // Gives a source other content; with none, its own again.
  void write(const QString& name, const std::optional<QByteArray>& content) {
    QFile right(sourceData() + '/' + name);
    QFile file(folder_.filePath(name));
    EXPECT_TRUE(right.open(QIODevice::ReadOnly) && file.open(QIODevice::WriteOnly));
    file.write(content ? *content : right.readAll());
  }

  // What the makers say; empty if they have built the archive.
  QString refusal() {
    try {
      buildArchive(folder_.path(), out(), [&](store::Database& database) {
        addSampleRecords(database, folder_.filePath("sample"));
      });
      return {};
    } catch (const store::Failure& failure) {
      return failure.description();
    }
  }
  QString out() const { return folder_.filePath("out.tvx"); }

  QTemporaryDir folder_;
};

TEST_F(SourceErrors, AreToldByFileLineAndColumn) {
  const QString books = "sample/libri.tsv";
  const QString audio = "sample/audio.tsv";
  const QString lists = "lists/liste.tsv";
  const QString grids = "griglie.tsv";
  const std::tuple<QString, QByteArray, const char*> mistakes[] = {
      {books, "", "libri.tsv:1: file vuoto"},
      {books, "Cod\tColore\nL1\tblu\n", "libri.tsv:1: colonna Colore: "},
      {books, "Titolo\nA\n", "libri.tsv:1: colonna Cod: "},
      {books, "Cod\tTitolo\nL1\tA\nL2\n", "libri.tsv:3: 1 celle"},
      {books, "Cod\nL1\n\nL2\n", "libri.tsv:3: colonna Cod: "},
      {books, "Cod\nL1\nL1\n", "libri.tsv:3: colonna Cod: "},
      {books, "Cod\tTitolo\nL1\t\xff\xfe\n", "libri.tsv:2: testo non UTF-8"},
      {books, "Cod\n" + QByteArray(16, 'L') + "\n", "libri.tsv:2: colonna Cod: "},
      {books, "Cod\tAnno\nL1\tMCMXC\n", "libri.tsv:2: colonna Anno: "},
      {books, "Cod\tDtaAcq\nL1\t2001-02-29\n", "libri.tsv:2: colonna DtaAcq: "},
      {books, "Cod\tDtaAcq\nL1\t2001-2-9\n", "libri.tsv:2: colonna DtaAcq: "},
      {audio, "Cod\tDurata\nA1\t1:60:00\n", "audio.tsv:2: colonna Durata: "},
      {audio, "Cod\tOriginale\nA1\tvero\n", "audio.tsv:2: colonna Originale: "},
      {"sample/articoli.tsv", "Riferimento\tTitolo\nR001\tA\nR2\tB\n",
       "articoli.tsv:3: colonna Riferimento: "},
      {lists, kLists + "POS\t-1\tBagno\t\nPOS\t-1\tBAGNO\t\n", "liste.tsv:3: colonna Desc: "},
      {lists, kLists + "POS\t0\tBagno\t\n", "liste.tsv:2: colonna TipoTab: "},
      {lists, kLists + "POS\t-1\tBagno\tsi\nPOS\t-1\tCucina\tsi\n",
       "liste.tsv:3: colonna Default: "},
      {grids, kGrids + "Q_LIX\t0\tCod\tC\t900\n", "griglie.tsv:2: colonna NomeQuery: "},
      {grids, kGrids + "Q_LIB\t0\tCod\tC\t900\nQ_LIB\t2\tAnno\tA\t900\n",
       "griglie.tsv:3: colonna Colonna: "},
      {grids, kGrids + "Q_LIB\t0\tDurata\tD\t900\n", "griglie.tsv:2: colonna NomeCampo: "},
  };
  for (const auto& [file, content, place] : mistakes) {
    write(file, content);
    const QString told = refusal();
    EXPECT_TRUE(told.startsWith(place)) << place << qPrintable(told);
    write(file, {});
  }
}

// Texts that differ in case only are no mistake: they are one.
TEST_F(SourceErrors, LeaveTheArchiveOfAnEarlierRun) {
  write("lists/liste.tsv", kLists + "GENERE\t0\tPoesìa\t\n");
  write("sample/libri.tsv", "Cod\tTABGenereID\nL1\tPOESÌA\nL2\tpoesìa\nL3\tSaggio\n");
  EXPECT_EQ(refusal(), "");
  write("sample/libri.tsv", "Cod\nL1\nL1\n");
  EXPECT_NE(refusal(), "");
  const store::DatabasePtr database = store::OpenDatabase(out());
  EXPECT_EQ(rowsOf(*database, "Q_LIB", {"Genere"}),
            (QVector<QVariantList>{{"Poesìa"}, {"Poesìa"}, {"Saggio"}}));
  EXPECT_FALSE(QFile::exists(out() + ".part"));
}

}  // namespace
}  // namespace tavolix::builder
