// A disk that fails at any moment of any piece of work: the work ends with a failure of the store,
// nothing of it stays, and it can be done again once the disk is well.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

#include "disk/faulty_disk.h"
#include "disk/plain_file.h"
#include "store/database.h"
#include "store/patience.h"

namespace store {
namespace {

constexpr auto kDynaset = RecordsetType::Dynaset;

// A copy of a good archive in a folder of its own, with the handles that a program has open.
class Desk final {
 public:
  explicit Desk(const QByteArray& archive) : path_(folder_.filePath(QStringLiteral("prova.tvx"))) {
    plain::write(path_, archive);
  }

  const QString& path() const { return path_; }
  QString journal() const { return path_ + QStringLiteral("-journal"); }
  void open() {
    database = OpenDatabase(path_);
    rows = database->OpenRecordset("Q_AUD", kDynaset);
    const RecordsetPtr table = database->OpenRecordset("TAB", RecordsetType::Table);
    table->SetIndex("2");
    lists = table;
  }
  // Another program writes: what was read before has to be read again.
  void touch() const {
    SQLite::Database(path_.toStdString(), SQLite::OPEN_READWRITE)
        .exec("UPDATE CONT SET ID = ID + 1");
  }

  DatabasePtr database;
  RecordsetPtr rows;
  RecordsetPtr lists;

