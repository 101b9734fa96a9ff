#pragma once

#include <QTemporaryDir>

#include "platform/record_model.h"
#include "store/database.h"

namespace platform {

// A small archive of books and their publishers, and columns that show one of each kind.
class GridArchive final {
 public:
  explicit GridArchive(int books = 3) {
    database_ = store::CreateDatabase(folder_.filePath("libri.tvx"), schema(books));
  }

  store::Database& database() { return *database_; }

  store::RecordsetPtr books() {
    return open(
        "SELECT LIBRO.*, EDITORE.Nome FROM LIBRO LEFT JOIN EDITORE"
        " ON LIBRO.Editore = EDITORE.Id ORDER BY LIBRO.Id");
  }

  // What the archive holds, asked for anew.
  QString stored(int row, const QString& field) {
    const store::RecordsetPtr fresh = books();
    return fresh->ValueAt(row, fresh->FieldIndex(field)).toString();
  }

  // As another window of the program would.
  void rename(int row, const QString& title) {
    const store::RecordsetPtr fresh = books();
    fresh->SetAbsolutePosition(row);
    fresh->Edit();
    fresh->SetValue("Titolo", title);
    fresh->Update();
  }

  // The publishers, read when they are first asked for.
  LookupListPtr list() {
    const auto all = [this] {
      ++loads;
      return open("SELECT * FROM EDITORE ORDER BY Nome");
    };
    const auto textOf = [this](qint64 key) {
      const auto row = open(QString("SELECT Nome FROM EDITORE WHERE Id = %1").arg(key));
      return row->RecordCount() == 0 ? QString() : row->Value(0).toString();
    };
    return std::make_shared<LookupList>(LookupList::Source{all, "Id", "Nome", textOf});
  }
  int loads = 0;

  enum Place { Title, Year, Price, Bought, Length, Read, Publisher, Pages };
  QVector<GridColumn> columns() {
    using store::FieldKind;
    return {column("Titolo", FieldKind::Text),
            column("Anno", FieldKind::Short, "9999"),
            column("Prezzo", FieldKind::Number),
            column("Acquisto", FieldKind::Date),
            column("Durata", FieldKind::Time),
            column("Letto", FieldKind::YesNo),
            {"Editore", "Nome", 1500, true, {FieldKind::Text, list(), "Editore", 0, {}, true}},
            column("Pagine", FieldKind::Long)};
  }

 private:
  static GridColumn column(const QString& field, store::FieldKind kind, const QString& mask = {}) {
    return {field, field, 0, true, {kind, nullptr, {}, 0, mask, true}};
  }

  store::RecordsetPtr open(const QString& query) {
    return database_->OpenRecordset(query, store::RecordsetType::Dynaset);
  }

  static QByteArray schema(int books) {
    return "CREATE TABLE EDITORE (Id INTEGER PRIMARY KEY, Nome TEXT(20) COLLATE ITALIANO);"
           "INSERT INTO EDITORE VALUES (7, 'Adelphi'), (3, 'Einaudi'), (4, 'El Aleph'),"
           " (5, 'Elliot'), (12, 'Edizioni Èlite'), (20, 'èa'), (21, 'L''Orma'), (22, '[*]');"
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
