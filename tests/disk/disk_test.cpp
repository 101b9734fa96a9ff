// A disk that fails at any moment of any piece of work: the work ends with a failure of the store,
// nothing of it stays, and it can be done again once the disk is well.

#include <SQLiteCpp/Database.h>
#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <algorithm>
#include <cerrno>
#include <set>

#include "disk/faulty_disk.h"
#include "harm/archive_file.h"
#include "harm/chance.h"
#include "store/database.h"
#include "store/page_checksum.h"
#include "store/patience.h"

namespace store {
namespace {

constexpr auto kDynaset = RecordsetType::Dynaset;

// An archive, and the journal of a transaction that was cut short.
struct Files {
  QByteArray archive;
  QByteArray journal;
};

// A copy of an archive in a folder of its own, with the handles that a program has open.
class Desk final {
 public:
  explicit Desk(const Files& files) {
    harm::write(path(), files.archive);
    if (!files.journal.isEmpty()) harm::write(journal(), files.journal);
  }

  QString path() const { return folder_.filePath(QStringLiteral("prova.tvx")); }
  QString journal() const { return path() + QStringLiteral("-journal"); }
  Files files() const { return {harm::bytesOf(path()), harm::bytesOf(journal())}; }
  QByteArray contents() const { return harm::contentsOf(path()); }

  void open() {
    database = OpenDatabase(path());
    rows = database->OpenRecordset("Q_AUD", kDynaset);
    const RecordsetPtr table = database->OpenRecordset("TAB", RecordsetType::Table);
    table->SetIndex("2");
    lists = table;
  }
  // Another program writes: what was read before has to be read again.
  void touch() const {
    SQLite::Database(path().toStdString(), SQLite::OPEN_READWRITE, 0, checkedFileLayer())
        .exec("UPDATE CONT SET ID = ID + 1");
  }

  DatabasePtr database;
  RecordsetPtr rows;
  RecordsetPtr lists;

 private:
  QTemporaryDir folder_;
};

using Values = QVector<harm::Row>;

// What the open handles show.
Values shown(const Desk& desk) {
  if (!desk.lists) return {};
  return harm::rowsOf(*desk.rows) + Values{{desk.database->QueryDefSql("Q_REP_0")}};
}

// Pieces of work; what they return is what they read.

Values openAndRead(Desk& desk) {
  if (!desk.lists) desk.open();
  const auto sorted = desk.database->OpenRecordset(
      "SELECT * FROM Q_AUD ORDER BY Supporto, Titolo DESC", RecordsetType::Snapshot);
  const auto groups = desk.database->OpenRecordset("Q_GRUPPI_STEP3", RecordsetType::Snapshot);
  desk.lists->Seek(">=", {"AUTORE", 2});
  desk.rows->FindFirst("Titolo LIKE '*a*' AND Durata > 10");
  return harm::rowsOf(*desk.rows) + harm::rowsOf(*sorted) + harm::rowsOf(*groups) +
         Values{{desk.lists->Value("Desc"), desk.rows->Value("Titolo")}};
}

// Goes on with an edit that it finds begun.
Values add(Desk& desk) {
  if (desk.rows->Mode() == EditMode::None) {
    desk.rows->AddNew();
    desk.rows->SetValue("AUD.ID", 77777);
    desk.rows->SetValue("TipoRac", 2);
    desk.rows->SetValue("Durata", 61);
    desk.rows->SetValue("Note", QString(20000, u'n'));
  }
  desk.rows->Update();
  return {};
}

Values edit(Desk& desk) {
  if (desk.rows->Mode() == EditMode::None) {
    desk.rows->MoveLast();
    desk.rows->Edit();
    desk.rows->SetValue("Titolo", "Altro");
    desk.rows->SetValue("Durata", 62);
    desk.rows->SetValue("Note", QString(9000, u'm'));
  }
  desk.rows->Update();
  return {};
}

Values remove(Desk& desk) {
  desk.rows->MoveFirst();
  desk.rows->Delete();
  return {};
}

Values replaceQuery(Desk& desk) {
  Transaction transaction(*desk.database);
  desk.database->DeleteQueryDef("Q_REP_0");
  desk.database->CreateQueryDef("Q_REP_0", "SELECT * FROM Q_AUD WHERE Durata > 10");
  transaction.Commit();
  return {};
}

Values runAction(Desk& desk) {
  desk.database->Execute("Q_TITOLI");
  return {};
}

// New rows with long notes and a list's text, as one.
template <int count>
Values addMany(Desk& desk) {
  Transaction transaction(*desk.database);
  const auto rows = desk.database->OpenRecordset("Q_AUD", kDynaset);
  for (int i = 0; i < count; ++i) {
    rows->AddNew();
    rows->SetValue("AUD.ID", 80000 + i);
    rows->SetValue("TipoRac", 2);
    rows->SetValue("Note", QString(30000, u'x'));
    rows->Update();
  }
  desk.lists->Seek("=", {"AUTORE", 2});
  desk.lists->Edit();
  desk.lists->SetValue("Desc", "Zeta");
  desk.lists->Update();
  transaction.Commit();
  return {};
}

const struct Scenario {
  const char* name;
  Values (*work)(Desk&);
  int share = 1;  // of the places tried, one in so many
} kScenarios[] = {
    {"open", openAndRead},
    {"add", add},
    {"edit", edit},
    {"delete", remove},
    {"replace query", replaceQuery},
    {"action query", runAction},
    {"several writes", addMany<4>},
    // More than the cache holds: pages reach the file before the transaction ends.
    {"many writes", addMany<250>, 6},
};

const struct Trouble {
  const char* name;
  unsigned calls;
  int error;
  std::set<int> numbers;  // of the failures that it may end with
} kTroubles[] = {
    {"disk full", faulty::kWrite, ENOSPC, {3026}},
    {"read", faulty::kRead, EIO, {3043, 3049}},
    {"short read", faulty::kRead, 0, {3049, 3343, 3428}},
    {"write", faulty::kWrite, EIO, {3043}},
    {"sync", faulty::kSync, EIO, {3043}},
    {"delete the journal", faulty::kDelete, EIO, {3043}},
    {"lock", faulty::kLock, EIO, {3043}},
    {"unlock", faulty::kUnlock, EIO, {3043}},
    {"busy", faulty::kLock, EAGAIN, {3260}},
    {"size", faulty::kSize, EIO, {3043}},
    {"no journal", faulty::kOpenJournal, EMFILE, {3051}},
    {"folder is read only", faulty::kOpenJournal, EACCES, {3027}},
    {"file is read only", faulty::kOpenToWrite, EACCES, {3027}},
    {"file cannot be opened", faulty::kOpen, EACCES, {3051}},
    {"gone", faulty::kAnyCall, EIO, {3043, 3049, 3051}},
};

class Disk : public ::testing::Test {
 protected:
  Disk() {
    mostPatience = 0;
    Desk desk({harm::smallArchive(120), {}});
    OpenDatabase(desk.path())
        ->CreateQueryDef("Q_TITOLI",
                         "UPDATE MAIN SET Titolo = Left(Titolo & '!', 150) WHERE TipoRac = 0");
    files_ = desk.files();
  }

