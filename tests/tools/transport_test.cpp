// Old archives, brought over into new ones, against what the old file says.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "model/cifratura.h"
#include "model/vecchio_archivio.h"
#include "store/database.h"
#include "store/jet_file.h"

namespace tavolix {
namespace {

QString oldFile(const QString& name) {
  return qEnvironmentVariable("TAVOLIX_SOURCE") + "/tests/data/jet/" + name;
}

QString model() {
  return qEnvironmentVariable("TAVOLIX_DATA") + "/modello.tvx";
}

QByteArray contentOf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  return file.readAll();
}

// The same value, as far as a column of the new archive holds it.
void expectSame(const QVariant& found, const QVariant& old, store::JetKind kind,
                const store::FieldInfo& field) {
  EXPECT_EQ(found.isNull(), !old.isValid());
  if (kind == store::JetKind::Text && field.size > 0) {
    EXPECT_TRUE(old.toString().startsWith(found.toString()));
    EXPECT_GE(found.toString().size(), qMin(old.toString().size(), qsizetype{field.size} - 1));
  } else if (kind == store::JetKind::Money) {
    EXPECT_DOUBLE_EQ(found.toDouble(), old.toDouble() / 10000);
  } else {
    EXPECT_EQ(found.toDouble(), old.toDouble());
  }
}

TEST(Transport, BringsAllThatAnOldArchiveHolds) {
  const QTemporaryDir folder;
  const QString fresh = folder.filePath("casa.tvx");
  const QByteArray before = contentOf(oldFile("casa.mdb"));
  const Trasporto result = PortaVecchioArchivio(oldFile("casa.mdb"), model(), fresh);
  EXPECT_EQ(contentOf(oldFile("casa.mdb")), before);
  const store::JetFile old(oldFile("casa.mdb"));
  const store::DatabasePtr archive = store::OpenDatabase(fresh);
  EXPECT_TRUE(archive->IntegrityCheck());
  EXPECT_EQ(result.tabelle.size(), 16);
  for (const TabellaPortata& each : result.tabelle) {
    SCOPED_TRACE(each.sNome.toStdString());
    EXPECT_EQ(each.lLette, each.lDichiarate);
    EXPECT_EQ(each.lScritte, each.lLette);
    const auto rows = archive->OpenRecordset(each.sNome, store::RecordsetType::Table);
    EXPECT_GE(rows->RecordCount(), each.lScritte);
    if (rows->FindField("ID") < 0 || each.sNome == "CONT") continue;
    rows->SetIndex("1u");
    const auto table = old.open(each.sNome);
    while (table->next()) {
      rows->Seek("=", {table->value("ID")});
      ASSERT_FALSE(rows->NoMatch());
      for (int i = 0; i < table->columns().size(); ++i) {
        const store::JetColumn& column = table->columns()[i];
        SCOPED_TRACE((column.name + ' ' + table->value("ID").toString()).toStdString());
        const int field = rows->FieldIndex(column.name);
        expectSame(rows->Value(field), table->value(i), column.kind, rows->Fields()[field]);
      }
    }
  }
  const auto counter = archive->OpenRecordset("CONT", store::RecordsetType::Table);
  const auto oldCounter = old.open("CONT");
  ASSERT_TRUE(oldCounter->next());
  EXPECT_EQ(counter->Value("ID").toLongLong(), oldCounter->value("ID").toLongLong());
  const auto grids = archive->OpenRecordset("GRDCONFIG", store::RecordsetType::Table);
  EXPECT_EQ(grids->RecordCount(), 97);
  grids->SetIndex("1u");
  grids->Seek("=", {"Q_LIB", 3});
  EXPECT_EQ(grids->Value("NomeCampo").toString(), "Autore");
  // What was cut stands whole in the text file.
  EXPECT_EQ(contentOf(result.sElenco).count('\n'), result.nAnnotazioni);
  EXPECT_TRUE(contentOf(result.sElenco).contains("922337203685477,5807"));
}

TEST(Transport, KnowsTheCodeInBothForms) {
  EXPECT_EQ(sCodiceVecchioArchivio(oldFile("casa.mdb")), kSenzaCodice);
  EXPECT_EQ(sCodiceVecchioArchivio(oldFile("casa-codice.mdb")), "PANE E VINO");
  QString numbers;
  for (const int code : {147, 1, 2, 10, 212, 167, 206, 215, 14, 250, 13}) numbers += QChar(code);
  EXPECT_EQ(sCodiceDecifrato(sCodiceInLettere(numbers)), "PANE E VINO");
}

TEST(Transport, LeavesNothingBehindWhereItFails) {
  const QTemporaryDir folder;
  const QString fresh = folder.filePath("casa.tvx");
  const auto failure = [&](const QString& old, const store::Progress& progress = {}) {
    try {
      PortaVecchioArchivio(old, model(), fresh, progress);
      return 0;
    } catch (const store::Failure& met) {
      return met.number();
    }
  };
  EXPECT_EQ(failure(oldFile("rubrica.arc")), store::failure::kUnknownFormat);
  EXPECT_EQ(failure(model()), store::failure::kUnknownFormat);
  EXPECT_EQ(failure(oldFile("casa.mdb"), [](qint64, qint64) { return false; }),
            store::failure::kInterrupted);
  EXPECT_TRUE(QDir(folder.path()).isEmpty());
  // Cut anywhere, it gives what can be read, or says why not.
  const QByteArray whole = contentOf(oldFile("casa.mdb"));
  for (int part = 1; part < 5; ++part) {
    QFile cut(folder.filePath("cut.mdb"));
    ASSERT_TRUE(cut.open(QIODevice::WriteOnly));
    cut.write(whole.left(whole.size() * part / 5));
    cut.close();
    const int number = failure(cut.fileName());
    EXPECT_TRUE(number == 0 || number == store::failure::kDamaged) << number;
    if (number == 0) {
      EXPECT_NO_THROW(store::OpenDatabase(fresh));
    }
    QFile::remove(fresh);
  }
  ASSERT_EQ(failure(oldFile("casa.mdb")), 0);
  EXPECT_EQ(failure(oldFile("casa.mdb")), 58);
}

TEST(Transport, IsDoneFromTheShell) {
  struct Case {
    QStringList arguments;
    int result;
    const char* told;
  };
  const QTemporaryDir folder;
  const QString fresh = folder.filePath("nuovo.tvx");
  const Case cases[] = {
      {{}, 2, "Uso:"},
      {{"--help"}, 0, "--codice"},
      {{"/nessuno.mdb", fresh}, 1, "non trovato"},
      {{oldFile("casa-codice.mdb"), fresh}, 3, "--codice"},
      {{"--codice", "sbagliato", oldFile("casa-codice.mdb"), fresh}, 3, "errato"},
      {{"--codice", "pane e vino", oldFile("casa-codice.mdb"), fresh}, 0, "MAIN: 620 di 620"},
  };
  for (const Case& each : cases) {
    QProcess tool;
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(QCoreApplication::applicationDirPath() + "/tavolix-importa", each.arguments);
    ASSERT_TRUE(tool.waitForFinished());
    EXPECT_EQ(tool.exitCode(), each.result) << each.told;
    EXPECT_TRUE(tool.readAll().contains(each.told)) << each.told;
  }
}

}  // namespace
}  // namespace tavolix