 private:
  QTemporaryDir folder_;
  QString path_;
};

QString all(Recordset& rows) {
  QString text = QString::number(rows.RecordCount());
  for (qint64 row = 0; row < rows.RecordCount(); ++row) {
    for (int field = 0; field < rows.Fields().size(); ++field) {
      text += rows.ValueAt(row, field).toString() + u'|';
    }
  }
  return text;
}

// Pieces of work; what they say is what they read. A writing one goes on with an edit that it
// finds begun.
using Work = std::function<QString(Desk&)>;
struct Scenario {
  const char* name;
  Work work;
  int share = 1;  // of the places tried, one in so many
};

QString openAndRead(Desk& desk) {
  if (!desk.lists) desk.open();
  const auto sorted = desk.database->OpenRecordset(
      "SELECT * FROM Q_AUD ORDER BY Supporto, Titolo DESC", RecordsetType::Snapshot);
  const auto groups = desk.database->OpenRecordset("Q_GRUPPI_STEP3", RecordsetType::Snapshot);
  desk.lists->Seek(">=", {"AUTORE", 2});
  desk.rows->FindFirst("Titolo LIKE '*a*' AND Durata > 10");
  return all(*desk.rows) + all(*sorted) + all(*groups) + desk.lists->Value("Desc").toString() +
         desk.rows->Value("Titolo").toString();
}

void give(Recordset& rows, const QVector<std::pair<const char*, QVariant>>& values) {
  for (const auto& [field, value] : values) rows.SetValue(QString::fromLatin1(field), value);
}

QString add(Desk& desk) {
  if (desk.rows->Mode() == EditMode::None) {
    desk.rows->AddNew();
    give(*desk.rows, {{"AUD.ID", 77777},
                      {"TipoRac", 2},
                      {"Titolo", "Nuovo"},
                      {"Durata", 61},
                      {"Note", QString(20000, u'n')}});
  }
  desk.rows->Update();
  return {};
}

QString edit(Desk& desk) {
  if (desk.rows->Mode() == EditMode::None) {
    desk.rows->MoveLast();
    desk.rows->Edit();
    give(*desk.rows, {{"Titolo", "Altro"}, {"Durata", 62}, {"Note", QString(9000, u'm')}});
  }
  desk.rows->Update();
  return {};
}

QString remove(Desk& desk) {
  desk.rows->MoveFirst();
  desk.rows->Delete();
  return {};
}

QString replaceQuery(Desk& desk) {
  Transaction transaction(*desk.database);
  desk.database->DeleteQueryDef("Q_REP_0");
  desk.database->CreateQueryDef("Q_REP_0", "SELECT * FROM Q_AUD WHERE Durata > 10");
  transaction.Commit();
  return {};
}

QString createQuery(Desk& desk) {
  desk.database->CreateQueryDef("Q_NUOVA", "SELECT * FROM TAB");
  return {};
}

QString runAction(Desk& desk) {
  desk.database->Execute("Q_TITOLI");
  return {};
}

// `count` new rows with long notes, a list's text and its own settings, as one.
void addMany(Desk& desk, int count) {
  Transaction transaction(*desk.database);
  const auto rows = desk.database->OpenRecordset("Q_AUD", kDynaset);
  for (int i = 0; i < count; ++i) {
    rows->AddNew();
    give(*rows, {{"AUD.ID", 80000 + i}, {"TipoRac", 2}, {"Note", QString(30000, u'x')}});
    rows->Update();
  }
  desk.lists->Seek("=", {"AUTORE", 2});
  desk.lists->Edit();
  desk.lists->SetValue("Desc", "Zeta");
  desk.lists->Update();
  transaction.Commit();
}

const Scenario kScenarios[] = {
    {"open", [](Desk& desk) { return openAndRead(desk); }},
    {"add", add},
    {"edit", edit},
    {"delete", remove},
    {"replace query", replaceQuery},
    {"create query", createQuery},
    {"action query", runAction},
    {"several writes",
     [](Desk& desk) {
       addMany(desk, 4);
       return QString();
     }},
    // More than the cache holds: pages reach the file before the transaction ends.
    {"many writes",
     [](Desk& desk) {
       addMany(desk, 250);
       return QString();
     },
     6},
};

struct Case {
  const char* name;
  Trouble trouble;
  std::set<int> numbers;  // of the failures that it may end with
};

constexpr int kJournal = SQLITE_OPEN_MAIN_JOURNAL;
const Case kCases[] = {
    {"disk full", {DiskCall::Write, SQLITE_FULL}, {3026}},
    {"read", {DiskCall::Read, SQLITE_IOERR_READ}, {3043}},
    {"short read", {DiskCall::Read, SQLITE_IOERR_SHORT_READ}, {3049, 3343}},
    {"write", {DiskCall::Write, SQLITE_IOERR_WRITE}, {3043}},
    {"sync", {DiskCall::Sync, SQLITE_IOERR_FSYNC}, {3043}},
    {"truncate", {DiskCall::Truncate, SQLITE_IOERR_TRUNCATE}, {3043}},
    {"delete the journal", {DiskCall::Delete, SQLITE_IOERR_DELETE}, {3043}},
    {"lock", {DiskCall::Lock, SQLITE_IOERR_LOCK}, {3043}},
    {"unlock", {DiskCall::Unlock, SQLITE_IOERR_UNLOCK}, {3043}},
    {"busy", {DiskCall::Lock, SQLITE_BUSY}, {3260}},
    {"size", {DiskCall::Size, SQLITE_IOERR_FSTAT}, {3043}},
    {"access", {DiskCall::Access, SQLITE_IOERR_ACCESS}, {3043}},
    {"no journal", {DiskCall::Open, SQLITE_CANTOPEN, kJournal}, {3051}},
    {"no room for files", {DiskCall::Open, SQLITE_FULL}, {3026}},
    {"folder is read only", {DiskCall::Open, SQLITE_READONLY_DIRECTORY, kJournal}, {3027}},
    {"file is read only", {DiskCall::Open, SQLITE_READONLY, SQLITE_OPEN_MAIN_DB}, {3027}},
    {"file cannot be opened", {DiskCall::Open, SQLITE_CANTOPEN, SQLITE_OPEN_MAIN_DB}, {3051}},
    {"write protected", {DiskCall::Write, SQLITE_READONLY}, {3027}},
    {"gone", {DiskCall::Any, 0}, {3043, 3051}},
};

class Disk : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    mostPatience = 0;
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tvx"));
    plain::write(path, plain::smallArchive(120));
    OpenDatabase(path)->CreateQueryDef(
        "Q_TITOLI", "UPDATE MAIN SET Titolo = Left(Titolo & '!', 150) WHERE TipoRac = 0");
    archive_ = plain::bytesOf(path);
  }

  // A scenario without trouble: what it reads, and what is in the file before and behind it.
  struct Good {
    QString read;
    QString shownBefore;
    QString shownBehind;
    QByteArray before;
    QByteArray behind;
  };
  Good withoutTrouble(const Scenario& scenario) {
    Good good;
    Desk desk(archive_);
    start(desk, scenario);
    good.before = plain::contentsOf(desk.path());
    good.shownBefore = shown(desk);
    good.read = scenario.work(desk);
    good.shownBehind = shown(desk);
    good.behind = plain::contentsOf(desk.path());
    return good;
  }

  void start(Desk& desk, const Scenario& scenario) {
    if (&scenario != kScenarios) desk.open();
    desk.touch();
  }

