#include "tools/archive_template.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "core/raccolte.h"
#include "tools/archive_checks.h"

namespace tavolix::builder {
namespace {

class ArchiveTemplate : public ::testing::Test {
 protected:
  ArchiveTemplate() {
    const QString path = folder_.filePath(QStringLiteral("modello.tvx"));
    buildArchive(sourceData(), path);
    database_ = store::OpenDatabase(path);
  }

  QTemporaryDir folder_;
  store::DatabasePtr database_;
};

TEST_F(ArchiveTemplate, HoldsSettingsAndListsButNoRecord) {
  const auto settings =
      database_->OpenRecordset(QStringLiteral("CFG"), store::RecordsetType::Table);
  settings->SetIndex(QStringLiteral("1u"));
  const auto setting = [&](const char* name, const char* column) {
    settings->Seek(QStringLiteral("="), {QString::fromLatin1(name)});
    return settings->NoMatch() ? QVariant(QStringLiteral("?"))
                               : settings->Value(QString::fromLatin1(column));
  };
  EXPECT_EQ(setting("DB_VERSION", "nVal"), 1);
  EXPECT_EQ(setting("DB_APPLICATION", "sVal"), QStringLiteral("Tavolix"));
  EXPECT_EQ(setting("PWD", "sVal"), QStringLiteral(""));
  EXPECT_FALSE(setting("PWD", "sVal").isNull());
  EXPECT_EQ(valuesOf(*database_, QStringLiteral("CONT"), QStringLiteral("ID")), QVariantList{0});
  EXPECT_EQ(countOf(*database_, QStringLiteral("MAIN")), 0);
  EXPECT_GT(countOf(*database_, QStringLiteral("TAB")), 1000);
  expectOneDefaultAList(*database_);
  EXPECT_TRUE(database_->IntegrityCheck());
}

TEST_F(ArchiveTemplate, KnowsEveryQueryOfTheSources) {
  const QDir folder(sourceData() + QStringLiteral("/queries"));
  const QStringList names = database_->QueryDefs();
  const QStringList files = folder.entryList({QStringLiteral("*.sql")});
  EXPECT_EQ(names.size(), files.size());
  for (const QString& name : names) {
    EXPECT_TRUE(files.contains(name + QStringLiteral(".sql"))) << qPrintable(name);
    if (name.startsWith(QLatin1String("Q_Aggiorna"))) {
      EXPECT_NO_THROW(database_->Execute(name));
    } else {
      EXPECT_EQ(countOf(*database_, name), 0) << qPrintable(name);
    }
  }
}

TEST_F(ArchiveTemplate, EveryListHasColumnsThatItsQueryShows) {
  QHash<QString, int> columns;
  const QStringList names = {QStringLiteral("NomeQuery"), QStringLiteral("Colonna"),
                             QStringLiteral("NomeCampo"), QStringLiteral("titolo"),
                             QStringLiteral("Larghezza")};
  for (const QVariantList& row : rowsOf(*database_, QStringLiteral("GRDCONFIG"), names)) {
    const QString query = row[0].toString();
    const auto shown = database_->OpenRecordset(query, store::RecordsetType::Snapshot);
    EXPECT_EQ(row[1].toInt(), columns[query]++) << qPrintable(query);
    EXPECT_GE(shown->FindField(row[2].toString()), 0) << qPrintable(row[2].toString());
    EXPECT_FALSE(row[3].toString().isEmpty());
    EXPECT_GE(row[4].toInt(), 100 * row[3].toString().size()) << qPrintable(row[3].toString());
  }
  EXPECT_EQ(columns.size(), kRaccolte);
  for (int i = 0; i < kRaccolte; ++i) {
    EXPECT_GE(columns.value(aRaccolte(i).sQuery), i < kRaccoltePrincipali ? 8 : 5) << i;
  }
}

}  // namespace
}  // namespace tavolix::builder
