#include <sys/stat.h>

#include <QElapsedTimer>
#include <QThread>
#include <iostream>
#include <random>

#include "app/program_folder.h"
#include "child.h"
#include "ledger.h"
#include "workspace/desk.h"

namespace tavolix {
namespace {

constexpr int kCleared[] = {2, 6, 7};  // collections that are deleted as a whole

int casesWanted() {
  const int wanted = qEnvironmentVariableIntValue("TAVOLIX_CASES");
  return wanted > 0 ? wanted : 60;
}

// The program is killed while it works; what it had told is in its archive, whole.
class KilledProgram : public Desk {
 protected:
  KilledProgram() : random_(seed()) { std::cout << "TAVOLIX_SEED=" << seed() << std::endl; }

  static unsigned seed() {
    static const unsigned chosen = qEnvironmentVariableIsSet("TAVOLIX_SEED")
                                       ? qEnvironmentVariable("TAVOLIX_SEED").toUInt()
                                       : std::random_device()();
    return chosen;
  }
  int any(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }

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
  }

  // Lets the program work for a while, and kills it; takes what it told into the ledger.
  void killOnce(int collectionToClear);
  void checkFile();

  std::mt19937 random_;
  Ledger ledger_;
  QByteArray unfinished_;
  int told_ = 0;
  int cut_ = 0;
};

void KilledProgram::killOnce(int collectionToClear) {
  const QString temporary = folder_.path("temp");
  QDir().mkdir(temporary);
  Child child("work",
              {folder_.path(), QString::number(random_()), QString::number(told_ + 1000),
               QString::number(collectionToClear)},
              temporary);
  // While it starts, after some commands (two lines each), or while it deletes a collection.
  const int lines = collectionToClear >= 0 ? 2 : any(0, 8) * 2;
  ASSERT_TRUE(child.waitForLines(lines));
  QThread::usleep(static_cast<unsigned>(any(0, collectionToClear >= 0 ? 200000 : 25000)));
  ASSERT_TRUE(child.kill());
  QDir(temporary).removeRecursively();
  unfinished_.clear();
  for (const QByteArray& line : child.lines()) {
    if (line.startsWith('?')) unfinished_ = line.mid(1);
    if (!line.startsWith('!')) continue;
    const Command command(unfinished_);
    ledger_ = ledger_.after(command);
    if (command.name == "add" || command.name == "copy") {
      ASSERT_EQ(line.mid(1).toInt(), ledger_.counter) << unfinished_.constData();
    }
    unfinished_.clear();
    ++told_;
  }
}

void KilledProgram::checkFile() {
  {
    const store::DatabasePtr archive = store::OpenDatabase(folder_.path("esempio.tvx"));
    ASSERT_TRUE(archive->IntegrityCheck());
  }
  ASSERT_EQ(contradictions(folder_), QString());
  const Ledger found = readLedger(folder_);
  const std::vector<Ledger> possible =
      unfinished_.isEmpty() ? std::vector{ledger_} : ledger_.duringOrAfter(Command(unfinished_));
  ASSERT_TRUE(std::find(possible.begin(), possible.end(), found) != possible.end())
      << "unfinished: " << unfinished_.left(60).constData() << '\n'
      << qPrintable(ledger_.differences(found));
  if (!unfinished_.isEmpty()) ++cut_;
  ledger_ = found;
}

TEST_F(KilledProgram, HasWrittenWhatItTold) {
  const int cases = casesWanted();
  int clearsCut = 0;
  fillArchive();
  QElapsedTimer time;
  time.start();
  for (int i = 0; i < cases; ++i) {
    SCOPED_TRACE(i);
    const int clear = i % 3 == 0 ? kCleared[any(0, 2)] : -1;
    if (clear >= 0 && ledger_.count(clear) < 1000) fillArchive();
    const int before = clear >= 0 ? ledger_.count(clear) : 0;
    ASSERT_NO_FATAL_FAILURE(killOnce(clear));
    // The way of the program itself comes first now and then.
    if (i % 10 == 9) {
      ASSERT_TRUE(start());
      end();
      ASSERT_EQ(message(), QString("-"));
    }
    ASSERT_NO_FATAL_FAILURE(checkFile());
    if (unfinished_.startsWith("clear") && ledger_.count(clear) < before) ++clearsCut;
  }
  std::cout << cases << " kills in " << static_cast<double>(time.elapsed()) / 1000.0 << " s, "
            << told_ << " commands told, " << cut_ << " cut short, of these " << clearsCut
            << " deletions of whole collections with some groups done" << std::endl;
  EXPECT_GT(told_, cases / 2);
  EXPECT_GT(cut_, 0);
}

// No file of the first start is seen before it is whole and can be written: what a watcher never
// sees, a kill cannot leave.
TEST(FirstStart, LeavesNoHalfFiles) {
  const QTemporaryDir folder;
  const QString installed = folder.filePath("installed");
  copyMissingFiles(qEnvironmentVariable("TAVOLIX_DATA"), installed);
  const QFileInfoList files = QDir(installed).entryInfoList(QDir::Files);
  ASSERT_GE(files.size(), 3);
  for (const QFileInfo& file : files) QFile::setPermissions(file.filePath(), QFile::ReadOwner);
  const auto expectWhole = [&](const QString& target) {
    for (const QFileInfo& file : files) {
      struct stat seen = {};
      const QByteArray path = QFile::encodeName(target + '/' + file.fileName());
      if (::stat(path.constData(), &seen) != 0) continue;
      ASSERT_EQ(seen.st_size, file.size()) << path.constData();
      ASSERT_TRUE(seen.st_mode & S_IWUSR) << path.constData();
    }
  };
  const int cases = std::max(5, casesWanted() / 12);
  for (int i = 0; i < cases; ++i) {
    const QString folders = folder.filePath(QString::number(i));
    QDir().mkdir(folders);
    Child child("fill", {installed, folders}, folder.path());
    ASSERT_TRUE(child.waitUntilReady());
    const auto target = [&](int number) { return folders + '/' + QString::number(number); };
    int at = 0;
    for (QElapsedTimer time; at < 10;) {
      if (!time.isValid()) time.start();
      ASSERT_NO_FATAL_FAILURE(expectWhole(target(at)));
      if (QFile::exists(target(at + 1))) ++at;
      if (time.elapsed() > 20000) FAIL() << "too slow";
    }
    ASSERT_TRUE(child.kill());
    while (QFile::exists(target(at + 1))) ++at;
    ASSERT_NO_FATAL_FAILURE(expectWhole(target(at)));
    // The next start completes what the last one began.
    copyMissingFiles(installed, target(at));
    for (const QFileInfo& file : files) {
      QFile whole(file.filePath());
      QFile copy(target(at) + '/' + file.fileName());
      ASSERT_TRUE(whole.open(QIODevice::ReadOnly) && copy.open(QIODevice::ReadWrite));
      EXPECT_EQ(whole.readAll(), copy.readAll());
    }
    QDir(folders).removeRecursively();
  }
}

}  // namespace
}  // namespace tavolix
