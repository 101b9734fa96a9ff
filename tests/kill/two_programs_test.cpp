#include <QApplication>

#include "child.h"
#include "core/modcuore.h"
#include "core/raccolte.h"
#include "ledger.h"
#include "platform/form.h"
#include "store/patience.h"
#include "workspace/desk.h"

namespace tavolix {
namespace {

using platform::MessageBoxSeam;
using std::function;

constexpr const char* kReading = "BEGIN; SELECT count(*) FROM MAIN";
constexpr const char* kWriting = "BEGIN IMMEDIATE; UPDATE MAIN SET Voto = 1";
constexpr const char* kAlone = "BEGIN EXCLUSIVE";

// Another process has the archive open while the program works on it.
class TwoPrograms : public Desk {
 protected:
  TwoPrograms() { store::mostPatience = 100; }
  ~TwoPrograms() override { store::mostPatience = 2000; }

  std::unique_ptr<Child> hold(const char* statements) const {
    auto other = std::make_unique<Child>(
        "hold", QStringList{folder_.path("esempio.tvx"), statements}, folder_.path());
    EXPECT_TRUE(other->waitUntilReady());
    return other;
  }
  // Queues the answer to a question, if one is expected, and to messages.
  static void ready(bool question) {
    message();
    if (question) answer(platform::kYes);
    for (int i = 0; i < 6; ++i) answer(platform::kOk);
  }
  // How many messages were shown; questions do not count.
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
  QString noteInFile(const QString& key) const {
    return folder_.found("SELECT Note FROM MAIN WHERE RacID = " + key);
  }
  // The archive as it came.
  void renew() {
    end();
    QFile::remove(folder_.path("esempio.tvx"));
    QFile::copy(qEnvironmentVariable("TAVOLIX_DATA") + "/esempio.tvx", folder_.path("esempio.tvx"));
    ASSERT_TRUE(start());
    goTo(3);
  }
};

// An action that meets a lock waits once, tells it once and changes nothing; done again without
// the lock it does all that it should have done.
TEST_F(TwoPrograms, AnActionWaitsOnceTellsOnceAndCanBeRepeated) {
  QString key;
  qint64 rows = 0;
  const auto again = [] {
    enter("txtNote");
    leave();
  };
  const struct {
    const char* way;
    bool question;
    function<void()> act;
    function<void()> repeat;
    function<bool()> isDone;
  } cases[] = {
      {"typing", false, [] { fill("txtNote", "4711"); }, again,
       [&] { return noteInFile(key) == "4711"; }},
      {"a cell",
       false,
       [] {
         goTo(3, "Titolo");
         type("4711");
         press(Qt::Key_Return);
       },
       {},
       [&] { return stored("Titolo") == "4711"; }},
      {"a new record",
       false,
       [] { press(Qt::Key_F12); },
       {},
       [&] { return list()->RecordCount() == rows + 1; }},
      {"a new record after typing", false,
       [] {
         enter("txtNote");
         press(Qt::Key_A, Qt::ControlModifier);
         type("4711");
         press(Qt::Key_F12);
       },
       [] { press(Qt::Key_F12); },
       [&] { return noteInFile(key) == "4711" && list()->RecordCount() == rows + 1; }},
      {"a copy",
       false,
       [] { press(Qt::Key_F11); },
       {},
       [&] { return list()->RecordCount() == rows + 1; }},
      {"a deletion",
       true,
       [] { press(Qt::Key_C, Qt::AltModifier); },
       {},
       [&] { return noteInFile(key).isEmpty() && list()->RecordCount() == rows - 1; }},
      {"a deletion of all",
       true,
       [] { trigger("mnuCancellaMultiplo"); },
       {},
       [&] { return list()->RecordCount() == 0; }},
      {"the columns",
       false,
       [] {
         grid()->setColumnWidth(0, 123);
         trigger("mnuVarieSalva");
       },
       {},
       [&] {
         return folder_.found("SELECT count(*) FROM GRDCONFIG WHERE Larghezza = " +
                              QString::number(platform::toTwips(123))) == "1";
       }},
  };
  for (const char* lock : {kReading, kWriting, kAlone}) {
    for (const auto& c : cases) {
      SCOPED_TRACE(std::string(lock) + ", " + c.way);
      ASSERT_NO_FATAL_FAILURE(renew());
      key = stored("RacID");
      const Ledger before = readLedger(folder_);
      rows = list()->RecordCount();
      auto other = hold(lock);
      const int waits = store::waitsInVain;
      ready(c.question);
      c.act();
      EXPECT_EQ(store::waitsInVain - waits, 1);
      const int messages = told();
      // Nobody but the other program can even read what it holds alone: lists may say so too.
      EXPECT_TRUE(lock == kAlone ? messages >= 1 : messages == 1) << messages;
      EXPECT_EQ(list()->RecordCount(), rows);
      if (QByteArray(c.way).contains("typing")) {
        EXPECT_EQ(boxText("txtNote"), QString("4711"));
      }
      EXPECT_TRUE(other->kill());
      EXPECT_TRUE(readLedger(folder_) == before);
      ready(c.question);
      (c.repeat ? c.repeat : c.act)();
      EXPECT_EQ(told(), 0);
      EXPECT_TRUE(c.isDone());
      EXPECT_EQ(contradictions(folder_), QString());
    }
  }
}

TEST_F(TwoPrograms, OpenAndListWhatAnotherOnlyReadsOrWrites) {
  for (const char* lock : {kReading, kWriting}) {
    const auto other = hold(lock);
    ASSERT_TRUE(start());
    selectByTab(3);
    EXPECT_EQ(status(),
              "Elenco completo: " + folder_.found("SELECT count(*) FROM VID") + " records");
    EXPECT_EQ(message(), QString("-"));
    end();
  }
}

TEST_F(TwoPrograms, SayThatAnotherHoldsItAlone) {
  auto other = hold(kAlone);
  answer(platform::kOk);
  EXPECT_FALSE(start());
  EXPECT_EQ(told(), 1);
  end();
  other.reset();
  ASSERT_TRUE(start());
  other = hold(kAlone);
  const int waits = store::waitsInVain;
  ready(false);
  selectByTab(3);
  EXPECT_GE(told(), 1);
  EXPECT_EQ(store::waitsInVain - waits, 1);
  other.reset();
  selectByTab(2);
  selectByTab(3);
  EXPECT_EQ(status(), "Elenco completo: " + folder_.found("SELECT count(*) FROM VID") + " records");
  EXPECT_EQ(message(), QString("-"));
}

// What was typed for it cannot be written any more: it stays to be read, and is told once.
TEST_F(TwoPrograms, TellOnceThatARecordIsGone) {
  ASSERT_TRUE(start());
  goTo(3);
  folder_.outside("DELETE FROM MAIN WHERE RacID = " + stored("RacID"));
  ready(false);
  fill("txtNote", "4711");
  EXPECT_TRUE(message().contains("3167"));
  EXPECT_EQ(boxText("txtNote"), QString("4711"));
  press(Qt::Key_Down);
  press(Qt::Key_F12);
  EXPECT_EQ(message(), QString("-"));
  EXPECT_EQ(contradictions(folder_).count("main row"), 1);
}

}  // namespace
}  // namespace tavolix
