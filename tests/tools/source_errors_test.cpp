// Sources with a mistake in them, and the place that the makers of archives name.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "tools/archive_checks.h"
#include "tools/archive_template.h"
#include "tools/sample_archive.h"

namespace tavolix::builder {
namespace {

const QByteArray kLists = "TipoTab\tTipoRac\tDesc\tDefault\n";
const QByteArray kGrids = "NomeQuery\tColonna\tNomeCampo\ttitolo\tLarghezza\n";

// A copy of the sources with next to no content.
class SourceErrors : public ::testing::Test {
 protected:
  SourceErrors() {
    for (const QString name : {"schema", "queries"}) {
      QFile::link(sourceData() + '/' + name, folder_.filePath(name));
    }
    write("lists/liste.tsv", kLists);
    write("griglie.tsv", kGrids);
    for (const QString name :
         {"libri", "audio", "video", "software", "medicinali", "oggetti", "persone"}) {
      write("sample/" + name + ".tsv", "Cod\n");
    }
    write("sample/riviste.tsv", "Cod\nR1\n");
    for (const QString name : {"articoli", "brani", "contatti"}) {
      write("sample/" + name + ".tsv", "Riferimento\n");
    }
  }

  // Gives back what the file held.
  QByteArray write(const QString& name, const QByteArray& content) {
    QFile file(folder_.filePath(name));
    QDir().mkpath(QFileInfo(file).path());
    EXPECT_TRUE(file.open(QIODevice::ReadWrite));
    const QByteArray before = file.readAll();
    file.resize(0);
    file.write(content);
    return before;
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
  const struct {
    QString file;
    QByteArray content;
    const char* told;
  } mistakes[] = {
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
      {"sample/articoli.tsv", "Riferimento\tTitolo\nR1\tA\nR2\tB\n",
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
  for (const auto& mistake : mistakes) {
    const QByteArray right = write(mistake.file, mistake.content);
    EXPECT_TRUE(refusal().startsWith(mistake.told)) << mistake.told << qPrintable(refusal());
    write(mistake.file, right);
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
