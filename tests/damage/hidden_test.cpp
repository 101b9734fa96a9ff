// An archive is data: what its schema hides is not run, or the archive is refused.

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "harm/archive_file.h"
#include "store/archive.h"

namespace store {
namespace {

constexpr auto kDynaset = RecordsetType::Dynaset;

// What a program does with an archive: reads and writes all that the hidden things hang on.
void use(const QString& path) {
  const DatabasePtr database = OpenDatabase(path);
  const RecordsetPtr rows = database->OpenRecordset("Q_AUD", kDynaset);
  for (int field = 0; field < rows->Fields().size(); ++field) rows->ValueAt(0, field);
  rows->MoveLast();
  rows->Edit();
  rows->SetValue("Titolo", "Cambiato");
  rows->Update();
  const auto add = [&] {
    rows->AddNew();
    rows->SetValue("AUD.ID", 77777);
    rows->SetValue("TipoRac", 2);
    rows->Update();
  };
  add();
  // Whatever the table says of conflicts, a row is not replaced.
  EXPECT_EQ(failureOf(add), 3022);
  rows->MoveFirst();
  rows->Delete();
  database->CreateQueryDef("Q_NUOVA", "SELECT * FROM TAB");
  database->DeleteQueryDef("Q_NUOVA");
  const RecordsetPtr texts = database->OpenRecordset("TAB", RecordsetType::Table);
  texts->SetIndex("2");
  texts->Seek(">=", {"AUTORE", 0});
}

struct Result {
  int failure = 0;
  QString said;
  QByteArray contents;
};

Result resultOf(const QByteArray& file) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("a.tvx"));
  harm::write(path, file);
  Result result;
  try {
    use(path);
  } catch (const Failure& failure) {
    result.failure = failure.number();
    result.said = failure.description();
  }
  CloseWorkspace();
  result.contents = harm::contentsOf(path, {"MAIN", "AUD", "TAB", "CFG", "QUERYDEF"});
  return result;
}

struct Hidden {
  const char* name;
  QByteArray statements;
  int failure;       // 0: it opens, and is the same as without
  const char* said;  // a part of the description
};

QByteArray sql(const char* name, const char* from, const char* to) {
  return QByteArray("PRAGMA writable_schema = 1; UPDATE sqlite_schema SET sql = replace(sql, '") +
         from + "', '" + to + "') WHERE name = '" + name + "'";
}

QByteArray query(const QByteArray& text) {
  return "UPDATE QUERYDEF SET Sql = '" + QByteArray(text).replace("'", "''") +
         "' WHERE Name = 'Q_AUD'";
}

