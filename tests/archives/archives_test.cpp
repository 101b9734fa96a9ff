#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QLabel>

#include "archives/modmanarc.h"
#include "core/modmain.h"
#include "core/program_folder.h"
#include "core/verbi.h"
#include "platform/form.h"
#include "platform/message_box.h"
#include "user.h"

namespace tavolix {
namespace {

using platform::MessageBoxSeam;

class Archives : public ::testing::Test {
 protected:
  Archives() {
    RegistraArchivi();
    RegistraFormArchivi();
    MessageBoxSeam::setNoWindow(true);
  }
  ~Archives() override {
    if (db_) db_->Close();
    store::CloseWorkspace();
    platform::forms().clear();
    MessageBoxSeam::reset();
  }

  // Tries to open an archive; the messages, parted by line ends, stay in told_.
  bool open(int mode, const QString& path = {}, bool askCode = true) {
    if (db_) db_->Close();
    db_.reset();
    for (int i = 0; i < 2; ++i) MessageBoxSeam::setNextAnswer(platform::kOk);
    path_ = path;
    version_ = 0;
    const bool opened = verbi().ApriArchivio(mode, folder_.path("tvx.ini"), "ManArc", db_, path_,
                                             version_, {}, askCode);
    QStringList messages;
    for (const auto& shown : MessageBoxSeam::shown()) {
      messages << QStringLiteral("%1 %2 %3").arg(shown.title).arg(shown.style).arg(shown.text);
    }
    told_ = messages.join('\n');
    MessageBoxSeam::reset();
    MessageBoxSeam::setNoWindow(true);
    EXPECT_EQ(opened, db_ && db_->IsOpen());
    return opened;
  }
  QString lastName() const { return folder_.setting("ManArc", "db_LastNameOpen"); }

