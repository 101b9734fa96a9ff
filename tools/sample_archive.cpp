#include "tools/sample_archive.h"

#include <QDir>
#include <array>

#include "model/campi.h"
#include "model/raccolte.h"
#include "tools/list_table.h"
#include "tools/record_writer.h"
#include "tools/source_table.h"

namespace tavolix::builder {
namespace {

class SampleLoader final {
 public:
  SampleLoader(store::Database& database, const QString& folder)
      : folder_(folder), lists_(database), writer_(database) {}

  void loadAll() {
    for (int i = 0; i < kRaccoltePrincipali; ++i) loadRecords(i);
    for (int i = 0; i < kRaccoltePrincipali; ++i) {
      if (aRaccolte(i).iSottoRaccolta >= 0) {
        loadChildren(aRaccolte(i).iSottoRaccolta, keys_[static_cast<std::size_t>(i)]);
      }
    }
    writer_.saveCounter();
  }

 private:
  using KeyOfCode = QHash<QString, qint64>;

  // "Oggetti Vari" has its records in oggetti.tsv.
  SourceTable source(int collection) const {
    const QString name = aRaccolte(collection).sNome.section(u' ', 0, 0).toLower();
    return SourceTable::read(folder_.filePath(name + QStringLiteral(".tsv")));
  }

  static int findField(int collection, const QString& column) {
    for (int j = 0; j < iNumeroCampi(collection); ++j) {
      if (aCampi(collection, j).sCampoDB.compare(column, Qt::CaseInsensitive) == 0) return j;
    }
    return -1;
  }

  // The field of each column, -1 for the column `except` that is none.
  static QVector<int> fieldsOf(const SourceTable& table, int collection, int except) {
    QVector<int> fields;
    for (int column = 0; column < table.columns().size(); ++column) {
      fields.append(column == except ? -1 : findField(collection, table.columns()[column]));
      if (column != except && fields.last() < 0) {
        table.rejectLine(1, QStringLiteral("colonna %1: la raccolta non ha questo campo")
                                .arg(table.columns()[column]));
      }
    }
    return fields;
  }

  QVariant value(const SourceTable& table, qsizetype row, int column, int collection, int field) {
    const tCampo& campo = aCampi(collection, field);
    if (campo.sTipo != QLatin1String(CBO)) {
      return table.value(row, column, writer_.column(collection, field));
    }
    const QString text = table.value(row, column, lists_.textColumn()).toString();
    return text.isEmpty() ? QVariant() : lists_.findOrAdd({campo.sCodTab, campo.iRacTab}, text);
  }

  QVector<QVariant> record(const SourceTable& table, qsizetype row, int collection,
                           const QVector<int>& fields) {
    QVector<QVariant> values(iNumeroCampi(collection));
    for (int column = 0; column < fields.size(); ++column) {
      const int field = fields[column];
      if (field >= 0) values[field] = value(table, row, column, collection, field);
    }
    return values;
  }

  void loadRecords(int collection) {
    const SourceTable table = source(collection);
    const QVector<int> fields = fieldsOf(table, collection, -1);
    const int code = table.column(QStringLiteral("Cod"));
    KeyOfCode& keys = keys_[static_cast<std::size_t>(collection)];
    for (qsizetype row = 0; row < table.rows(); ++row) {
      const QString& cell = table.text(row, code);
      if (cell.isEmpty()) table.reject(row, code, QStringLiteral("manca"));
      if (keys.contains(cell)) table.reject(row, code, QStringLiteral("codice ripetuto: ") + cell);
      keys.insert(cell, writer_.addRecord(collection, record(table, row, collection, fields)));
    }
  }

  void loadChildren(int collection, const KeyOfCode& parents) {
    const SourceTable table = source(collection);
    const int parent = table.column(QStringLiteral("Riferimento"));
    const QVector<int> fields = fieldsOf(table, collection, parent);
    for (qsizetype row = 0; row < table.rows(); ++row) {
      const auto found = parents.constFind(table.text(row, parent));
      if (found == parents.constEnd()) {
        table.reject(row, parent, QStringLiteral("codice inesistente: ") + table.text(row, parent));
      }
      writer_.addChild(collection, *found, record(table, row, collection, fields));
    }
  }

  QDir folder_;
  ListTable lists_;
  RecordWriter writer_;
  std::array<KeyOfCode, kRaccoltePrincipali> keys_;
};

}  // namespace

void addSampleRecords(store::Database& database, const QString& folder) {
  store::Transaction transaction(database);
  SampleLoader(database, folder).loadAll();
  // A magazine's title is made of its other fields.
  database.Execute(QStringLiteral("Q_AggiornaTitoliRiviste"));
  transaction.Commit();
}

}  // namespace tavolix::builder