const char* const kRefused = "non e' quella di un archivio";
const Hidden kHidden[] = {
    {"triggers",
     "CREATE TRIGGER a AFTER INSERT ON MAIN BEGIN DELETE FROM TAB; END;"
     "CREATE TRIGGER b BEFORE UPDATE ON MAIN BEGIN DELETE FROM CFG; END;"
     "CREATE TRIGGER c AFTER DELETE ON AUD BEGIN DELETE FROM MAIN; END;"
     "CREATE TRIGGER d AFTER INSERT ON QUERYDEF BEGIN DELETE FROM TAB; END",
     0, ""},
    {"view",
     "CREATE VIEW V AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT * "
     "FROM n",
     0, ""},
    {"view named like a table",
     "ALTER TABLE AUD RENAME TO VERA; CREATE VIEW AUD AS SELECT * FROM VERA WHERE ID < 0", 3078,
     "AUD"},
    {"virtual table named like a table",
     "ALTER TABLE AUD RENAME TO VERA; CREATE VIRTUAL TABLE AUD USING fts4(ID)", 3078, "AUD"},
    {"foreign key that deletes",
     "PRAGMA foreign_keys = 0; CREATE TABLE F (M LONG REFERENCES MAIN (ID) ON DELETE CASCADE);"
     "PRAGMA writable_schema = 1; UPDATE sqlite_schema SET sql = replace(sql, 'TipoTab TEXT(12)', "
     "'TipoTab TEXT(12) REFERENCES AUD (ID) ON DELETE CASCADE') WHERE name = 'TAB'",
     0, ""},
    {"check that fails", sql("MAIN", "Voto DOUBLE", "Voto DOUBLE CHECK (Titolo = 1)"), 0, ""},
    {"check that calls",
     sql("MAIN", "Voto DOUBLE", "Voto DOUBLE CHECK (load_extension(1) OR tvx_take(1))"), 0, ""},
    {"replacing rows",
     "DROP INDEX AUD_1u; " + sql("AUD", "PRIMARY KEY", "PRIMARY KEY ON CONFLICT REPLACE"), 0, ""},
    {"generated column", "ALTER TABLE MAIN ADD COLUMN X AS (length(hex(Titolo)))", 3343, kRefused},
    {"stored generated column", sql("AUD", "Durata TIME", "Durata TIME AS (1) STORED"), 3343,
     kRefused},
    {"default that is worked out", sql("MAIN", "Voto DOUBLE", "Voto DOUBLE DEFAULT (random())"),
     3343, kRefused},
    {"default text", sql("MAIN", "Cod TEXT(15)", "Cod TEXT(15) DEFAULT spia"), 3343, kRefused},
    {"index of an expression", "CREATE INDEX X ON MAIN (length(Titolo))", 3343, kRefused},
    {"index of some rows", "CREATE INDEX MAIN_9 ON MAIN (Titolo) WHERE Anno > 1900", 3343,
     kRefused},
    {"index of a foreign function", sql("TAB_3", "\"Default\"", "tvx_take(\"Default\")"), 3049,
     "danneggiato"},
    {"column named like the number", "ALTER TABLE AUD ADD COLUMN rowid", 3343, kRefused},
    {"unknown collation",
     sql("MAIN", "Titolo TEXT(150) COLLATE ITALIANO", "Titolo TEXT(150) COLLATE ALTRO"), 0, ""},
    {"statistics", "ANALYZE; UPDATE sqlite_stat1 SET stat = '1 1 1'", 0, ""},
    {"query attaches", query("ATTACH 'x' AS y"), 3075, "sintassi"},
    {"query of two statements", query("SELECT * FROM AUD; DELETE FROM TAB"), 3075, "sintassi"},
    {"query is a pragma", query("PRAGMA writable_schema = 1"), 3075, "sintassi"},
    {"query of a function's table", query("SELECT * FROM pragma_table_info('MAIN')"), 3075,
     "sintassi"},
    {"query of the schema", query("SELECT * FROM sqlite_schema"), 3078, "sqlite_schema"},
    {"query of a module", query("SELECT * FROM dbstat"), 3078, "dbstat"},
    {"query loads code", query("SELECT load_extension('x') FROM AUD"), 3075,
     "Funzione non ammessa"},
    {"query takes", query("SELECT tvx_take(ID) FROM AUD"), 3075, "Funzione non ammessa"},
    {"endless query",
     query("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i FROM n) SELECT * FROM n"), 3075,
     "sintassi"},
    {"query of itself", query("SELECT * FROM Q_AUD"), 3360, "richiama se stessa"},
    {"queries of each other", query("SELECT * FROM Q_REP_2"), 3360, "richiama se stessa"},
};

TEST(Hidden, IsNotRun) {
  const QByteArray good = harm::smallArchive(60);
  const Result wanted = resultOf(good);
  ASSERT_EQ(wanted.failure, 0) << qPrintable(wanted.said);
  for (const Hidden& hidden : kHidden) {
    SCOPED_TRACE(hidden.name);
    const QByteArray file = harm::after(good, {hidden.statements});
    ASSERT_NE(file, good);
    const Result result = resultOf(file);
    EXPECT_EQ(result.failure, hidden.failure) << qPrintable(result.said);
    EXPECT_TRUE(result.said.contains(QLatin1String(hidden.said))) << qPrintable(result.said);
    if (hidden.failure == 0) {
      EXPECT_TRUE(result.contents == wanted.contents);
    }
  }
}

}  // namespace
}  // namespace store
