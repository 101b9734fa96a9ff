// Damaged archives repaired: how many rows come back, beside what the engine's own shell saves.

#include "store/repair.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <algorithm>
#include <functional>

#include "damage/damages.h"
#include "harm/archive_file.h"
#include "harm/chance.h"
#include "model/riparazione.h"
#include "store/archive.h"
#include "store/database.h"
#include "store/sqlite_language.h"
#include "store/whole_file.h"
#include "tools/archive_template.h"

namespace store {
namespace {

// A row without the name of its table: its key and its values.
using Rows = QSet<QByteArray>;

const QByteArray kTables[] = {"MAIN", "LIB", "RIV",    "AUD",    "VID",    "COM", "MED",
                              "OGG",  "PER", "RIVSUB", "AUDSUB", "PERSUB", "TAB", "CFG"};

QByteArray lineOf(SQLite::Statement& statement) {
  QByteArray line;
  for (int i = 0; i < statement.getColumnCount(); ++i) {
    const SQLite::Column value = statement.getColumn(i);
    if (value.isNull()) continue;
    line.append(QByteArray::number(i)).append('=').append(value.getText(), value.getBytes());
    line.append('|');
  }
  return line;
}

// Tables with a key hold it in their first column.
QHash<QByteArray, Rows> rowsIn(const QString& path) {
  QHash<QByteArray, Rows> tables;
  SQLite::Database file(path.toStdString(), SQLite::OPEN_READWRITE);
  for (const QByteArray& table : kTables) {
    Rows& rows = tables[table];
    try {
      SQLite::Statement all(file, "SELECT * FROM " + table.toStdString() + " NOT INDEXED");
      while (all.executeStep()) rows.insert(lineOf(all));
    } catch (const SQLite::Exception&) {
      // The other tool may not have made it.
    }
  }
  return tables;
}

// What the engine's shell does not know the table of.
void addNameless(const QString& path, Rows& rows) {
  SQLite::Database file(path.toStdString(), SQLite::OPEN_READWRITE);
  if (!file.tableExists("lost_and_found")) return;
  SQLite::Statement all(file, "SELECT * FROM lost_and_found");
  while (all.executeStep()) {
    QByteArray line;
    const int fields = all.getColumn(2).getInt();
    for (int i = 0; i < fields && i + 4 < all.getColumnCount(); ++i) {
      const SQLite::Column value = all.getColumn(i == 0 && all.getColumn(4).isNull() ? 3 : 4 + i);
      if (value.isNull()) continue;
      line.append(QByteArray::number(i)).append('=').append(value.getText(), value.getBytes());
      line.append('|');
    }
    rows.insert(line);
  }
}

class Repair : public ::testing::Test {
 protected:
  Repair() {
    tavolix::builder::buildArchive(qEnvironmentVariable("TAVOLIX_SOURCE") + QStringLiteral("/data"),
                                   folder_.filePath("modello.tvx"));
    harm::write(path_, good_);
    wanted_ = rowsIn(path_);
    for (const Rows& rows : wanted_) all_ += rows.size();
  }

  void spoil(const damage::Kind& kind, int number) {
    std::mt19937 random(harm::seed() * 1000003U + static_cast<unsigned>(number));
    QByteArray file = good_;
    kind.spoil(file, random);
    for (const QFileInfo& each : QDir(folder_.path()).entryInfoList({"guasto*"})) {
      QFile::remove(each.filePath());
    }
    harm::write(path_, file);
  }

  // How many rows are as they were; those that never were must be told as doubtful.
  qint64 rightRows(const RepairReport& report, bool isChanged) {
    QHash<QByteArray, QSet<qint64>> told;
    for (const RepairedRow& row : report.rows) told[row.table.toUtf8()].insert(row.key);
    qint64 right = 0;
    const auto found = rowsIn(path_);
    for (const QByteArray& table : kTables) {
      for (const QByteArray& row : found[table]) {
        if (wanted_[table].contains(row)) {
          ++right;
          continue;
        }
        const qint64 key = row.mid(2, row.indexOf('|') - 2).toLongLong();
        const bool isTold = told[table].contains(key) || row.contains("(voce perduta ");
        EXPECT_TRUE(isTold || isChanged) << table.constData() << ' ' << row.left(80).constData();
      }
    }
    return right;
  }

