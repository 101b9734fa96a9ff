// The books as a text file, beside the plain engine's shell that writes the same columns.

#include <QFile>
#include <QProcess>

#include "books.h"
#include "figures.h"
#include "model/campi.h"
#include "model/raccolte.h"
#include "output/export_file.h"

namespace bench {
namespace {

constexpr int kRounds = 5;
constexpr int kBooks = 0;

QString columnsOfBooks() {
  QStringList columns;
  for (int i = 0; i < tavolix::iNumeroCampi(kBooks); ++i) {
    const tavolix::tCampo& campo = tavolix::aCampi(kBooks, i);
    const QString column = tavolix::sCampoQualificato(kBooks, i);
    const bool isList = campo.sTipo == QLatin1String(tavolix::CBO);
    columns << (isList ? QStringLiteral("(SELECT [Desc] FROM TAB WHERE TAB.ID = %1)").arg(column)
                       : column);
  }
  return columns.join(u',');
}

void shell(const QString& archive, const QString& sql, const QString& out) {
  QProcess process;
  process.setStandardOutputFile(out);
  process.start(QStringLiteral("sqlite3"),
                {QStringLiteral("-csv"), QStringLiteral("-header"), archive, sql});
  if (!process.waitForFinished(-1) || process.exitCode() != 0) qFatal("sqlite3");
}

QVector<Reading> exportFigure(const Ground& ground) {
  const QString archive = ground.copy(QStringLiteral("esporta.tvx"));
  const QString ourFile = archive + QStringLiteral(".txt");
  const QString otherFile = archive + QStringLiteral(".csv");
  const QString sql =
      QStringLiteral("SELECT ") + columnsOfBooks() + QString::fromLatin1(kBooksJoin + kBooksOrder);
  const auto ours = [&] {
    return secondsOf([&] {
      const store::DatabasePtr database = store::OpenDatabase(archive);
      const store::RecordsetPtr lists =
          database->OpenRecordset(QStringLiteral("TAB"), store::RecordsetType::Table);
      lists->SetIndex(QStringLiteral("1u"));
      tavolix::text_export::writeCollection(kBooks, *database, *lists, ourFile, {}, {});
      database->Close();
    });
  };
  const auto other = [&] { return secondsOf([&] { shell(archive, sql, otherFile); }); };
  return {compared(QStringLiteral("esporta"), inTurn(kRounds, ours, other), 1.5)};
}

}  // namespace

QVector<Figure> exportFigures() {
  return {{QStringLiteral("esporta"), exportFigure, {}}};
}

}  // namespace bench
