#include <gtest/gtest.h>
#include <unistd.h>

#include <QDir>
#include <QLabel>
#include <QPushButton>

#include "archives/copie_sicurezza.h"
#include "archives/file_archivio.h"
#include "archives/frmsceltadir.h"
#include "archives/modmanarc.h"
#include "archives/nome_archivio.h"
#include "archives/percorsi.h"
#include "archives/rapporto_riparazione.h"
#include "archives/unita.h"
#include "core/errore.h"
#include "core/modini.h"
#include "core/program_folder.h"
#include "platform/file_system.h"
#include "platform/form.h"
#include "platform/message_box.h"
#include "platform/progress_window.h"
#include "user.h"

namespace tavolix {
namespace {

using platform::MessageBoxSeam;

TEST(NomeArchivio, HoldsLettersDigitsAndThreeMore) {
  const std::pair<const char*, bool> names[] = {
      {"Casa 2", true}, {"a-Z_09", true}, {"", true},      {"Città", false}, {"casa.tvx", false},
      {"a/b", false},   {"a@b", false},   {"a[b", false},  {"a`b", false},   {"a{b", false},
      {"a:b", false},   {"ı", false},     {"a\\b", false}, {"a,b", false}};
  for (const auto& [name, valid] : names) EXPECT_EQ(bNomeArchivioValido(name), valid) << name;
  const std::pair<const char*, QString> typed[] = {
      {"Casa", "Casa"}, {" Casa.tvx ", "Casa"}, {"Casa.TVX", "Casa"}, {".tvx", ""}, {"tvx", "tvx"}};
  for (const auto& [text, name] : typed) EXPECT_EQ(sSenzaEstensione(text, ".tvx"), name) << text;
}

TEST(Percorsi, KeepTheirSpellingInTheSettings) {
  const std::tuple<const char*, const char*, const char*> written[] = {
      {"/media/x/", "", "/media/x/"},
      {"/media/x/", "C:\\media\\x", "C:\\media\\x"},
      {"/media/y/", "C:\\media\\x", "\\media\\y\\"},
      {"/media/y/", "/media/x", "/media/y/"},
      {"/media/x/casa.tvx", "\\media\\x\\casa.tvx", "\\media\\x\\casa.tvx"},
      {"/media/x/altra.tvx", "\\media\\x\\casa.tvx", "\\media\\x\\altra.tvx"},
      {"A:\\", "A:", "A:"},
  };
  for (const auto& [shown, before, after] : written) {
    EXPECT_EQ(sPercorsoScritto(shown, before), QString(after)) << shown << ' ' << before;
  }
  const std::pair<const char*, const char*> names[] = {{"/x/a:b.tvx", "a:b.tvx"},
                                                       {"/x:y/b.tvx", "b.tvx"},
                                                       {"A:b.tvx", "b.tvx"},
                                                       {"A:\\x\\b.tvx", "b.tvx"},
                                                       {"ab:c", "ab:c"}};
  for (const auto& [path, name] : names) EXPECT_EQ(sNomeArchivio(path), QString(name)) << path;
  EXPECT_EQ(sCartellaMostrata("C:\\media\\x"), QString("/media/x/"));
  EXPECT_EQ(sCartellaMostrata("a:\\copie"), QString("a:\\copie\\"));
  EXPECT_EQ(sCartellaMostrata(" "), QString());
}

TEST(Unita, AreWhatIsMountedOrWhatTheSettingsName) {
  const Volume root{"/", "/dev/sda1", "ext4", false};
  const Volume home{"/home", "/dev/sda2", "ext4", false};
  const Volume boot{"/boot/efi", "/dev/sdb9", "vfat", true};
  const Volume disc{"/media/anna/CD", "/dev/sr0", "iso9660", true};
  const Volume stick{"/media/anna/CHIAVETTA", "/dev/sdb1", "vfat", true};
  const Volume disk{"/run/media/anna/DISCO", "/dev/sdc1", "ext4", false};
  const struct {
    QVector<Volume> volumes;
    Unita set;
    const char *a, *b;
  } cases[] = {
      {{root, home, boot, disc}, {}, "", ""},
      {{root, stick}, {}, "/media/anna/CHIAVETTA", ""},
      {{root, disk, stick}, {}, "/run/media/anna/DISCO", "/media/anna/CHIAVETTA"},
      {{root, stick}, {{}, "/srv/b"}, "/media/anna/CHIAVETTA", "/srv/b"},
      {{root, {"/mnt/usb", "/dev/sdd1", "vfat", true}}, {"/srv/a", {}}, "/srv/a", ""},
  };
  for (const auto& c : cases) {
    const Unita found = UnitaDischetti(c.volumes, c.set);
    EXPECT_EQ(found.sA, QString(c.a));
    EXPECT_EQ(found.sB, QString(c.set.sB.isEmpty() ? QString(c.b) : c.set.sB));
  }
  const QStringList roots = sRadici({root, home, boot, disc, stick}, "/home/anna");
  EXPECT_EQ(roots.join(' '), QString("/ /home/anna /home /media/anna/CD /media/anna/CHIAVETTA"));
  const std::pair<const char*, int> folders[] = {
      {"/etc", 0}, {"/home/anna/x", 1}, {"/home/annabella", 2}, {"/media/anna/CHIAVETTA/", 4}};
  for (const auto& [folder, place] : folders) EXPECT_EQ(iRadiceDi(roots, folder), place) << folder;
}

TEST(Riparazione, IsToldByNumbersAndByTitle) {
  store::RepairReport report;
  EXPECT_EQ(sEsitoRiparazione(report), QString());
  report.original = "/casa/Casa.tvx.danneggiato";
  report.tables = {{"MAIN", 1507, 2, 3, true}, {"LIB", 588, 0, 0, false}};
  using State = store::RepairedRow::State;
  report.rows = {{State::Doubtful, "MAIN", 7, 0, 7, "Il pendolo"},
                 {State::Lost, "MAIN", 9, 2, 9, "Köln"},
                 {State::Half, "LIB", 8, -1, 0, {}}};
  EXPECT_EQ(sEsitoRiparazione(report),
            QString("righe perdute: 3; altre righe perdute, non si sa quante; righe dubbie: 2; "
                    "record a meta': 1"));
  EXPECT_EQ(sRapportoRiparazione(report, "Casa.tvx").section('\n', 1),
            QString("Il file danneggiato e' conservato in /casa/Casa.tvx.danneggiato\n\n"
                    "MAIN: 1.507 righe sicure, 2 dubbie, 3 perdute\n"
                    "LIB: 588 righe sicure, 0 dubbie, 0 perdute, forse di piu'\n\n"
                    "Perduti:\n  Audio: Köln [MAIN 9]\n\n"
                    "Senza la loro altra meta':\n  LIB: (titolo sconosciuto) [LIB 8]\n\n"
                    "Dubbi, da controllare:\n  Libri: Il pendolo [MAIN 7]\n\n"));
}

// Files as they lie in a folder, with windows where they ask.
class Files : public ::testing::Test {
 protected:
  Files() {
    RegistraArchivi();
    RegistraFormArchivi();
    MessageBoxSeam::setNoWindow(true);
    QDir(folder_.path()).mkdir("copie");
    QDir(folder_.path()).mkdir("disco");
  }
  ~Files() override {
    platform::setDriveFolder('A', {});
    platform::forms().clear();
    MessageBoxSeam::reset();
  }

