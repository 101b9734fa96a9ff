#include <gtest/gtest.h>

#include "store/archive.h"
#include "store/connection.h"

namespace store {
namespace {

struct Selection {
  const char* source;
  const char* field;
  const char* values;
};

void expectSelections(const Archive& archive, const std::vector<Selection>& cases) {
  for (const Selection& each : cases) {
    QString values;
    const int number = failureOf(
        [&] { values = valuesOf(*archive.open(QString::fromUtf8(each.source)), each.field); });
    EXPECT_EQ(number, 0) << each.source;
    EXPECT_EQ(values.toStdString(), each.values) << each.source;
  }
}

int failureOfSource(const Archive& archive, const QString& source) {
  return failureOf([&] { archive.open(source); });
}

TEST(Sql, NamesAndSources) {
  const Archive archive;
  const std::vector<Selection> cases = {
      {"  cfg ", "DSC", "uno due"},
      {"q_Lib", "main.id", "7 6 5 4 3 2 1"},
      {"Q_REP_0", "lib.sottotitolo", "sette sei cinque quattro tre due uno"},
      {"SELECT [desc] FROM [tab] WHERE DEFAULT = True ORDER BY [DESC]", "Desc", "Calvino Saggio"},
      {"select Desc from TAB where [Default] = false and ID = 5", "DESC", "Romanzo"},
      {"SELECT TAB.Desc FROM TAB WHERE ID < 4 ORDER BY TAB.Desc DESC", "Desc", "Èlia Eco Calvino"},
      {"SELECT t.[Desc] AS Nome FROM TAB AS t WHERE t.ID = 1", "Nome", "Eco"},
      {"SELECT t.ID FROM TAB t WHERE t.ID < 3", "TAB.ID", "1 2"},
      {"SELECT Main.* FROM Main,Lib WHERE RacID=Lib.Id AND SottoTitolo='due';", "ID", "2"},
      {"SELECT*FROM((MAIN)INNER JOIN RIV ON(RIV.ID=RacID))", "Numero", "5 -"},
      {"SELECT DISTINCT TipoTab FROM TAB WHERE ID > 4", "TipoTab", "GENERE PROPR TESTATA"},
      {"SELECT ID * 2 + 1, Cod FROM MAIN WHERE ID < 3", "Expr0", "3 5"},
      {" SELECT\t*\nFROM Q_LIB ORDER BY LIB.ID DESC ;  ", "MAIN.ID", "1 2 3 4 5 6 7"},
  };
  expectSelections(archive, cases);
}

// Conditions on Q_LIB, whose rows come in the order of LIB.ID.
TEST(Sql, Conditions) {
  const Archive archive;
  const std::pair<const char*, const char*> cases[] = {
      {"MAIN.Titolo = 'PERCHÉ'", "4"},
      {"'il' > Titolo", "6 3"},
      {"Titolo = '' or Titolo Is Null AND TipoRac <> 3", "7 6"},
      {"Titolo = '' OR Titolo Is Null AND TipoRac = 3", "6"},
      {"(Titolo = '' OR Titolo Is Null) AND TipoRac = 3", ""},
      {"NOT Titolo = '' AND Anno > 1990", "5 4 3"},
      {"NOT (Titolo = '' OR Anno > 1990)", "2 1"},
      {"Titolo Between 'i' And 'perche'", "5 2 1"},
      {"Titolo Not Between 'i' And 'perche'", "6 4 3"},
      {"MAIN.ID Not In (1, 1 + 1, -(-3))", "7 6 5 4"},
      {"Left(Titolo, 2) In ('PE', 'BA')", "5 4 3"},
      {"Titolo Like 'perch[ée]'", "5 4"},
      {"Anno Like '199#'", "5 4 3"},
      {"(Anno > 1990) = True", "7 5 4 3"},
      {"(Anno > 1990) + (Valore > 4) = -2", "5 4"},
      {"Abs(-MAIN.ID / 2) = 2.5", "5"},
      {"Valore = .5 + 12", "1"},
      {"Len(Valore) = 4", "1"},
      {"Mid(Titolo, 4, 6) = 'barone' OR Mid(Titolo, 9) = 'della rosa'", "2 1"},
      {"Left(Titolo, -1) = '' AND Titolo <> ''", "5 4 3 2 1"},
      {"IIf(IsNull(Anno), 'x', 'y') = 'X'", "6"},
      {"Nz(Valore, -1) = -1", "3"},
      {"Int(Valore) = 12", "1"},
      {"Round(Valore / 3, 1) = 4.2 OR Round(Valore / 3) = 7", "5 1"},
      {"Trim('  ' & Titolo & ' ') = 'perche'", "5"},
      {"Titolo & Anno = 'PERCHE1995'", "5"},
      {"Titolo + 'x' Is Null", "7"},
      {"CStr(Valore) = '12,5' OR CStr(Valore) = '10'", "2 1"},
      {"'L''isola' = \"l'isola\" AND 'dice \"ciao\"' = \"DICE \"\"CIAO\"\"\" AND MAIN.ID = 1", "1"},
      {"'50* di [x]' Like '50[*]*[[]x]' AND MAIN.ID = 1", "1"},
      {"(SELECT [Desc] FROM TAB WHERE TAB.ID = MAIN.ID) = 'ECO'", "1"},
      {"Valore > (SELECT Avg(Valore) FROM MAIN WHERE TipoRac = 0)", "5 2 1"},
  };
  const RecordsetPtr books = archive.open("Q_LIB");
  for (const auto& [condition, ids] : cases) {
    const QString text = QString::fromUtf8(condition);
    const RecordsetPtr list = archive.open("SELECT * FROM Q_LIB WHERE " + text);
    EXPECT_EQ(valuesOf(*list, "MAIN.ID").toStdString(), ids) << condition;
    // The same as a search, which binds names to the recordset's own columns.
    QStringList found;
    for (books->FindFirst(text); !books->NoMatch(); books->FindNext(text)) {
      found.append(textOf(books->Value("MAIN.ID")));
    }
    EXPECT_EQ(found.join(u' ').toStdString(), ids) << condition;
  }
}

TEST(Sql, StoredQueriesOverStoredQueries) {
  const Archive archive;
  archive->CreateQueryDef("Q_K", "SELECT ID, 'k' AS K FROM RIV");
  archive->CreateQueryDef("Q_W", "SELECT * FROM RIV WHERE Numero = 5");
  archive->CreateQueryDef("Q_DUE", "SELECT 'a' AS X FROM CFG UNION SELECT 'A' FROM CFG");
  const std::vector<Selection> cases = {
      {"SELECT * FROM Q_GRUPPI_STEP1 WHERE MAIN.Titolo = 'perché'", "Main.ID", "4"},
      {"SELECT MAIN.Titolo AS T, LIB.ID FROM Q_GRUPPI_STEP1 WHERE LIB.ID = 13", "T", "PERCHE"},
      {"Q_GRUPPI_STEP2", "TabID", "- 1 2 3 4"},
      {"Q_GRUPPI_STEP2", "TotValore", "- 32.5 15 2 1"},
      {"Q_GRUPPI_STEP3", "TotValore", "- 15 1 32.5 2"},
      {"SELECT TABAutoreID, Sum(Valore) AS S FROM Q_GRUPPI_STEP1 GROUP BY TABAutoreID "
       "HAVING Count(*) > 1 ORDER BY TABAutoreID DESC",
       "S", "15 32.5"},
      {"SELECT Sum(TotValore) AS S FROM Q_GRUPPI_STEP2 WHERE TotQuantita = 2", "S", "47.5"},
      {"SELECT Min(Titolo) AS M FROM Q_LIB WHERE Titolo > 'c'", "M", "Il barone rampante"},
      {"SELECT Count(Valore) AS N, Sum(Valore) AS S FROM MAIN WHERE ID > 100", "N", "0"},
      {"SELECT TAB.ID, TotQuantita AS N FROM TAB LEFT JOIN Q_GRUPPI_STEP2 ON TAB.ID = "
       "Q_GRUPPI_STEP2.TabID WHERE TipoTab <> 'PROPR' ORDER BY TAB.ID",
       "N", "2 2 1 1 - - -"},
      {"SELECT MAIN.ID, K FROM MAIN LEFT JOIN Q_K ON RacID = Q_K.ID WHERE MAIN.ID > 6", "K",
       "- k k"},
      {"SELECT MAIN.ID, Numero FROM MAIN LEFT JOIN Q_W ON RacID = Q_W.ID WHERE MAIN.ID > 6",
       "Numero", "- 5 -"},
      {"SELECT TAB.ID, MAIN.ID AS M FROM TAB LEFT JOIN MAIN ON MAIN.TABAutoreID = TAB.ID "
       "WHERE TAB.ID < 5 ORDER BY TAB.ID, MAIN.ID",
       "M", "1 5 2 4 7 6"},
      {"Q_ELENCHI_MULTIPLI_STEP2", "Proprietario", "- - - - Mia Mia Mia Mia Mia"},
      {"Q_ELENCHI_MULTIPLI_STEP2", "TipoRac", "0 0 0 1 0 0 0 0 1"},
      {"SELECT Count(*) AS N FROM Q_DUE", "N", "1"},
      {"SELECT 'a' AS X FROM CFG UNION ALL SELECT 'A' FROM CFG", "X", "a a A A"},
  };
  expectSelections(archive, cases);
}

TEST(Sql, Failures) {
  const Archive archive;
  const std::pair<int, const char*> cases[] = {
      {3078, "NESSUNA||DELETE FROM MAIN|PRAGMA writable_schema = 1|ATTACH 'x' AS y"},
      {3078, "SELECT * FROM sqlite_schema|SELECT * FROM pragma_table_info|SELECT X.* FROM MAIN"},
      {3061, "SELECT Nessuno FROM MAIN|SELECT rowid FROM MAIN|SELECT X.ID FROM MAIN"},
      {3061, "SELECT ID FROM MAIN, LIB|SELECT ID FROM Q_LIB|SELECT * FROM MAIN ORDER BY Nessuno"},
      {3075, "SELECT FROM MAIN|SELECT * MAIN|SELECT * FROM MAIN WHERE|SELECT [ID FROM MAIN"},
      {3075, "SELECT * FROM MAIN WHERE Anno = 1,5|SELECT * FROM MAIN WHERE Anno = 1.5.2"},
      {3075, "SELECT * FROM MAIN WHERE (ID = 1|SELECT * FROM MAIN WHERE ID = 1)"},
      {3075, "SELECT * FROM MAIN WHERE Titolo = 'aperto|SELECT * FROM MAIN WHERE ID = ?"},
      {3075, "SELECT * FROM MAIN ORDER Titolo|SELECT * FROM MAIN LIMIT 1|SELECT * FROM MAIN --"},
      {3075, "SELECT load_extension('x') FROM MAIN|SELECT tvx_text(ID) FROM MAIN"},
      {3075, "SELECT Len() FROM MAIN|SELECT Sum(Count(ID)) FROM MAIN"},
      {3075, "SELECT ID FROM MAIN UNION SELECT ID, Cod FROM MAIN"},
      {3075, "SELECT ID FROM MAIN UNION SELECT ID FROM MAIN ORDER BY ID"},
      {3075, "SELECT * FROM MAIN; DROP TABLE MAIN"},
      {6, "SELECT * FROM MAIN WHERE Anno = 1e400"},
  };
  for (const auto& [number, sources] : cases) {
    for (const std::string& source : split(sources)) {
      EXPECT_EQ(failureOfSource(archive, QString::fromStdString(source)), number) << source;
    }
  }
  EXPECT_EQ(archive.open("MAIN")->RecordCount(), 9);
}

// What would grow or run beyond what anyone waits for ends with a failure, and the archive goes on.
TEST(Sql, QueriesThatGrowOrLeadToThemselves) {
  const Archive archive;
  const qint64 before = std::exchange(mostSteps, 1'000'000);
  const RecordsetPtr rows = archive.open("MAIN");
  const QString crossed = "0 < (SELECT Count(*) FROM MAIN" + QString(", MAIN").repeated(8) + ')';
  EXPECT_EQ(failureOf([&] { rows->FindFirst(crossed); }), 3360);
  // Each search has its own measure.
  for (int i = 0; i < 3000; ++i) rows->FindFirst("ID = " + QString::number(i));
  mostSteps = before;
  // Each query from the one before, and one from itself.
  const std::pair<QString, QString> growing[] = {
      {"SELECT ID & Cod AS X FROM MAIN", "SELECT X & X AS X FROM %1"},
      {"SELECT ID AS X FROM MAIN", "SELECT A.X FROM %1 AS A, %1 AS B"},
      {"SELECT Count(*) AS X FROM MAIN", "SELECT Count(*) AS X FROM %1 AS A, %1 AS B"},
      {"SELECT * FROM MAIN", "SELECT A.*, A.* FROM %1 AS A"},
      {"SELECT * FROM Q_4_18", "SELECT * FROM %1"},
  };
  for (int kind = 0; const auto& [first, next] : growing) {
    QString name;
    for (int level = 0; level < 19; ++level) {
      const QString sql = level == 0 ? first : next.arg(name);
      name = QStringLiteral("Q_%1_%2").arg(kind).arg(level);
      archive->CreateQueryDef(name, sql);
    }
    EXPECT_EQ(failureOfSource(archive, name), 3360) << next.toStdString();
    ++kind;
  }
}

TEST(Fields, TellTheirColumns) {
  const QString joined = " FROM MAIN LEFT JOIN TAB AS T ON TABAutoreID = T.ID";
  const struct {
    QString source;
    const char* name;   // as asked for
    const char* field;  // name, column, kind, size, lookup key, whether updatable
  } cases[] = {
      {"Q_LIB", "main.id", "MAIN.ID MAIN.ID 7 0 - 0"},
      {"Q_LIB", "Autore", "Autore TAB.Desc 0 100 TABAutoreID 0"},
      {"SELECT Titolo AS T, T.[Desc] AS A" + joined, "MAIN.Titolo", "T MAIN.Titolo 0 150 - 1"},
      {"SELECT Cod, T.[Desc] AS A" + joined, "A", "A TAB.Desc 0 100 - 0"},
      {"Q_AUD", "Durata", "Durata AUD.Durata 3 0 - 1"},
      {"SELECT Anno, Anno > 3 AS B FROM MAIN", "B", "B . 4 0 - 0"},
      {"SELECT Min(Titolo) AS M FROM MAIN", "M", "M . 0 0 - 0"},
      {"Q_GRUPPI_STEP2", "TabID", "TabID MAIN.TABAutoreID 5 0 - 0"},
      {"Q_GRUPPI_STEP2", "TotValore", "TotValore . 1 0 - 0"},
  };
  const Archive archive;
  for (const auto& c : cases) {
    const RecordsetPtr rows = archive.open(c.source);
    const FieldInfo field = rows->Fields()[rows->FieldIndex(c.name)];
    const QString found = QStringLiteral("%1 %2.%3 %4 %5 %6 %7")
                              .arg(field.name, field.table, field.column)
                              .arg(static_cast<int>(field.kind))
                              .arg(field.size)
                              .arg(field.lookupKey.isEmpty() ? "-" : field.lookupKey)
                              .arg(int(field.updatable));
    EXPECT_EQ(found.toStdString(), c.field);
  }
  const RecordsetPtr rows = archive.open("Q_LIB");
  for (const char* name : {"ID", "MAIN.SottoTitolo", "", "TAB.ID"}) {
    EXPECT_EQ(failureOf([&] { rows->FieldIndex(name); }), 3265) << name;
  }
}

TEST(QueryDefs, AreStoredUnderTheirNames) {
  const Archive archive;
  const QString sql = " SELECT * FROM MAIN WHERE ID = 3 ; ";
  const auto create = [&](const QString& name, const QString& text) {
    return failureOf([&] { archive->CreateQueryDef(name, text); });
  };
  {
    const Transaction transaction(*archive);
    EXPECT_EQ(create("Q_NUOVA", sql), 0);
    EXPECT_EQ(failureOfSource(archive, "Q_NUOVA"), 0);
  }
  EXPECT_EQ(failureOfSource(archive, "Q_NUOVA"), 3078);
  EXPECT_EQ(create("Q_NUOVA", sql), 0);
  EXPECT_EQ(archive->QueryDefSql("q_nuova"), sql);
  EXPECT_TRUE(archive->QueryDefs().contains("Q_NUOVA"));
  for (const char* taken : {"q_NUOVA", "main"}) EXPECT_EQ(create(taken, sql), 3012);
  const RecordsetPtr open = archive.open("Q_nuova");
  archive->DeleteQueryDef("Q_NUOVA");
  EXPECT_EQ(valuesOf(*open, "ID"), "3");
  EXPECT_EQ(failureOfSource(archive, "Q_NUOVA"), 3078);
  EXPECT_EQ(failureOf([&] { archive->DeleteQueryDef("Q_NUOVA"); }), 3265);
  EXPECT_EQ(create("Q_NUOVA", "SELECT * FROM MAIN WHERE ID = 4"), 0);
  EXPECT_EQ(valuesOf(*archive.open("Q_NUOVA"), "ID"), "4");
  archive.outside("UPDATE QUERYDEF SET Sql = 'SELECT * FROM CFG' WHERE Name = 'Q_NUOVA'");
  EXPECT_EQ(valuesOf(*archive.open("Q_NUOVA"), "dsc"), "uno due");
  const std::string others =
      "|DELETE FROM MAIN|INSERT INTO MAIN (ID) VALUES (1)|DROP TABLE MAIN|PRAGMA user_version = 1|"
      "UPDATE MAIN|UPDATE MAIN SET|UPDATE MAIN SET Titolo = 'x'; DROP TABLE MAIN";
  for (const std::string& text : split(others)) {
    EXPECT_EQ(create("Q_X", QString::fromStdString(text)), 3075) << text;
  }
}

TEST(QueryDefs, Execute) {
  const Archive archive;
  const RecordsetPtr rows = archive.open("SELECT * FROM MAIN WHERE ID > 6");
  EXPECT_EQ(valuesOf(*rows, "Titolo"), "- vecchio -");
  archive->Execute("q_aggiornatitoliriviste");
  EXPECT_EQ(valuesOf(*rows, "Titolo").toStdString(), "- Il Mese n. 5 Il Mese");
  const std::pair<const char*, int> actions[] = {
      {"UPDATE MAIN SET Valore = Valore + 1, Cod = 'a''b' WHERE ID In (1, 3)", 0},
      {"UPDATE NESSUNA SET X = 1", 3078},
      {"UPDATE MAIN SET X = 1", 3061},
      {"SELECT * FROM MAIN", 3075},
  };
  for (const auto& [sql, number] : actions) {
    archive->CreateQueryDef("Q_U", sql);
    EXPECT_EQ(failureOf([&] { archive->Execute("Q_U"); }), number) << sql;
    archive->DeleteQueryDef("Q_U");
  }
  EXPECT_EQ(archive.outsideValues("SELECT Valore, Cod FROM MAIN WHERE ID < 4"),
            "13.5 a'b 10.0 - - a'b");
  EXPECT_EQ(failureOf([&] { archive->Execute("DELETE FROM MAIN"); }), 3265);
}

}  // namespace
}  // namespace store
