// What the processes do that are killed, or that stand in the program's way.

#include <unistd.h>

#include <QTest>
#include <random>

#include "app/program_folder.h"
#include "child.h"
#include "core/modcuore.h"
#include "core/raccolte.h"
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

  int run(int collectionToClear) {
    if (!start()) return 1;
    say("ready");
    if (collectionToClear >= 0) clear(collectionToClear);
    for (;;) anyCommand();
  }

 private:
  int any(int count) { return std::uniform_int_distribution(0, count - 1)(random_); }

  static int key() { return stored("RacID").toInt(); }

  template <typename Work>
  void command(const char* name, int key, int value, Work work, const QByteArray& keys = {}) {
    say(QByteArray("?") + name + ' ' + QByteArray::number(iRacCorr) + ' ' +
        QByteArray::number(key) + ' ' + QByteArray::number(value) + keys);
    work();
    message();
    say('!' + (lRecordElenco() == 0 ? QByteArray("0") : stored("RacID").toUtf8()));
  }

  void anyCommand() {
    if (any(8) == 0) selectByTab(any(kRaccoltePrincipali));
    const int count = static_cast<int>(lRecordElenco());
    const int what = count == 0 ? 0 : any(20);
    if (what < 3) return command("add", 0, 0, [] { FrmMain().TastoAddNew(); });
    goTo(any(count), grid()->Column(0).dataField);
    if (what < 6) return command("copy", key(), 0, [] { FrmMain().TastoDuplica(); });
    if (what < 10) return command("delete", key(), 0, [] { deleteIt(); });
    ++value_;
    const QString typed = QString::number(value_);
    if (what < 14) return command("note", key(), value_, [&] { fill("txtNote", typed); });
    command("edit", key(), value_, [&] {
      for (const char* name : {"txtNote", kCollections[iRacCorr].box}) {
        platform::BoundControl::of(box(name))->SetValue(value_);
      }
      FrmMain().Salva();
    });
  }

  static void deleteIt() {
    answer(platform::kYes);
    FrmMain().TastoCancella();
  }

  void clear(int collection) {
    selectByTab(collection);
    QByteArray keys;
    const store::RecordsetPtr rows = list()->Clone();
    for (rows->MoveFirst(); !rows->Eof(); rows->MoveNext()) {
      keys += ' ' + rows->Value("RacID").toByteArray();
    }
    answer(platform::kYes);
    command(
        "clear", 0, 0, [] { FrmMain().mnuCancellaMultiplo_Click(); }, keys);
  }

  std::mt19937 random_;
  int value_;
};

// The first start of the program, in one new folder after another.
int fillFolders(const QString& installed, const QString& folders) {
  say("ready");
  for (int i = 0;; ++i) copyMissingFiles(installed, folders + '/' + QString::number(i));
}

// Another program that holds an archive by what it does to it.
int holdArchive(const QString& path, const QString& statements) {
  Outside other(path, SQLite::OPEN_READWRITE);
  // Statement by statement: rows that were read keep the file locked until the transaction ends.
  for (const QString& statement : statements.split(';')) {
    SQLite::Statement(other, statement.toStdString()).executeStep();
  }
  say("ready");
  for (;;) ::pause();
}

}  // namespace

int playRole(const QByteArray& role, const QStringList& arguments) {
  if (role == "hold") return holdArchive(arguments.value(1), arguments.value(2));
  if (role == "fill") return fillFolders(arguments.value(1), arguments.value(2));
  Worker worker(arguments.value(1), arguments.value(2).toUInt(), arguments.value(3).toInt());
  return worker.run(arguments.value(4).toInt());
}

}  // namespace tavolix
