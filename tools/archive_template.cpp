#include "tools/archive_template.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <filesystem>

#include "model/cifratura.h"
#include "model/raccolte.h"
#include "tools/list_table.h"
#include "tools/source_table.h"

namespace tavolix::builder {
namespace {

using store::RecordsetPtr;
using store::RecordsetType;

QByteArray contentOf(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    throw store::Failure(store::failure::kFileNotFound,
                         QStringLiteral("Impossibile leggere il file %1").arg(path));
  }
  return file.readAll();
}

// Lists follow from the field table; the other queries stand in files of their own.
void addQueries(store::Database& database, const QDir& folder) {
  for (int i = 0; i < kRaccolte; ++i) database.CreateQueryDef(aRaccolte(i).sQuery, sQueryElenco(i));
  for (const QFileInfo& file : folder.entryInfoList({QStringLiteral("*.sql")}, QDir::Files)) {
    database.CreateQueryDef(file.completeBaseName(),
                            QString::fromUtf8(contentOf(file.filePath())).trimmed());
  }
}

void addSetting(const RecordsetPtr& rows, const char* name, const QVariantMap& values) {
  rows->AddNew();
  rows->SetValue(QStringLiteral("dsc"), QString::fromLatin1(name));
  for (auto value = values.begin(); value != values.end(); ++value) {
    rows->SetValue(value.key(), value.value());
  }
  rows->Update();
}

void addSettings(store::Database& database) {
  const RecordsetPtr settings = database.OpenRecordset(QStringLiteral("CFG"), RecordsetType::Table);
  addSetting(settings, "DB_VERSION", {{QStringLiteral("nVal"), 1}});
  addSetting(settings, "DB_APPLICATION", {{QStringLiteral("sVal"), QStringLiteral("Tavolix")}});
  addSetting(settings, "PWD",
             {{QStringLiteral("sVal"), sCodiceCifrato({})}, {QStringLiteral("nVal"), 0}});
  const RecordsetPtr counter = database.OpenRecordset(QStringLiteral("CONT"), RecordsetType::Table);
  counter->AddNew();
  counter->SetValue(QStringLiteral("ID"), 0);
  counter->Update();
}

void addLists(store::Database& database, const SourceTable& source) {
  const int code = source.column(QStringLiteral("TipoTab"));
  const int collection = source.column(QStringLiteral("TipoRac"));
  const int text = source.column(QStringLiteral("Desc"));
  const int isDefault = source.column(QStringLiteral("Default"));
  const store::FieldInfo number{{}, {}, {}, store::FieldKind::Short, 0, {}, true};
  const store::FieldInfo yesNo{{}, {}, {}, store::FieldKind::YesNo, 0, {}, true};
  const QVector<ListName> known = listNames();
  ListTable lists(database);
  QHash<ListName, bool> withDefault;
  for (qsizetype row = 0; row < source.rows(); ++row) {
    const ListName name{source.text(row, code), source.value(row, collection, number).toInt()};
    const QString desc = source.value(row, text, lists.textColumn()).toString();
    const bool chosen = source.value(row, isDefault, yesNo).toInt() != 0;
    if (!known.contains(name)) source.reject(row, code, QStringLiteral("lista sconosciuta"));
    if (desc.isEmpty()) source.reject(row, text, QStringLiteral("testo vuoto"));
    if (lists.find(name, desc) != 0) source.reject(row, text, QStringLiteral("testo ripetuto"));
    if (chosen && withDefault[name]) {
      source.reject(row, isDefault, QStringLiteral("secondo predefinito della lista"));
    }
    withDefault[name] = withDefault[name] || chosen;
    lists.add(name, desc, chosen);
  }
}

void addGridColumns(store::Database& database, const SourceTable& source) {
  const RecordsetPtr grids =
      database.OpenRecordset(QStringLiteral("GRDCONFIG"), RecordsetType::Table);
  const int query = source.column(QStringLiteral("NomeQuery"));
  const int place = source.column(QStringLiteral("Colonna"));
  const int field = source.column(QStringLiteral("NomeCampo"));
  RecordsetPtr shown;
  QString current;
  int next = 0;
  for (qsizetype row = 0; row < source.rows(); ++row) {
    if (source.text(row, query) != current) {
      current = source.text(row, query);
      if (!database.QueryDefs().contains(current)) {
        source.reject(row, query, QStringLiteral("query inesistente: %1").arg(current));
      }
      shown = database.OpenRecordset(current, RecordsetType::Snapshot);
      next = 0;
    }
    if (source.text(row, place) != QString::number(next++)) {
      source.reject(row, place, QStringLiteral("numerazione interrotta"));
    }
    if (shown->FindField(source.text(row, field)) < 0) {
      source.reject(row, field, QStringLiteral("la query non ha il campo"));
    }
    grids->AddNew();
    for (int i = 0; i < source.columns().size(); ++i) {
      const int target = grids->FieldIndex(source.columns()[i]);
      grids->SetValue(target, source.value(row, i, grids->Fields()[target]));
    }
    grids->Update();
  }
}

void fillTemplate(store::Database& database, const QDir& data) {
  store::Transaction transaction(database);
  addQueries(database, QDir(data.filePath(QStringLiteral("queries"))));
  addSettings(database);
  addLists(database, SourceTable::read(data.filePath(QStringLiteral("lists/liste.tsv"))));
  addGridColumns(database, SourceTable::read(data.filePath(QStringLiteral("griglie.tsv"))));
  transaction.Commit();
}

void moveInto(const QString& from, const QString& to) {
  std::error_code error;
  std::filesystem::rename(from.toStdString(), to.toStdString(), error);
  if (error) {
    throw store::Failure(store::failure::kCannotOpen,
                         QStringLiteral("Impossibile scrivere il file %1").arg(to));
  }
}

}  // namespace

void buildArchive(const QString& dataFolder, const QString& out,
                  const std::function<void(store::Database&)>& fill) {
  const QDir data(dataFolder);
  buildDatabase(data.filePath(QStringLiteral("schema/archivio.sql")), out,
                [&](store::Database& database) {
                  fillTemplate(database, data);
                  if (fill) fill(database);
                });
}

void buildDatabase(const QString& schema, const QString& out,
                   const std::function<void(store::Database&)>& fill) {
  const QString part = out + QStringLiteral(".part");
  const QByteArray statements = contentOf(schema);
  QFile::remove(part);
  const auto cleanup = qScopeGuard([&] { QFile::remove(part); });
  const store::DatabasePtr database = store::CreateDatabase(part, statements);
  fill(*database);
  database->Close();
  moveInto(part, out);
}

}  // namespace tavolix::builder