  static void answer(std::initializer_list<int> answers) {
    for (const int pressed : answers) MessageBoxSeam::setNextAnswer(pressed);
  }
  // The begins of the messages since the last call, parted by "|".
  static QString told() {
    QStringList begins;
    for (const auto& shown : MessageBoxSeam::shown()) begins << shown.text.left(34);
    MessageBoxSeam::reset();
    MessageBoxSeam::setNoWindow(true);
    return begins.join('|');
  }
  QByteArray bytes(const QString& name) const {
    QFile file(folder_.path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  ProgramFolder folder_;
  User user_;
};

TEST_F(Files, AskForANameUntilItIsGood) {
  const QString invalid = "Nome dell'archivio non valido: puo",
                taken = "Nome archivio gia' esistente!";
  folder_.writeFile("à.tvx", "");
  const struct {
    QStringList typed;
    const char* name;
    QString told;
    const char* former = "";
  } cases[] = {
      {{""}, "", ""},
      {{" Casa "}, "Casa.tvx", ""},
      {{"Esempio.TVX", ""}, "", taken},
      {{"Esempio", "B"}, "B.tvx", taken, "altro.tvx"},
      {{"esempio", "Esempio"}, "Esempio.tvx", taken, "esempio.tvx"},
      {{"esempio", "a.b", "à", "Casa.tvx"},
       "Casa.tvx",
       taken + '|' + invalid + '|' + invalid + '|' + taken},
      {{QString(40, 'x')}, "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxx.tvx", ""},
  };
  for (const auto& c : cases) {
    for (const QString& text : c.typed) user_.types("frmAsk", text);
    answer({1, 1, 1, 1});
    EXPECT_EQ(sChiediNomeArchivio(folder_.path() + '/', "Nome", ".tvx", c.former), QString(c.name));
    EXPECT_EQ(told(), c.told);
  }
  user_.in("frmAsk", [] {
    QTest::keyClicks(QApplication::focusWidget(), "abc");
    User::press(Qt::Key_Escape);
  });
  EXPECT_EQ(sChiediNomeArchivio(folder_.path() + '/', "Nome", ".tvx"), QString());
}

TEST_F(Files, KnowOneFileByAllItsNames) {
  QFile::link(folder_.path("esempio.tvx"), folder_.path("legame.tvx"));
  ASSERT_EQ(::link(qPrintable(folder_.path("esempio.tvx")), qPrintable(folder_.path("duro.tvx"))),
            0);
  QFile::copy(folder_.path("esempio.tvx"), folder_.path("copia.tvx"));
  const std::pair<const char*, bool> others[] = {{"./copie/../esempio.tvx", true},
                                                 {"legame.tvx", true},
                                                 {"duro.tvx", true},
                                                 {"copia.tvx", false},
                                                 {"manca.tvx", false},
                                                 {"copie", false}};
  for (const auto& [name, same] : others) {
    EXPECT_EQ(bStessoFile(folder_.path(name), folder_.path("esempio.tvx")), same) << name;
  }
}

// Each way that a copy may end, told by messages and by what lies there afterwards.
TEST_F(Files, AreCopiedOrLeftAsTheyWere) {
  const QString drive = "Inserire un dischetto formattato n", done = "Copia di sicurezza eseguita!";
  const QString here = "Impossibile eseguire copie di sicu",
                failed = "Si e' verificato un errore durante";
  folder_.writeFile("disco/vecchia.tvx", "vecchia");
  const QString own = folder_.path("esempio.tvx");
  QFile::link(own, folder_.path("legame.tvx"));
  ASSERT_EQ(::link(qPrintable(own), qPrintable(folder_.path("duro.tvx"))), 0);
  // The backup of another archive, whose name differs in case.
  folder_.writeFile("altro.tvx", "");
  folder_.writeFile("disco/altro.tvx", "altro");
  using platform::kNo, platform::kYes, platform::kOk;
  const struct {
    QString from, to;
    std::vector<int> answers;
    QString told;
    const char* copy;  // that is to be there
  } cases[] = {
      {own, folder_.path("copie/uno.tvx"), {kOk}, done, "copie/uno.tvx"},
      {own, folder_.path("disco/vecchia.tvx"), {kOk}, done, "disco/vecchia.tvx"},
      {own, folder_.path("copie/UNO.tvx"), {kOk}, done, "copie/uno.tvx"},
      {own, folder_.path("Esempio.tvx"), {kOk}, here, ""},
      {own, folder_.path("legame.tvx"), {kOk}, here, ""},
      {own, folder_.path("duro.tvx"), {kOk}, here, ""},
      {own, folder_.path("disco/ALTRO.tvx"), {kOk}, done, "disco/ALTRO.tvx"},
      {own, "A:\\due.tvx", {kNo}, drive, ""},
      {own, "A:\\due.tvx", {kYes, kOk}, drive + '|' + done, "disco/due.tvx"},
      {own, "b:\\due.tvx", {kYes, kOk}, drive + '|' + failed, ""},
      {own, "  ", {}, "", ""},
      {own, folder_.path("copie/../esempio.tvx"), {kOk}, here, ""},
      {own, folder_.path("manca/x.tvx"), {kOk}, failed, ""},
      {own, folder_.path("copie"), {kOk}, failed, ""},
      {folder_.path("manca.tvx"), folder_.path("copie/x.tvx"), {kOk}, failed, ""},
  };
  folder_.set("Unita", "A", folder_.path("disco"));
  for (const auto& c : cases) {
    for (const int pressed : c.answers) MessageBoxSeam::setNextAnswer(pressed);
    EXPECT_EQ((EseguiCopiaSicur(c.from, c.to, true), told()), c.told) << qPrintable(c.to);
    EXPECT_TRUE(*c.copy == 0 || bytes(c.copy) == bytes("esempio.tvx")) << c.copy;
  }
  EXPECT_EQ(QDir(folder_.path("copie")).entryList(QDir::Files).join(' '), QString("uno.tvx"));
  EXPECT_EQ(bytes("disco/altro.tvx"), "altro");
}

// Root may write anywhere: for a moment the test is somebody else.
TEST_F(Files, AreNotCopiedWhereNobodyMayWrite) {
  const auto everybody = QFile::Permissions(0x5555);
  QFile::setPermissions(folder_.path(), everybody);
  QFile::setPermissions(folder_.path("copie"), everybody);
  QFile::setPermissions(folder_.path("esempio.tvx"), everybody | QFile::Permissions(0x2222));
  constexpr uid_t kNobody = 65534;
  const bool isRoot = ::geteuid() == 0;
  ASSERT_TRUE(!isRoot || ::seteuid(kNobody) == 0);
  answer({platform::kOk, platform::kOk});
  EseguiCopiaSicur(folder_.path("esempio.tvx"), folder_.path("copie/tre.tvx"), true);
  ASSERT_TRUE(!isRoot || ::seteuid(0) == 0);
  EXPECT_EQ(told(),
            QString("Disco protetto da scrittura: per s|Disco protetto da scrittura: per s"));
  EXPECT_TRUE(QDir(folder_.path("copie")).isEmpty());
}

// Whatever is done to a file: a log of another one beside it is set aside, and told.
TEST_F(Files, AreRidOfForeignJournals) {
  const QString own = folder_.path("esempio.tvx"), other = folder_.path("altro.tvx");
  const std::function<void()> works[] = {
      [&] { CopiaArchivio(own, other, "Copia"); }, [&] { CopiaArchivio(other, own, "Copia"); },
      [&] { RiparaArchivio(own); }, [&] { ComprimiArchivio(own); },
      [&] { RinominaArchivio(own, folder_.path("nuovo.tvx")); }};
  for (const auto& work : works) {
    folder_.writeFile("esempio.tvx-wal", "di un altro");
    answer({platform::kOk});
    work();
    EXPECT_EQ(told(), QString("Accanto all'archivio c'era un gior")) << &work - works;
    EXPECT_FALSE(QFile::exists(own + "-wal"));
  }
  EXPECT_EQ(bytes("esempio.tvx-wal.scartato-5"), "di un altro");
}

TEST_F(Files, AreNotRepairedWithoutTheTemplate) {
  QFile file(folder_.path("esempio.tvx"));
  ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(5000));
  file.write("guasto");
  file.close();
  QFile::remove(folder_.path("modello.tvx"));
  ImpostaFileIni(folder_.path("tvx.ini"));
  ImpostaSezioneIni("ManArc");
  const auto failure = fallimentoDi([&] { RiparaArchivio(folder_.path("esempio.tvx")); });
  ASSERT_TRUE(failure);
  EXPECT_TRUE(failure->description().endsWith("modello.tvx")) << qPrintable(failure->description());
}

TEST_F(Files, TellHowFarTheyAreAndCanBeBrokenOff) {
  platform::ProgressWindow patient("Copia");
  EXPECT_TRUE(patient.report(0, 1000));
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "short work shows nothing";
  for (const bool byKey : {false, true}) {
    platform::ProgressWindow progress("Copia", 0);
    EXPECT_TRUE(progress.report(250'000, 1'000'000));
    QWidget* window = QApplication::activeModalWidget();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->findChild<QLabel*>()->text(), QString("250.000 di 1.000.000 byte"));
    auto* stop = window->findChild<QPushButton*>("cmdInterrompi");
    byKey ? QTest::keyClick(stop, Qt::Key_Escape) : QTest::mouseClick(stop, Qt::LeftButton);
    EXPECT_FALSE(progress.report(300'000, 1'000'000));
  }
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(Files, LetAFolderBePicked) {
  for (const char* name : {"albero/ramo/foglia", "albero/.nascosto/dentro", "albero/altro"}) {
    QDir(folder_.path()).mkpath(name);
  }
  const QString tree = folder_.path("albero");
  EXPECT_EQ(sSottocartelle(tree, tree + "/ramo").join(' '), QString("altro ramo"));
  EXPECT_EQ(sSottocartelle(tree, tree + "/.nascosto/").join(' '), QString(".nascosto altro ramo"));
  const struct {
    const char* begin;
    std::vector<Qt::Key> keys;
    QString picked;
  } cases[] = {
      {"/ramo", {Qt::Key_Backspace}, tree + '/'},
      {"/ramo", {Qt::Key_Down, Qt::Key_Return}, tree + "/ramo/foglia/"},
      // Coming from below, the list stands on where one was.
      {"/ramo/foglia", {Qt::Key_Return, Qt::Key_Return}, tree + "/ramo/foglia/"},
      {"", {Qt::Key_Backspace, Qt::Key_Return}, tree + '/'},
  };
  for (const auto& c : cases) {
    user_.in("frmSceltaDir", [&] {
      for (const Qt::Key key : c.keys) User::press(key);
      User::click("frmSceltaDir", "cmdConferma");
    });
    EXPECT_EQ(sScegliDir(platform::forms()["frmManArc"], tree + c.begin), c.picked) << c.begin;
  }
  user_.in("frmSceltaDir", [] {
    User::press(Qt::Key_Backspace);
    User::press(Qt::Key_Escape);
  });
  answer({platform::kOk});
  EXPECT_EQ(sScegliDir(platform::forms()["frmManArc"], tree + "/manca"), tree + "/manca");
  EXPECT_EQ(told(), QString("Si e' verificato un errore durante"));
}

}  // namespace
}  // namespace tavolix
