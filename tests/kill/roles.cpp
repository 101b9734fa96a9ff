// What the processes do that are killed, or that stand in the program's way.

#include <unistd.h>

#include <QCoreApplication>

#include "core/modcuore.h"
#include "core/raccolte.h"
#include "harm/chance.h"
#include "ledger.h"
#include "platform/bound_control.h"
#include "workspace/desk.h"
#include "workspace/frmmain.h"

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
class Worker final : public Desk {
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
      answer(platform::kYes);
      command("clear", 0, [] { FrmMain().mnuCancellaMultiplo_Click(); });
    }
    for (;;) anyCommand();
  }

 private:
  template <typename Work>
  void command(const char* name, int value, Work work) {
    const QByteArray key = lRecordElenco() == 0 ? "0" : stored("RacID").toUtf8();
    say(QByteArray("?") + name + ' ' + QByteArray::number(iRacCorr) + ' ' + key + ' ' +
        QByteArray::number(value));
    work();
    message();
    say('!' + (lRecordElenco() == 0 ? QByteArray("0") : stored("RacID").toUtf8()));
  }

  void anyCommand() {
    if (harm::below(random_, 8) == 0) selectByTab(harm::below(random_, kRaccoltePrincipali));
    const int count = static_cast<int>(lRecordElenco());
    const int what = count == 0 ? 0 : harm::below(random_, 20);
    if (what < 3) return command("add", 0, [] { FrmMain().TastoAddNew(); });
    goTo(harm::below(random_, count), grid()->Column(0).dataField);
    if (what < 6) return command("copy", 0, [] { FrmMain().TastoDuplica(); });
    if (what < 10) {
      answer(platform::kYes);
      return command("delete", 0, [] { FrmMain().TastoCancella(); });
    }
    const int value = ++value_;
    if (what < 14) return command("note", value, [=] { fill("txtNote", QString::number(value)); });
    command("edit", value, [=] {
      for (const char* name : {"txtNote", kCollections[iRacCorr].box}) {
        platform::BoundControl::of(box(name))->SetValue(value);
      }
      FrmMain().Salva();
    });
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
    Worker(arguments.value(1), arguments.value(2).toUInt(), arguments.value(3).toInt())
        .run(arguments.value(4).toInt());
    ::_exit(1);
  }
};
const auto* const kRole = ::testing::AddGlobalTestEnvironment(new Role);

}  // namespace
}  // namespace tavolix
