#include "tools/tips_archive.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include "tools/archive_template.h"

namespace tavolix::builder {
namespace {

QStringList tipsOf(const QFileInfo& source) {
  QFile file(source.filePath());
  if (!file.open(QIODevice::ReadOnly)) {
    throw store::Failure(store::failure::kFileNotFound,
                         QStringLiteral("Impossibile leggere il file %1").arg(source.filePath()));
  }
  static const QRegularExpression blankLine(QStringLiteral("\\n\\s*\\n"));
  QStringList tips;
  for (const QString& text : QString::fromUtf8(file.readAll()).split(blankLine)) {
    const QString tip = text.simplified();
    if (!tip.isEmpty()) tips << tip;
  }
  return tips;
}

}  // namespace

void buildTips(const QString& dataFolder, const QString& out) {
  const QDir data(dataFolder);
  buildDatabase(
      data.filePath(QStringLiteral("schema/suggerimenti.sql")), out,
      [&](store::Database& database) {
        store::Transaction transaction(database);
        const store::RecordsetPtr rows =
            database.OpenRecordset(QStringLiteral("SIN"), store::RecordsetType::Table);
        const QDir folder(data.filePath(QStringLiteral("tips")));
        for (const QFileInfo& file : folder.entryInfoList({QStringLiteral("*.txt")}, QDir::Files)) {
          for (const QString& tip : tipsOf(file)) {
            rows->AddNew();
            rows->SetValue(QStringLiteral("grp"), file.completeBaseName());
            rows->SetValue(QStringLiteral("note"), tip);
            rows->Update();
          }
        }
        transaction.Commit();
      });
}

}  // namespace tavolix::builder