  ProgramFolder folder_;
  store::DatabasePtr db_;
  QString path_;
  int version_ = 0;
  QString told_;
  User user_;
};

TEST_F(Archives, ReadAndWriteNamedValues) {
  ASSERT_TRUE(open(2, folder_.path("modello.tvx")));
  const store::RecordsetPtr rs = db_->OpenRecordset("CFG", store::RecordsetType::Table);
  rs->SetIndex("1u");
  QString text = "x";
  double number = 9;
  EXPECT_FALSE(bConfRead(rs, "PROVA", text, number));
  EXPECT_TRUE(text.isEmpty() && number == 0);
  ConfWrite(rs, "PROVA", "", -1);
  ConfWrite(rs, "prova", "L'anno", 2.5);
  EXPECT_TRUE(bConfRead(rs, "PROVA", text, number));
  EXPECT_TRUE(text == "L'anno" && number == 2.5);
  EXPECT_EQ(folder_.found("SELECT count(*) FROM CFG", "modello.tvx"), QString("4"));
}

TEST_F(Archives, TakeTheNameFromTheSettings) {
  const struct {
    const char *lastOpen, *lastName, *defaultOpen, *defaultName;
    QString opened;  // without one the manager asks
  } cases[] = {
      {"-1", "esempio.tvx", "0", "modello.tvx", "esempio.tvx"},
      {"-1", "esempio.tvx", "-1", "modello.tvx", "modello.tvx"},
      {"0", "esempio.tvx", "0", "modello.tvx", ""},
      {"-1", "", "0", "", ""},
      {"-1", "altro.tvx", "0", "", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.lastName);
    folder_.set("ManArc", "db_LastOpen", c.lastOpen);
    folder_.set("ManArc", "db_LastNameOpen", c.lastName);
    folder_.set("ManArc", "db_DefaultOpen", c.defaultOpen);
    folder_.set("ManArc", "db_DefaultNameOpen", c.defaultName);
    if (c.opened.isEmpty()) user_.clicks("frmManArc", "cmdEsci");
    EXPECT_EQ(open(0), !c.opened.isEmpty());
    EXPECT_EQ(path_, c.opened);
    EXPECT_EQ(told_, QString());
    EXPECT_EQ(lastName(), c.opened.isEmpty() ? QString(c.lastName) : c.opened);
  }
}

TEST_F(Archives, AreJudgedByTheirStamps) {
  const QString required =
      " 0 TavolixViene richiesto un database V.1/Tavolix mentre il database aperto e': V.";
  const QString locked = "Attenzione! 48 Codice d'accesso errato!";
  const QString tampered = "Attenzione! 48 Codice d'accesso manomesso dall'esterno!";
  const struct {
    const char* statement;
    QString message;
    int version;
    bool askCode = true;
  } cases[] = {
      {"UPDATE CFG SET nVal = 1.6 WHERE dsc = 'DB_VERSION'", required + "2/Tavolix", 2},
      {"UPDATE CFG SET nVal = 1.4 WHERE dsc = 'DB_VERSION'", "", 1},
      {"UPDATE CFG SET nVal = NULL WHERE dsc = 'DB_VERSION'", "", 0},
      {"UPDATE CFG SET sVal = 'tavolix' WHERE sVal = 'Tavolix'", required + "1/tavolix", 1},
      {"DELETE FROM CFG", required + "0/", 0},
      {"UPDATE CFG SET sVal = 'xyz' WHERE dsc = 'PWD'", locked + '\n' + locked, 1},
      {"UPDATE CFG SET sVal = 'xyz' WHERE dsc = 'PWD'", "", 1, false},
      {"UPDATE CFG SET sVal = NULL WHERE dsc = 'PWD'", tampered, 1},
      {"UPDATE CFG SET sVal = 'Ω' WHERE dsc = 'PWD'", tampered, 1},
      {"DELETE FROM CFG WHERE dsc = 'PWD'", tampered, 1},
      {"UPDATE CFG SET nVal = 0", "", 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.statement);
    QFile::remove(folder_.path("prova.tvx"));
    QFile::copy(folder_.path("modello.tvx"), folder_.path("prova.tvx"));
    folder_.outside(c.statement, "prova.tvx");
    folder_.set("ManArc", "db_LastNameOpen", "prima.tvx");
    if (c.message.startsWith(locked)) {
      user_.types("frmAskPassword", "abc");
      user_.types("frmAskPassword", "");
    }
    if (!c.message.isEmpty()) user_.in("frmManArc", [] { User::press(Qt::Key_Escape); });
    EXPECT_EQ(open(2, "prova.tvx", c.askCode), c.message.isEmpty());
    EXPECT_EQ(told_, c.message);
    EXPECT_EQ(version_, c.version);
    EXPECT_EQ(lastName(), QString(c.message.isEmpty() ? "prova.tvx" : "prima.tvx"));
  }
}

TEST_F(Archives, HaveAVersionOfSixteenBits) {
  for (const char* version : {"3e9", "-3e9", "32767.6"}) {
    folder_.outside(QString("UPDATE CFG SET nVal = %1 WHERE dsc = 'DB_VERSION'").arg(version));
    EXPECT_FALSE(open(2, "esempio.tvx")) << version;
    EXPECT_TRUE(told_.contains("Versione dell'archivio fuori dai limiti")) << qPrintable(told_);
  }
}

// Each leads to a start that asks which archive to open, and to an offer where a repair may help.
TEST_F(Archives, AreNotAnyFiles) {
  folder_.writeFile("testo.tvx", "Questo non e' un archivio.\n");
  QDir(folder_.path()).mkdir("cartella.tvx");
  store::CreateDatabase(folder_.path("senza.tvx"), "CREATE TABLE MAIN (ID INTEGER)")->Close();
  QFile::copy(folder_.path("esempio.tvx"), folder_.path("guasto.tvx"));
  const int page =
      folder_.found("SELECT rootpage FROM sqlite_schema WHERE name = 'CFG_1u'").toInt();
  QFile damaged(folder_.path("guasto.tvx"));
  ASSERT_TRUE(damaged.open(QIODevice::ReadWrite) && damaged.seek((page - 1) * 4096 + 2000));
  damaged.write("guasto");
  damaged.close();
  const char* const cases[][3] = {
      {"testo.tvx", "", "Errore nr.3343:Il file non e' un archivio riconosciuto"},
      {"senza.tvx", " 65552 Si e' verificato un errore", "Errore nr.3078:"},
      {"guasto.tvx", "Procedura: modManArc!bConfRead", "Errore nr.3428:"},
  };
  for (const auto& [name, told, described] : cases) {
    for (const char* key : {"db_LastOpen", "db_DefaultOpen"}) folder_.set("ManArc", key, "-1");
    QString text;
    user_.in("frmRecupero", [&] {
      platform::Form& recovery = platform::forms()["frmRecupero"];
      text = recovery.control<QLabel>("lblDsc")->text();
      EXPECT_EQ(recovery.control<QLabel>("lblio")->text(), QString(name));
      User::press(Qt::Key_Escape);
    });
    EXPECT_FALSE(open(2, name));
    EXPECT_EQ(told_.isEmpty(), *told == 0);
    EXPECT_TRUE(told_.contains(told)) << qPrintable(told_);
    EXPECT_TRUE(text.startsWith(described)) << qPrintable(text);
    EXPECT_TRUE(text.endsWith(QString(" durante apertura ") + name)) << qPrintable(text);
    EXPECT_EQ(lastName(), QString("esempio.tvx"));
    EXPECT_EQ(folder_.setting("ManArc", "db_AskOpen"), QString("-1"));
    EXPECT_EQ(folder_.setting("ManArc", "db_LastOpen"), QString("0"));
    EXPECT_EQ(folder_.setting("ManArc", "db_DefaultOpen"), QString("0"));
  }
  user_.clicks("frmManArc", "cmdEsci");
  EXPECT_FALSE(open(2, "cartella.tvx"));
}

// Of an older program, or with a counter that was lost: brought up to date before it is used, but
// only where it is accepted.
TEST_F(Archives, AreMadeReadyForUse) {
  const QString key = folder_.found("SELECT max(RacID) FROM MAIN");
  const QString columns =
      "SELECT count(*) FROM pragma_table_info('MAIN') WHERE name IN ('Voto', 'Valore')";
  folder_.outside(
      "ALTER TABLE MAIN DROP COLUMN Voto; ALTER TABLE MAIN DROP COLUMN Valore; DELETE FROM CONT;"
      "UPDATE CFG SET nVal = 2 WHERE dsc = 'DB_VERSION'");
  user_.clicks("frmManArc", "cmdEsci");
  EXPECT_FALSE(open(2, "esempio.tvx"));
  EXPECT_EQ(folder_.found(columns), QString("0"));
  folder_.outside("UPDATE CFG SET nVal = 1 WHERE dsc = 'DB_VERSION'");
  ASSERT_TRUE(open(2, "esempio.tvx"));
  EXPECT_EQ(folder_.found(columns), QString("2"));
  EXPECT_EQ(folder_.found("SELECT ID FROM CONT"), key);
  // A record's halves may have been parted: both hold the key.
  const std::pair<const char*, const char*> counters[] = {
      {"INSERT INTO OGG (ID) VALUES (9000)", "9000"},
      {"INSERT INTO MAIN (TipoRac, RacID) VALUES (3, 9001)", "9001"},
      {"UPDATE CONT SET ID = NULL", "9001"},
      {"UPDATE CONT SET ID = 9002", "9002"},
  };
  for (const auto& [statement, counter] : counters) {
    folder_.outside(statement);
    ASSERT_TRUE(open(2, "esempio.tvx"));
    EXPECT_EQ(folder_.found("SELECT ID FROM CONT"), QString(counter)) << statement;
  }
  folder_.outside("DROP TABLE PERSUB; ALTER TABLE MAIN DROP COLUMN Voto");
  user_.clicks("frmRecupero", "cmdUscita");
  EXPECT_FALSE(open(2, "esempio.tvx"));
  EXPECT_TRUE(told_.contains("mancano le colonne MAIN.Voto, PERSUB.Data, ")) << qPrintable(told_);
  EXPECT_EQ(folder_.found(columns), QString("1"));
}

TEST_F(Archives, AreAskedForUntilOneFitsOrTheUserGivesUp) {
  // The list's rows: esempio.tvx, nuovo.tvx. The template is not there.
  QFile::copy(folder_.path("modello.tvx"), folder_.path("nuovo.tvx"));
  folder_.outside("UPDATE CFG SET nVal = 2 WHERE dsc = 'DB_VERSION'", "nuovo.tvx");
  const auto choose = [&](int row) {
    user_.in("frmManArc", [row] {
      for (int i = 0; i < row; ++i) User::press(Qt::Key_Down);
      User::press(Qt::Key_Return);
    });
  };
  const std::tuple<int, const char*, std::vector<int>, bool> cases[] = {
      {1, "nuovo.tvx", {0}, false},
      {2, "assente.tvx", {1, 0}, true},
      {2, "nuovo.tvx", {}, true},
  };
  for (const auto& [mode, path, rows, tells] : cases) {
    for (const int row : rows) choose(row);
    if (rows.empty()) user_.clicks("frmManArc", "cmdEsci");
    EXPECT_EQ(open(mode, path), !rows.empty());
    EXPECT_EQ(path_, rows.empty() ? QString() : folder_.path("esempio.tvx"));
    EXPECT_EQ(told_.isEmpty(), !tells);
    EXPECT_EQ(user_.left(), 0U);
  }
}

// The old file is left alone; the new one beside it is what the program goes on with.
TEST_F(Archives, OfTheOldEngineAreBroughtOver) {
  struct Case {
    const char* file;
    std::vector<int> answers;
    const char* code;  // typed, where it is asked for
    bool opens;
    const char* told;
  };
  const Case cases[] = {
      {"casa.mdb", {platform::kNo}, "", false, "Vuoi portarne i dati"},
      {"casa.mdb", {platform::kYes, platform::kOk}, "", true, "MAIN: 620 di 620"},
      {"casa.mdb", {platform::kYes}, "", true, "vuoi aprire quello"},
      {"casa-codice.mdb", {platform::kYes, platform::kOk}, "pane e vino", true, "MAIN: 620 di 620"},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.told);
    const QString old = folder_.path(each.file);
    const QString source = qEnvironmentVariable("TAVOLIX_SOURCE") + "/tests/data/jet/" + each.file;
    QFile::copy(source, old);
    for (const int answer : each.answers) MessageBoxSeam::setNextAnswer(answer);
    if (*each.code != '\0') user_.types("frmAskPassword", each.code);
    if (!each.opens) user_.clicks("frmManArc", "cmdEsci");
    EXPECT_EQ(open(2, old), each.opens);
    EXPECT_TRUE(told_.contains(each.told)) << qPrintable(told_);
    EXPECT_EQ(user_.left(), 0U);
    QFile left(old);
    QFile given(source);
    ASSERT_TRUE(left.open(QIODevice::ReadOnly) && given.open(QIODevice::ReadOnly));
    EXPECT_TRUE(left.readAll() == given.readAll());
    if (!each.opens) continue;
    EXPECT_EQ(lastName(), QString(old).replace(".mdb", ".tvx"));
  }
}

}  // namespace
}  // namespace tavolix
