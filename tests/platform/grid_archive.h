#pragma once

#include <QTemporaryDir>

#include "platform/record_model.h"
#include "store/database.h"

namespace platform {

// A small archive of books and their publishers, and columns that show one of each kind.
class GridArchive final {
 public:
  explicit GridArchive(int books = 3) {
    database_ = store::CreateDatabase(folder_.filePath(QStringLiteral("libri.tvx")), schema(books));
  }

  store::Database& database() { return *database_; }

  store::RecordsetPtr books() {
    return database_->OpenRecordset(
        QStringLiteral("SELECT LIBRO.*, EDITORE.Nome FROM LIBRO LEFT JOIN EDITORE"
                       " ON LIBRO.Editore = EDITORE.Id ORDER BY LIBRO.Id"),
        store::RecordsetType::Dynaset);
  }

  // What the archive holds, asked for anew.
  QVariant stored(int row, const QString& field) {
    const store::RecordsetPtr fresh = books();
    return fresh->ValueAt(row, fresh->FieldIndex(field));
  }

  enum Place { Title, Year, Price, Bought, Length, Read, Publisher, Pages };
  QVector<GridColumn> columns() {
    using store::FieldKind;
    return {
        {QStringLiteral("Titolo"), QStringLiteral("Titolo"), 3000, true, cell(FieldKind::Text)},
        {QStringLiteral("Anno"), QStringLiteral("Anno"), 0, true, cell(FieldKind::Short, "9999")},
        {QStringLiteral("Prezzo"), QStringLiteral("Prezzo"), 900, true, cell(FieldKind::Number)},
        {QStringLiteral("Acquisto"), QStringLiteral("Acquisto"), 0, true, cell(FieldKind::Date)},
        {QStringLiteral("Durata"), QStringLiteral("Durata"), 0, true, cell(FieldKind::Time)},
        {QStringLiteral("Letto"), QStringLiteral("Letto"), 0, true, cell(FieldKind::YesNo)},
        {QStringLiteral("Editore"), QStringLiteral("Nome"), 1500, true, listCell()},
        {QStringLiteral("Pagine"), QStringLiteral("Pagine"), 600, true,
         cell(FieldKind::Long, "", false)},
    };
  }

 private:
  static ColumnSetup cell(store::FieldKind kind, const char* mask = "", bool editable = true) {
    return {kind, nullptr, {}, 0, QString::fromLatin1(mask), editable};
  }

  ColumnSetup listCell() {
    const auto open = [this] {
      return database_->OpenRecordset(QStringLiteral("SELECT * FROM EDITORE ORDER BY Nome"),
                                      store::RecordsetType::Dynaset);
    };
    const LookupList::Source source{open, QStringLiteral("Id"), QStringLiteral("Nome"),
                                    [](qint64) { return QString(); }};
    return {store::FieldKind::Text,
            std::make_shared<LookupList>(source),
            QStringLiteral("Editore"),
            0,
            {},
            true};
  }

  static QByteArray schema(int books) {
    return "CREATE TABLE EDITORE (Id INTEGER PRIMARY KEY, Nome TEXT(20));"
           "INSERT INTO EDITORE VALUES (7, 'Adelphi'), (8, 'Bompiani'), (9, 'Bur');"
           "CREATE TABLE LIBRO (Id INTEGER PRIMARY KEY, Titolo TEXT(20), Anno SHORT,"
           " Prezzo DOUBLE, Acquisto DATE, Durata TIME, Letto YESNO, Editore LONG, Pagine LONG);"
           "CREATE UNIQUE INDEX LIBRO_1u ON LIBRO (Titolo);"
           "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
           QByteArray::number(books) +
           ") INSERT INTO LIBRO SELECT i, 'Libro ' || i, 1990, 12.5, 36526, 3723, 0, 7, 1234"
           " FROM n;";
  }

  QTemporaryDir folder_;
  store::DatabasePtr database_;
};

}  // namespace platform