  // What the open handles show.
  static QString shown(Desk& desk) {
    return desk.lists ? all(*desk.rows) + desk.database->QueryDefSql("Q_REP_0") : QString();
  }

  int callsOf(const Scenario& scenario, const Trouble& trouble) {
    Desk desk(archive_);
    start(desk, scenario);
    disk_.order(trouble, 1 << 30, false);
    scenario.work(desk);
    disk_.mend();
    return disk_.calls();
  }

  // The file as a system that went down just now would leave it.
  static void expectWhole(const QByteArray& file, const QByteArray& journal, const Good& good) {
    const Desk desk(file);
    if (!journal.isEmpty()) plain::write(desk.journal(), journal);
    EXPECT_TRUE(OpenDatabase(desk.path())->IntegrityCheck());
    const QByteArray contents = plain::contentsOf(desk.path());
    EXPECT_TRUE(contents == good.before || contents == good.behind);
  }

  // A failure that the case may end with; false without one.
  static bool fails(const Case& the, Desk& desk, const Scenario& scenario, const Good& good) {
    try {
      EXPECT_TRUE(scenario.work(desk) == good.read);
      return false;
    } catch (const Failure& failure) {
      EXPECT_TRUE(the.numbers.count(failure.number())) << failure.number() << failure.what();
      EXPECT_FALSE(failure.description().isEmpty());
      return true;
    }
  }

  void expectNothingOfIt(const Desk& desk, const Good& good) {
    Desk copy(plain::bytesOf(desk.path()));
    const QByteArray journal = plain::bytesOf(desk.journal());
    if (!journal.isEmpty()) plain::write(copy.journal(), journal);
    EXPECT_TRUE(plain::contentsOf(copy.path()) == good.before);
  }

  void run(const Scenario& scenario, const Case& the, int nth, bool lasts, const Good& good) {
    Desk desk(archive_);
    start(desk, scenario);
    QByteArray file;
    QByteArray journal;
    disk_.order(the.trouble, nth, lasts, [&] {
      file = plain::bytesOf(desk.path());
      journal = plain::bytesOf(desk.journal());
    });
    const bool failed = fails(the, desk, scenario, good);
    disk_.mend();
    if (failed) expectNothingOfIt(desk, good);
    if (!file.isEmpty()) expectWhole(file, journal, good);
    if (failed) {
      EXPECT_TRUE(good.shownBefore.isEmpty() || shown(desk) == good.shownBefore);
      EXPECT_TRUE(scenario.work(desk) == good.read);
    }
    EXPECT_TRUE(shown(desk) == good.shownBehind);
    EXPECT_TRUE(plain::contentsOf(desk.path()) == good.behind);
    EXPECT_TRUE(desk.database->IntegrityCheck());
  }

  FaultyDisk disk_;
  static QByteArray archive_;
};

QByteArray Disk::archive_;

// The first, the last and some of the calls between.
std::vector<int> places(int calls, int most, std::mt19937& random) {
  std::set<int> chosen{1, calls};
  if (calls <= most) {
    for (int i = 1; i <= calls; ++i) chosen.insert(i);
  }
  while (static_cast<int>(chosen.size()) < std::min(calls, most)) {
    chosen.insert(1 + static_cast<int>(random() % static_cast<unsigned>(calls)));
  }
  return {chosen.begin(), chosen.end()};
}

TEST_F(Disk, FailsAtAnyCall) {
  const int most = plain::setting("TAVOLIX_CASES", 4);
  std::mt19937 random(static_cast<unsigned>(plain::setting("TAVOLIX_SEED", 1)));
  int tried = 0;
  for (const Scenario& scenario : kScenarios) {
    const Good good = withoutTrouble(scenario);
    for (const Case& the : kCases) {
      const int calls = callsOf(scenario, the.trouble);
      if (calls == 0) continue;
      for (const int nth : places(calls, std::max(1, most / scenario.share), random)) {
        for (const bool lasts : {false, true}) {
          SCOPED_TRACE(testing::Message() << scenario.name << ": " << the.name << ", call " << nth
                                          << " of " << calls << (lasts ? " and on" : ""));
          try {
            run(scenario, the, nth, lasts, good);
          } catch (const std::exception& failure) {
            ADD_FAILURE() << failure.what();
          }
          ++tried;
        }
      }
    }
  }
  std::cout << tried << " troubles\n";
}

}  // namespace
}  // namespace store