  struct State {
    Values shown;
    QByteArray contents;
    bool operator==(const State&) const = default;
  };
  static State stateOf(const Desk& desk) { return {shown(desk), desk.contents()}; }

  // A scenario without trouble: what is shown and in the file before and behind, what it reads.
  struct Good {
    State before;
    Values read;
    State behind;
  };
  Good withoutTrouble(const Scenario& scenario) const {
    Good good;
    Desk desk(files_);
    start(desk, scenario);
    good.before = stateOf(desk);
    good.read = scenario.work(desk);
    good.behind = stateOf(desk);
    return good;
  }

  static void start(Desk& desk, const Scenario& scenario) {
    if (&scenario != kScenarios) desk.open();
    desk.touch();
  }

  int callsOf(const Scenario& scenario, const Trouble& trouble) const {
    Desk desk(files_);
    start(desk, scenario);
    faulty::order({trouble.calls, trouble.error, 1 << 30});
    scenario.work(desk);
    faulty::order();
    return faulty::calls();
  }

  // A failure that the trouble may end with; false without one.
  static bool fails(const Trouble& trouble, Desk& desk, const Scenario& scenario,
                    const Good& good) {
    try {
      EXPECT_TRUE(scenario.work(desk) == good.read);
      return false;
    } catch (const Failure& failure) {
      EXPECT_TRUE(trouble.numbers.count(failure.number())) << failure.number() << failure.what();
      EXPECT_FALSE(failure.description().isEmpty());
      return true;
    }
  }

  void run(const Scenario& scenario, const Trouble& trouble, int nth, bool lasts,
           const Good& good) {
    Desk desk(files_);
    start(desk, scenario);
    Files atFailure;
    faulty::order({trouble.calls, trouble.error, nth, lasts, [&] { atFailure = desk.files(); }});
    const bool failed = fails(trouble, desk, scenario, good);
    faulty::order();
    // The files as a system that went down just then would leave them.
    if (!atFailure.archive.isEmpty()) {
      const Desk copy(atFailure);
      EXPECT_TRUE(OpenDatabase(copy.path())->IntegrityCheck());
      const QByteArray contents = copy.contents();
      EXPECT_TRUE(contents == good.before.contents || contents == good.behind.contents);
    }
    if (failed) {
      EXPECT_TRUE(Desk(desk.files()).contents() == good.before.contents);
      EXPECT_TRUE(good.before.shown.isEmpty() || shown(desk) == good.before.shown);
      EXPECT_TRUE(scenario.work(desk) == good.read);
    }
    EXPECT_TRUE(stateOf(desk) == good.behind);
    EXPECT_TRUE(desk.database->IntegrityCheck());
  }

  Files files_;
};

// The first, the last and some of the calls between.
std::set<int> places(int calls, int most, std::mt19937& random) {
  std::set<int> chosen{1, calls};
  while (std::ssize(chosen) < std::min(calls, most)) chosen.insert(1 + harm::below(random, calls));
  return chosen;
}

TEST_F(Disk, FailsAtAnyCall) {
  const int most = harm::casesWanted(4);
  std::mt19937 random(harm::seed());
  int tried = 0;
  std::set<std::string> met;
  for (const Scenario& scenario : kScenarios) {
    const Good good = withoutTrouble(scenario);
    for (const Trouble& trouble : kTroubles) {
      const int calls = callsOf(scenario, trouble);
      if (calls == 0) continue;
      met.insert(trouble.name);
      for (const int nth : places(calls, std::max(1, most / scenario.share), random)) {
        for (const bool lasts : {false, true}) {
          SCOPED_TRACE(testing::Message() << scenario.name << ": " << trouble.name << ", call "
                                          << nth << " of " << calls << (lasts ? " and on" : ""));
          EXPECT_NO_THROW(run(scenario, trouble, nth, lasts, good));
          ++tried;
        }
      }
    }
  }
  std::cout << tried << " troubles\n";
  // A trouble that nothing asks for proves nothing.
  for (const Trouble& trouble : kTroubles) EXPECT_TRUE(met.count(trouble.name)) << trouble.name;
}

}  // namespace
}  // namespace store