  // The same by the engine's shell.
  qint64 rowsOfShell() {
    const QString saved = folder_.filePath("guasto-salvato.db");
    // It does not know the order of texts; a name of the same length stands for one that it does.
    const QString copy = folder_.filePath("guasto-guscio.tvx");
    harm::write(copy, harm::bytesOf(path_).replace("ITALIANO", "BINARY  "));
    QProcess shell;
    shell.start("sh", {"-c", "\"$2\" \"$0\" .recover 2>/dev/null | \"$2\" \"$1\" 2>/dev/null", copy,
                       saved, shell_});
    shell.waitForFinished(120000);
    if (!QFile::exists(saved)) return 0;
    const auto found = rowsIn(saved);
    Rows nameless;
    addNameless(saved, nameless);
    qint64 right = 0;
    for (const QByteArray& table : kTables) {
      right += (Rows(found[table]) + nameless).intersect(wanted_[table]).size();
    }
    return right;
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("guasto.tvx"));
  QByteArray good_ = harm::smallArchive(600);
  QString shell_ = qEnvironmentVariable("TAVOLIX_SHELL", "sqlite3");
  RepairPlan plan_ = tavolix::PianoRiparazione(folder_.filePath("modello.tvx"));
  QHash<QByteArray, Rows> wanted_;
  qint64 all_ = 0;
};

TEST_F(Repair, SavesAtLeastWhatTheShellSaves) {
  // Debian's cannot: it takes one that is built with SQLITE_ENABLE_DBPAGE_VTAB.
  const bool hasShell = rowsOfShell() == all_;
  if (!hasShell) std::cout << shell_.toStdString() << " saves nothing (TAVOLIX_SHELL)\n";
  const int cases = harm::casesWanted(45);
  const int only = harm::setting("TAVOLIX_CASE", -1);
  qint64 ours = 0;
  qint64 theirs = 0;
  qint64 doubtful = 0;
  int fewer = 0;
  int refused = 0;
  QHash<QByteArray, std::pair<qint64, qint64>> kinds;
  for (int number = std::max(only, 0); number < (only < 0 ? cases : only + 1); ++number) {
    const damage::Kind& kind =
        damage::kinds()[static_cast<std::size_t>(number) % damage::kinds().size()];
    SCOPED_TRACE(testing::Message() << kind.name << ", TAVOLIX_CASE " << number);
    // Content of the archive is what these change.
    const QByteArray name(kind.name);
    const bool isChanged =
        kind.isOtherArchive || name == "index that lies" || name == "query changed";
    spoil(kind, number);
    const QByteArray damaged = harm::bytesOf(path_);
    const qint64 shells = hasShell ? rowsOfShell() : 0;
    qint64 right = 0;
    try {
      const RepairReport report = RepairDatabase(path_, plan_);
      EXPECT_TRUE(OpenDatabase(path_)->IntegrityCheck());
      EXPECT_TRUE(VerifyPages(path_).damaged.empty());
      EXPECT_EQ(harm::bytesOf(report.isSound ? path_ : report.original), damaged);
      right = rightRows(report, isChanged);
      doubtful += report.doubtful();
    } catch (const Failure& failure) {
      ++refused;
      EXPECT_EQ(harm::bytesOf(path_), damaged);
      EXPECT_EQ(failure.number(), failure::kUnknownFormat) << failure.what();
    }
    if (isChanged) continue;
    ours += right;
    theirs += shells;
    kinds[name].first += right;
    kinds[name].second += shells;
    if (right < shells) {
      ++fewer;
      std::cout << kind.name << ' ' << number << ": " << right << " of " << shells << '\n';
    }
  }
  for (auto kind = kinds.begin(); kind != kinds.end(); ++kind) {
    std::cout << kind.key().constData() << ": " << kind->first << " rows, the shell "
              << kind->second << '\n';
  }
  std::cout << cases << " archives of " << all_ << " rows: " << ours << " rows right, the shell "
            << theirs << "; " << doubtful << " doubtful, " << fewer << " archives with fewer, "
            << refused << " refused\n";
  EXPECT_GE(ours, theirs);
}

// Overwrites the pages of a kind that hold a text.
void overwrite(QByteArray& file, char kind, const QByteArray& text) {
  constexpr qsizetype kPage = 4096;
  for (qsizetype page = kPage; page < file.size(); page += kPage) {
    if (file[page] != kind || !file.mid(page, kPage).contains(text)) continue;
    file.replace(page, kPage, QByteArray(kPage, '\xff'));
  }
}

TEST_F(Repair, TellsWhatIsLost) {
  constexpr char kLeaf = 13;
  constexpr char kIndexLeaf = 10;
  QString found;
  const auto repaired = [&](const std::function<void(QByteArray&)>& change, const char* query) {
    QByteArray file = good_;
    change(file);
    harm::write(path_, file);
    const RepairReport report = RepairDatabase(path_, plan_);
    SQLite::Database opened(path_.toStdString(), SQLite::OPEN_READWRITE);
    addLanguage(opened.getHandle());
    found = QString::fromStdString(opened.execAndGet(query).getString());
    return report;
  };
  // The code that guards an archive does not come from the model, what else is set does.
  // More than the cache holds is written before the end.
  const auto settings = [&](QByteArray& file) {
    file = harm::after(file, {"UPDATE MAIN SET Note = hex(zeroblob(25000))"});
    overwrite(file, kLeaf, "DB_APPLICATION");
  };
  RepairReport report =
      repaired(settings, "SELECT count(dsc = 'PWD' OR NULL) || ' ' || count(*) FROM CFG");
  EXPECT_TRUE(report.isGuardLost);
  EXPECT_EQ(found, "0 2");
  EXPECT_EQ(report.original, path_ + ".danneggiato");
  // An index gives lookup values back; without it keys are kept under another text.
  const char* const texts = "SELECT count(\"Desc\" LIKE '(voce perduta %' OR NULL) FROM TAB";
  report = repaired([&](QByteArray& file) { overwrite(file, kLeaf, "AUTORE"); }, texts);
  EXPECT_EQ(report.original, path_ + ".danneggiato2");
  EXPECT_EQ(found, "0");
  EXPECT_FALSE(report.isGuardLost);
  report = repaired(
      [&](QByteArray& file) {
        overwrite(file, kLeaf, "AUTORE");
        overwrite(file, kIndexLeaf, "AUTORE");
        overwrite(file, 2, "AUTORE");
        overwrite(file, kIndexLeaf, "LINGUA");
      },
      texts);
  EXPECT_EQ(found.toLongLong(), report.placeholders);
  EXPECT_GT(report.placeholders, 0);
  const QByteArray title = SQLite::Database(path_.toStdString(), SQLite::OPEN_READWRITE)
                               .execAndGet("SELECT Titolo FROM MAIN WHERE ID = 300")
                               .getText();
  // Records that are lost are told by their keys, which no new one gets.
  report = repaired([&](QByteArray& file) { overwrite(file, kLeaf, title); },
                    "SELECT (SELECT ID FROM CONT) >= (SELECT max(RacID) FROM MAIN)");
  EXPECT_EQ(found, "1");
  const auto lost =
      std::find_if(report.rows.begin(), report.rows.end(), [](const RepairedRow& row) {
        return row.state == RepairedRow::State::Lost && row.table == "MAIN";
      });
  ASSERT_TRUE(lost != report.rows.end());
  EXPECT_TRUE(lost->record > 0 && lost->collection >= 0);
}

TEST_F(Repair, LeavesAFileAloneThatItCannotMend) {
  EXPECT_TRUE(RepairDatabase(path_, plan_).isSound);
  EXPECT_EQ(harm::bytesOf(path_), good_);
  QByteArray damaged = good_;
  overwrite(damaged, 13, "DB_APPLICATION");
  harm::write(path_, damaged);
  for (int last = 1; last < 100; last += 30) {
    int steps = 0;
    const int number = failureOf(
        [&] { RepairDatabase(path_, plan_, [&](qint64, qint64) { return ++steps < last; }); });
    EXPECT_EQ(number, steps < last ? 0 : failure::kInterrupted);
    EXPECT_TRUE(steps < last || harm::bytesOf(path_) == damaged);
  }
  harm::write(path_, "no archive");
  EXPECT_EQ(failureOf([&] { RepairDatabase(path_, plan_); }), failure::kUnknownFormat);
  EXPECT_EQ(failureOf([&] { RepairDatabase(path_ + "x", plan_); }), failure::kFileNotFound);
  EXPECT_EQ(harm::bytesOf(path_), "no archive");
}

}  // namespace
}  // namespace store
