#include <QThread>
#include <algorithm>

#include "child.h"
#include "harm/chance.h"
#include "ledger.h"
#include "workspace/desk.h"

namespace tavolix {
namespace {

constexpr int kCleared[] = {2, 6, 7};  // collections that are deleted as a whole

// The program is killed while it works; what it had told is in its archive, whole.
class KilledProgram : public Desk {
 protected:
  int any(int from, int to) { return from + harm::below(random_, to - from + 1); }

  // An archive in which deletions of whole collections take several groups.
  void fillArchive() {
    const QString archive = folder_.path("esempio.tvx");
    const QString full = folder_.path("pieno.tvx");
    if (!QFile::exists(full)) {
      for (const int collection : kCleared) addRecords(folder_, collection, 1600);
      QFile::copy(archive, full);
    }
    QFile::remove(archive);
    QFile::copy(full, archive);
    ledger_ = readLedger(folder_);
    ASSERT_TRUE(ledger_.isSound());
  }

  // Lets the program work for a while, and kills it; takes what it told into the ledger.
  void killOnce(int collectionToClear) {
    const QString temporary = folder_.path("temp");
    QDir().mkdir(temporary);
    Child child("work",
                {folder_.path(), QString::number(random_()), QString::number(told_ + 1000),
                 QString::number(collectionToClear)},
                temporary);
    // While it starts, after some commands (two lines each), or while it deletes a collection.
    const bool clears = collectionToClear >= 0;
    ASSERT_TRUE(child.waitForLines(clears ? 2 : any(0, 8) * 2));
    QThread::usleep(static_cast<unsigned>(any(0, clears ? 200000 : 25000)));
    ASSERT_TRUE(child.kill());
    QDir(temporary).removeRecursively();
    unfinished_ = {};
    for (const QByteArray& line : child.lines()) take(line);
  }

  void take(const QByteArray& line) {
    const QByteArrayList words = line.mid(1).split(' ');
    if (line.startsWith('?')) {
      unfinished_ = {words[0], words[1].toInt(), words[2].toInt(), words[3].toInt()};
    }
    if (!line.startsWith('!')) return;
    ledger_ = ledger_.after(unfinished_);
    if (unfinished_.name == "add" || unfinished_.name == "copy") {
      EXPECT_EQ(words[0].toInt(), ledger_.counter);
    }
    unfinished_ = {};
    ++told_;
  }

  void checkFile() {
    ASSERT_TRUE(store::OpenDatabase(folder_.path("esempio.tvx"))->IntegrityCheck());
    const Ledger found = readLedger(folder_);
    const std::vector<Ledger> possible = ledger_.duringOrAfter(unfinished_);
    ASSERT_TRUE(std::find(possible.begin(), possible.end(), found) != possible.end())
        << "unfinished: " << unfinished_.name.constData() << ' ' << unfinished_.key << ' '
        << ledger_.differences(found);
    if (!unfinished_.name.isEmpty()) ++cut_;
    ledger_ = found;
  }

  std::mt19937 random_{harm::seed(std::random_device()() % 1000000)};
  Ledger ledger_;
  Command unfinished_;
  int told_ = 0;
  int cut_ = 0;
};

TEST_F(KilledProgram, HasWrittenWhatItTold) {
  const int cases = harm::casesWanted(60);
  fillArchive();
  for (int i = 0; i < cases; ++i) {
    SCOPED_TRACE(i);
    const int clear = i % 3 == 0 ? kCleared[any(0, 2)] : -1;
    if (clear >= 0 && ledger_.keys(clear).size() < 1000) fillArchive();
    ASSERT_NO_FATAL_FAILURE(killOnce(clear));
    // The way of the program itself comes first now and then.
    if (i % 10 == 9) {
      ASSERT_TRUE(start());
      end();
      ASSERT_EQ(message(), QString("-"));
    }
    ASSERT_NO_FATAL_FAILURE(checkFile());
  }
  std::cout << cases << " kills, " << told_ << " commands told, " << cut_ << " cut short\n";
  EXPECT_GT(told_, cases / 2);
  EXPECT_GT(cut_, 0);
}

}  // namespace
}  // namespace tavolix
