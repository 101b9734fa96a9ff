#include "archives/preparazione.h"

#include <QFile>

#include "model/campi.h"
#include "model/raccolte.h"

namespace tavolix {
namespace {

QByteArray schema() {
  QFile file(QStringLiteral(":/archivio/archivio.sql"));
  file.open(QIODevice::ReadOnly);
  return file.readAll();
}

QVector<store::TableColumn> columnsOfFields() {
  QVector<store::TableColumn> columns;
  for (int i = 0; i < kRaccolte; ++i) {
    for (int j = 0; j < iNumeroCampi(i); ++j) {
      const QString name = sCampoQualificato(i, j);
      columns.append({name.section(u'.', 0, 0), name.section(u'.', 1)});
    }
  }
  return columns;
}

QVector<store::KeyColumn> keysOfRecords() {
  QVector<store::KeyColumn> keys;
  for (int i = 0; i < kRaccoltePrincipali; ++i) {
    const tRaccolta& raccolta = aRaccolte(i);
    keys.append({raccolta.sTabPrincipale, raccolta.sCampoLegame, QStringLiteral("TipoRac"), i});
    keys.append({raccolta.sTabDettaglio, raccolta.sCampoID, {}, {}});
  }
  return keys;
}

}  // namespace

void PreparaArchivio(store::Database& db) {
  db.AddMissingColumns(columnsOfFields(), schema());
  db.RaiseCounter({QStringLiteral("CONT"), QStringLiteral("ID")}, keysOfRecords());
}

}  // namespace tavolix
