#include "tools/record_writer.h"

#include "model/campi.h"
#include "model/raccolte.h"

namespace tavolix::builder {
namespace {

const QString kCounter = QStringLiteral("ID");

store::RecordsetPtr openTable(store::Database& database, const QString& table) {
  return table.isEmpty() ? nullptr : database.OpenRecordset(table, store::RecordsetType::Table);
}

}  // namespace

RecordWriter::RecordWriter(store::Database& database)
    : counter_(openTable(database, QStringLiteral("CONT"))),
      last_(counter_->Value(kCounter).toLongLong()) {
  for (int i = 0; i < kRaccolte; ++i) tables_.append(open(database, i));
}

RecordWriter::Tables RecordWriter::open(store::Database& database, int collection) {
  const tRaccolta& raccolta = aRaccolte(collection);
  Tables tables{openTable(database, raccolta.sTabPrincipale),
                openTable(database, raccolta.sTabDettaglio),
                {}};
  for (int j = 0; j < iNumeroCampi(collection); ++j) {
    const tCampo& campo = aCampi(collection, j);
    const store::RecordsetPtr& rows = campo.bPrincipale ? tables.main : tables.detail;
    tables.fields.append({rows, rows->FieldIndex(campo.sCampoDB)});
  }
  return tables;
}

const store::FieldInfo& RecordWriter::column(int collection, int field) const {
  const Place& place = tables_[collection].fields[field];
  return place.rows->Fields()[place.column];
}

// Null is written too: the store then prepares one statement for all rows of a table. No choice
// from a list is 0, as the program's own forms write it.
void RecordWriter::fill(int collection, const QVector<QVariant>& values) {
  const Tables& tables = tables_[collection];
  for (qsizetype j = 0; j < values.size(); ++j) {
    const QString& tipo = aCampi(collection, static_cast<int>(j)).sTipo;
    const bool none = tipo == QLatin1String(CBO) && !values[j].isValid();
    tables.fields[j].rows->SetValue(tables.fields[j].column, none ? QVariant(0) : values[j]);
  }
}

qint64 RecordWriter::addRecord(int collection, const QVector<QVariant>& values) {
  const tRaccolta& raccolta = aRaccolte(collection);
  const Tables& tables = tables_[collection];
  ++last_;
  tables.main->AddNew();
  tables.detail->AddNew();
  tables.main->SetValue(raccolta.sCampoLegame, last_);
  tables.main->SetValue(QStringLiteral("TipoRac"), collection);
  tables.detail->SetValue(raccolta.sCampoID, last_);
  fill(collection, values);
  tables.main->Update();
  tables.detail->Update();
  return last_;
}

void RecordWriter::addChild(int collection, qint64 parent, const QVector<QVariant>& values) {
  const Tables& tables = tables_[collection];
  tables.main->AddNew();
  tables.main->SetValue(aRaccolte(collection).sCampoPadre, parent);
  fill(collection, values);
  tables.main->Update();
}

void RecordWriter::saveCounter() {
  counter_->Edit();
  counter_->SetValue(kCounter, last_);
  counter_->Update();
}

}  // namespace tavolix::builder
