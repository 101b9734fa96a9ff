// Sources with a mistake in them, and the place that the makers of archives name.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "core/raccolte.h"
#include "tools/archive_checks.h"
#include "tools/archive_template.h"
#include "tools/sample_archive.h"

namespace tavolix::builder {
namespace {

// A copy of the sources with next to no content.
class SourceErrors : public ::testing::Test {
 protected:
  SourceErrors() {
    copy(QStringLiteral("schema"));
    copy(QStringLiteral("queries"));
    write("lists/liste.tsv", "TipoTab\tTipoRac\tDesc\tDefault\n");
    write("griglie.tsv", "NomeQuery\tColonna\tNomeCampo\ttitolo\tLarghezza\n");
    for (const char* name :
         {"libri", "audio", "video", "software", "medicinali", "oggetti", "persone"}) {
      write(("sample/" + QByteArray(name) + ".tsv").constData(), "Cod\n");
    }
    write("sample/riviste.tsv", "Cod\nR1\n");
    for (const char* name : {"articoli", "brani", "contatti"}) {
      write(("sample/" + QByteArray(name) + ".tsv").constData(), "Riferimento\n");
    }
  }

  void write(const char* name, const QByteArray& content) {
    const QString path = folder_.filePath(QString::fromLatin1(name));
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  QString out() const { return folder_.filePath(QStringLiteral("out.tvx")); }

  void build() {
    buildArchive(folder_.path(), out(), [&](store::Database& database) {
      addSampleRecords(database, folder_.filePath(QStringLiteral("sample")));
    });
  }

  QString refusal() {
    try {
      build();
      return {};
    } catch (const store::Failure& failure) {
      return failure.description();
    }
  }

 private:
  void copy(const QString& name) {
    const QDir from(sourceData() + u'/' + name);
    QDir(folder_.path()).mkdir(name);
    for (const QString& file : from.entryList(QDir::Files)) {
      QFile::copy(from.filePath(file), folder_.filePath(name + u'/' + file));
    }
  }

  QTemporaryDir folder_;
};

struct Mistake {
  const char* file;
  QByteArray content;
  const char* told;
};

TEST_F(SourceErrors, AreToldByFileLineAndColumn) {
  const QByteArray lists = "TipoTab\tTipoRac\tDesc\tDefault\n";
  const QByteArray grids = "NomeQuery\tColonna\tNomeCampo\ttitolo\tLarghezza\n";
  const Mistake mistakes[] = {
      {"sample/libri.tsv", "", "libri.tsv:1: file vuoto"},
      {"sample/libri.tsv", "Cod\tColore\nL1\tblu\n", "libri.tsv:1: colonna Colore: "},
      {"sample/libri.tsv", "Cod\tcod\n", "libri.tsv:1: colonna cod: "},
      {"sample/libri.tsv", "Titolo\nA\n", "libri.tsv:1: colonna Cod: "},
      {"sample/libri.tsv", "Cod\tTitolo\nL1\tA\nL2\n", "libri.tsv:3: 1 celle"},
      {"sample/libri.tsv", "Cod\nL1\n\nL2\n", "libri.tsv:3: colonna Cod: "},
      {"sample/libri.tsv", "Cod\nL1\nL1\n", "libri.tsv:3: colonna Cod: "},
      {"sample/libri.tsv", "Cod\tTitolo\nL1\t\xff\xfe\n", "libri.tsv:2: testo non UTF-8"},
      {"sample/libri.tsv", "Cod\n" + QByteArray(16, 'L') + "\n", "libri.tsv:2: colonna Cod: "},
      {"sample/libri.tsv", "Cod\tTABGenereID\nL1\t" + QByteArray(101, 'g') + "\n",
       "libri.tsv:2: colonna TABGenereID: "},
      {"sample/libri.tsv", "Cod\tAnno\nL1\tMCMXC\n", "libri.tsv:2: colonna Anno: "},
      {"sample/libri.tsv", "Cod\tDtaAcq\nL1\t2001-02-29\n", "libri.tsv:2: colonna DtaAcq: "},
      {"sample/libri.tsv", "Cod\tDtaAcq\nL1\t2001-2-9\n", "libri.tsv:2: colonna DtaAcq: "},
      {"sample/libri.tsv", "Cod\tDtaAcq\nL1\t09/02/2001\n", "libri.tsv:2: colonna DtaAcq: "},
      {"sample/audio.tsv", "Cod\tDurata\nA1\t1:60:00\n", "audio.tsv:2: colonna Durata: "},
      {"sample/audio.tsv", "Cod\tDurata\nA1\t3:20\n", "audio.tsv:2: colonna Durata: "},
      {"sample/audio.tsv", "Cod\tOriginale\nA1\tvero\n", "audio.tsv:2: colonna Originale: "},
      {"sample/articoli.tsv", "Riferimento\tTitolo\nR1\tA\nR2\tB\n",
       "articoli.tsv:3: colonna Riferimento: "},
      {"sample/articoli.tsv", "Titolo\nA\n", "articoli.tsv:1: colonna Riferimento: "},
      {"lists/liste.tsv", lists + "POS\t-1\tBagno\t\nPOS\t-1\tBAGNO\t\n",
       "liste.tsv:3: colonna Desc: "},
      {"lists/liste.tsv", lists + "POS\t0\tBagno\t\n", "liste.tsv:2: colonna TipoTab: "},
      {"lists/liste.tsv", lists + "POS\tx\tBagno\t\n", "liste.tsv:2: colonna TipoRac: "},
      {"lists/liste.tsv", lists + "POS\t-1\t\t\n", "liste.tsv:2: colonna Desc: "},
      {"lists/liste.tsv", lists + "POS\t-1\tBagno\tsi\nPOS\t-1\tCucina\tsi\n",
       "liste.tsv:3: colonna Default: "},
      {"griglie.tsv", grids + "Q_LIX\t0\tCod\tC\t900\n", "griglie.tsv:2: colonna NomeQuery: "},
      {"griglie.tsv", grids + "Q_LIB\t0\tCod\tC\t900\nQ_LIB\t2\tAnno\tA\t900\n",
       "griglie.tsv:3: colonna Colonna: "},
      {"griglie.tsv", grids + "Q_LIB\t0\tDurata\tD\t900\n", "griglie.tsv:2: colonna NomeCampo: "},
  };
  build();
  for (const Mistake& mistake : mistakes) {
    const QString path = QFileInfo(out()).dir().filePath(QString::fromLatin1(mistake.file));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray right = file.readAll();
    write(mistake.file, mistake.content);
    EXPECT_TRUE(refusal().startsWith(QString::fromLatin1(mistake.told))) << mistake.told << '\n'
                                                                         << qPrintable(refusal());
    write(mistake.file, right);
  }
}

TEST_F(SourceErrors, LeaveTheArchiveOfAnEarlierRun) {
  write("sample/libri.tsv", "Cod\nL1\n");
  build();
  write("sample/libri.tsv", "Cod\nL1\nL1\n");
  EXPECT_FALSE(refusal().isEmpty());
  const store::DatabasePtr database = store::OpenDatabase(out());
  EXPECT_EQ(countOf(*database, QStringLiteral("Q_LIB")), 1);
  EXPECT_FALSE(QFile::exists(out() + QStringLiteral(".part")));
}

TEST_F(SourceErrors, AreNotTextsThatDifferInCaseOnly) {
  write("lists/liste.tsv", "TipoTab\tTipoRac\tDesc\tDefault\nGENERE\t0\tPoesìa\t\n");
  write("sample/libri.tsv", "Cod\tTABGenereID\nL1\tPOESÌA\nL2\tpoesìa\nL3\tSaggio\n");
  build();
  const store::DatabasePtr database = store::OpenDatabase(out());
  EXPECT_EQ(countOf(*database, QStringLiteral("TAB")), 2);
  EXPECT_EQ(
      valuesOf(*database, QStringLiteral("Q_LIB"), QStringLiteral("Genere")),
      (QVariantList{QStringLiteral("Poesìa"), QStringLiteral("Poesìa"), QStringLiteral("Saggio")}));
}

}  // namespace
}  // namespace tavolix::builder
