#include <QApplication>

#include "child.h"
#include "hand.h"
#include "model/raccolte.h"
#include "store/patience.h"

namespace tavolix {
namespace {

using platform::MessageBoxSeam;

constexpr const char* kReading = "BEGIN; SELECT count(*) FROM MAIN";
constexpr const char* kWriting = "BEGIN IMMEDIATE; UPDATE MAIN SET Voto = 1";
constexpr const char* kAlone = "BEGIN EXCLUSIVE";

// Another process has the archive open while the program works on it.
class TwoPrograms : public Hand {
 protected:
  TwoPrograms() { store::mostPatience = 100; }
  ~TwoPrograms() override { store::mostPatience = 2000; }

  std::unique_ptr<Child> hold(const char* statements) const {
    auto other = std::make_unique<Child>(
        "hold", QStringList{folder_.path("esempio.tvx"), statements}, folder_.path());
    EXPECT_TRUE(other->waitForLines(1));
    return other;
  }
  // Queues the answer to a question, if one is expected, and to messages.
  static void ready(bool question = false) {
    message();
    if (question) answer(platform::kYes);
    for (int i = 0; i < 6; ++i) answer(platform::kOk);
  }
  // How many messages of the lock were shown; questions do not count.
  static int told() {
    // An editor ends in a later event than the key, and failures are told in a later one again.
    for (int i = 0; i < 3; ++i) QApplication::processEvents();
    int count = 0;
    for (const MessageBoxSeam::Shown& shown : MessageBoxSeam::shown()) {
      if (shown.style == platform::kQuestion + platform::kYesNo) continue;
      EXPECT_TRUE(shown.text.contains("L'archivio e' bloccato da un altro programma"))
          << qPrintable(shown.text);
      EXPECT_TRUE(shown.text.contains("3260")) << qPrintable(shown.text);
      ++count;
    }
    message();
    return count;
  }
  // The archive as it came.
  void renew() {
    end();
    QFile::remove(folder_.path("esempio.tvx"));
    QFile::copy(qEnvironmentVariable("TAVOLIX_DATA") + "/esempio.tvx", folder_.path("esempio.tvx"));
    ASSERT_TRUE(start());
    goTo(3);
  }
  void expectAllVideos() {
    EXPECT_EQ(status(),
              "Elenco completo: " + folder_.found("SELECT count(*) FROM VID") + " records");
    EXPECT_EQ(message(), QString("-"));
  }

  void tryCommands(const QByteArrayList& commands, const char* lock);
};

void TwoPrograms::tryCommands(const QByteArrayList& commands, const char* lock) {
  const bool types = commands.front() == "note";
  const Ledger before = readLedger(folder_);
  Ledger wanted = before;
  for (const QByteArray& name : commands) {
    wanted = wanted.after({name, iRacCorr, currentKey(), 4711});
  }
  const qint64 rows = list()->RecordCount();
  const auto other = hold(lock);
  const int waits = store::waitsInVain;
  ready(asks(commands.back()));
  for (const QByteArray& name : commands) act(name, 4711, name == commands.back());
  EXPECT_EQ(store::waitsInVain - waits, 1);
  const int messages = told();
  // Nobody but the other program can even read what it holds alone: lists may say so too.
  EXPECT_TRUE(lock == kAlone ? messages >= 1 : messages == 1) << messages;
  EXPECT_EQ(list()->RecordCount(), rows);
  EXPECT_TRUE(!types || boxText("txtNote") == "4711");
  EXPECT_TRUE(other->kill());
  EXPECT_EQ(before.differences(readLedger(folder_)), "");
  ready(asks(commands.back()));
  // What has been typed stays to be left again.
  if (types) enter("txtNote");
  if (commands.back() == "note") {
    leave();
  } else {
    act(commands.back(), 4711);
  }
  EXPECT_EQ(told(), 0);
  EXPECT_EQ(wanted.differences(readLedger(folder_)), "");
  EXPECT_EQ(list()->RecordCount(), std::ssize(wanted.keys(iRacCorr)));
}

// An action that meets a lock waits once, tells it once and changes nothing; done again without
// the lock it does all that it should have done.
TEST_F(TwoPrograms, AnActionWaitsOnceTellsOnceAndCanBeRepeated) {
  for (const char* lock : {kReading, kWriting, kAlone}) {
    for (const char* commands : {"note", "title", "add", "note add", "copy", "delete", "clear"}) {
      SCOPED_TRACE(std::string(lock) + ", " + commands);
      ASSERT_NO_FATAL_FAILURE(renew());
      tryCommands(QByteArray(commands).split(' '), lock);
    }
  }
}

TEST_F(TwoPrograms, OpenAndListWhatAnotherOnlyReadsOrWrites) {
  for (const char* lock : {kReading, kWriting}) {
    const auto other = hold(lock);
    ASSERT_TRUE(start());
    selectByTab(3);
    expectAllVideos();
    end();
  }
}

TEST_F(TwoPrograms, SayThatAnotherHoldsItAlone) {
  auto other = hold(kAlone);
  QString described;
  inForm(
      "frmRecupero", [&] { EXPECT_FALSE(start()); },
      [&] { described = static_cast<QLabel*>(control("frmRecupero", "lblDsc"))->text(); });
  EXPECT_TRUE(described.startsWith("Errore nr.3260:")) << qPrintable(described);
  end();
  other.reset();
  // From now on the start asks which archive to open.
  ASSERT_TRUE(start("esempio.tvx"));
  other = hold(kAlone);
  const int waits = store::waitsInVain;
  ready();
  selectByTab(3);
  EXPECT_GE(told(), 1);
  EXPECT_EQ(store::waitsInVain - waits, 1);
  other.reset();
  selectByTab(2);
  selectByTab(3);
  expectAllVideos();
}

// What was typed for it cannot be written any more: it stays to be read, and is told once.
TEST_F(TwoPrograms, TellOnceThatARecordIsGone) {
  ASSERT_TRUE(start());
  goTo(3);
  folder_.outside("DELETE FROM MAIN WHERE RacID = " + stored("RacID"));
  const Ledger before = readLedger(folder_);
  ready();
  fill("txtNote", "4711");
  EXPECT_TRUE(message().contains("3167"));
  EXPECT_EQ(boxText("txtNote"), QString("4711"));
  press(Qt::Key_Down);
  press(Qt::Key_F12);
  EXPECT_EQ(message(), QString("-"));
  EXPECT_EQ(before.after({"add", iRacCorr}).differences(readLedger(folder_)), "");
}

}  // namespace
}  // namespace tavolix
