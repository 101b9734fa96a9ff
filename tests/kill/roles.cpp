// What the processes do that are killed, or that stand in the program's way.

#include <unistd.h>

#include <QCoreApplication>

#include "core/modcuore.h"
#include "file_work.h"
#include "hand.h"
#include "harm/chance.h"
#include "model/raccolte.h"

namespace tavolix {
namespace {

// Straight to the pipe: nothing that was said may be lost with the process.
void say(const QByteArray& line) {
  const QByteArray text = line + '\n';
  if (::write(STDOUT_FILENO, text.constData(), static_cast<std::size_t>(text.size())) !=
      text.size()) {
    ::_exit(1);
  }
}

// The program with somebody at work in it, until it is killed. Commands are announced ("?"), and
// told once they have returned ("!" with the current record's key).
class Worker final : public Hand {
 public:
  Worker(const QString& folder, unsigned seed, int value) : random_(seed), value_(value) {
    ImpostaCartellaProgramma(folder);
    platform::setCurrentDirectory(folder);
  }
  void TestBody() override {}

  void run(int collectionToClear) {
    if (!start()) return;
    say("ready");
    if (collectionToClear >= 0) {
      selectByTab(collectionToClear);
      work("clear");
    }
    for (;;) workOnAny();
  }

 private:
  void work(const QByteArray& command) {
    const int value = ++value_;
    say('?' + command + ' ' + QByteArray::number(iRacCorr) + ' ' +
        QByteArray::number(currentKey()) + ' ' + QByteArray::number(value));
    if (asks(command)) answer(platform::kYes);
    act(command, value);
    message();
    say('!' + QByteArray::number(currentKey()));
  }

  void workOnAny() {
    static const QByteArrayList commands{"add", "copy", "delete", "note", "edit"};
    if (harm::below(random_, 8) == 0) selectByTab(harm::below(random_, kRaccoltePrincipali));
    const auto count = static_cast<int>(lRecordElenco());
    if (count == 0) return work("add");
    goTo(harm::below(random_, count), grid()->Column(0).dataField);
    work(harm::anyOf(random_, commands));
  }

  std::mt19937 random_;
  int value_;
};

// Another program that holds an archive by what it does to it.
void holdArchive(const QString& path, const QString& statements) {
  Outside other(path, SQLite::OPEN_READWRITE);
  // Statement by statement: rows that were read keep the file locked until the transaction ends.
  for (const QString& statement : statements.split(';')) {
    SQLite::Statement(other, statement.toStdString()).executeStep();
  }
  say("ready");
  for (;;) ::pause();
}

// A process that has a role plays it before any test, to its end.
class Role final : public ::testing::Environment {
  void SetUp() override {
    const QByteArray role = qgetenv("TAVOLIX_TEST_ROLE");
    if (role.isEmpty()) return;
    const QStringList arguments = QCoreApplication::arguments();
    if (role == "hold") holdArchive(arguments.value(1), arguments.value(2));
    if (role == "files") workOnFiles(arguments.value(1), arguments.value(2));
    Worker(arguments.value(1), arguments.value(2).toUInt(), arguments.value(3).toInt())
        .run(arguments.value(4).toInt());
    ::_exit(1);
  }
};
const auto* const kRole = ::testing::AddGlobalTestEnvironment(new Role);

}  // namespace
}  // namespace tavolix
