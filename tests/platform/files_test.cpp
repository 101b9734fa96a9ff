#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <functional>

#include "platform/file_system.h"
#include "platform/settings_file.h"
#include "platform/single_instance.h"
#include "platform/system_path.h"
#include "store/archive.h"

namespace platform {
namespace {

class Folder : public testing::Test {
 protected:
  QString path(const QString& name = "Tavolix.ini") const { return folder_.filePath(name); }
  void put(const QByteArray& content, const QString& name = "Tavolix.ini") const {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }
  QByteArray get(const QString& name = "Tavolix.ini") const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
  }

  QTemporaryDir folder_;
};

// A current folder Dati and a drive A.
class FileSystemTest : public Folder {
 protected:
  FileSystemTest() {
    setDriveFolder('A', path("floppy"));
    for (const char* name : {"Dati/Casa", "floppy"}) QDir(folder_.path()).mkpath(name);
    put("libri", "Dati/Libri.mdb");
    put("x", "Dati/Casa/èlite.TXT");
    setCurrentDirectory(path("Dati"));
  }
  ~FileSystemTest() override {
    setCurrentDirectory(oldFolder_);
    setDriveFolder('A', {});
  }

 private:
  QString oldFolder_ = currentDirectory();
};

TEST_F(FileSystemTest, FindsPathsAsGiven) {
  put("", "floppy/Uno.MDB");
  put("", "floppy/UNO.mdb");
  const std::pair<QString, QString> cases[] = {
      {"C:" + path("dati").replace('/', '\\') + "\\LIBRI.MDB", path("Dati/Libri.mdb")},
      {"CASA\\ÈLITE.txt", path("Dati/Casa/èlite.TXT")},
      {"..\\DATI\\.\\Nuovo.mdb", path("Dati/Nuovo.mdb")},
      {"casa/manca/Libri.mdb", path("Dati/Casa/manca/Libri.mdb")},
      {"A:\\Copia.mdb", path("floppy/Copia.mdb")},
      {"A:\\UNO.mdb", path("floppy/UNO.mdb")},
      {"A:\\Uno.MDB", path("floppy/Uno.MDB")},
      {"A:\\..\\..\\Dati", path("floppy/Dati")},
      {"B:\\Copia.mdb", ""},
      {"", ""},
  };
  for (const auto& [given, path] : cases) EXPECT_EQ(systemPath(given), path) << qPrintable(given);
}

TEST_F(FileSystemTest, TellsFailuresByNumber) {
  const std::tuple<const char*, int, std::function<void()>> cases[] = {
      {"length of nothing", 53, [] { fileLength("manca"); }},
      {"delete in no folder", 76, [] { deleteFile("manca\\x"); }},
      {"delete a folder", 75, [] { deleteFile("casa"); }},
      {"rename to a taken name", 58, [] { renameFile("libri.mdb", "CASA"); }},
      {"copy nothing", 53, [] { copyFile("manca", "x"); }},
      {"copy onto itself", 70, [] { copyFile("libri.mdb", "LIBRI.MDB"); }},
      {"copy onto a folder", 75, [] { copyFile("libri.mdb", "casa"); }},
      {"copy to an empty drive", 76, [] { copyFile("libri.mdb", "B:\\x"); }},
      {"copy to a full disk", 61, [] { copyFile("libri.mdb", "/dev/full"); }},
      {"folder below a file", 76, [] { createFolder("libri.mdb\\x"); }},
      {"no such current folder", 76, [] { setCurrentDirectory("manca"); }},
      {"write a folder", 75, [] { checkWritable("casa"); }},
      {"write a file", 0, [] { checkWritable("libri.mdb"); }},
  };
  for (const auto& [name, number, action] : cases)
    EXPECT_EQ(store::failureOf(action), number) << name;
  EXPECT_EQ(get("Dati/Libri.mdb"), "libri");
  const int other = ::open(QFile::encodeName(path("Dati/Libri.mdb")).constData(), O_RDWR);
  struct flock lock {};
  lock.l_type = F_RDLCK;
  ASSERT_EQ(::fcntl(other, F_OFD_SETLK, &lock), 0);
  EXPECT_EQ(store::failureOf([] { checkReadable("libri.mdb"); }), 0);
  EXPECT_EQ(store::failureOf([] { checkWritable("libri.mdb"); }), 70) << "others read it";
  ::close(other);
}

TEST_F(FileSystemTest, CopiesAsAWholeOrNotAtAll) {
  const QByteArray large = QByteArray(700'000, 'a') + '\0' + QByteArray(300'000, 'b');
  put(large, "Dati/grande");
  put("vecchia", "floppy/Copia.mdb");
  // A source that opens but cannot be read.
  ASSERT_TRUE(QFile::link("/proc/self/mem", path("Dati/illeggibile")));
  EXPECT_EQ(store::failureOf([] { copyFile("illeggibile", "A:\\Copia.mdb"); }), 75);
  EXPECT_EQ(get("floppy/Copia.mdb"), "vecchia");
  copyFile("grande", "A:\\COPIA.MDB");
  EXPECT_EQ(get("floppy/Copia.mdb"), large);
  EXPECT_EQ(listFiles("A:\\*"), QStringList{"Copia.mdb"});
  renameFile("A:\\copia.mdb", "A:\\COPIA.MDB");
  put("", "floppy/senza");
  EXPECT_EQ(listFiles("A:\\*.*"), QStringList({"COPIA.MDB", "senza"}));
  EXPECT_EQ(listFiles("A:c?pia.*"), QStringList{"COPIA.MDB"});
}

using SettingsFileTest = Folder;

TEST_F(SettingsFileTest, ReadsTexts) {
  put("\xEF\xBB\xBF; commento\r\nsola=0\r\n[ Video ]\r\nTema =  scuro  \r\n"
      "Città=\"Forlì \"\nApice='a'b'\nSolo=\"\nvuota=\n;tema=chiaro\nrotta\nTEMA=doppia\n"
      "a=b=c\n[altra\ntema=persa\n[VIDEO]\npiù=seconda\n<<<x\nm=<<<FINE\nn=9\n");
  const char* const cases[][3] = {
      {"vIDEO", "tema", "scuro"},  {"video", "CITTÀ", "Forlì "}, {"video", "apice", "a'b"},
      {"video", "solo", "\""},     {"video", "vuota", ""},       {"video", "a", "b=c"},
      {"video", "PIÙ", "seconda"}, {"video", "m", "<<<FINE"},    {"video", "n", "9"},
      {"", "sola", "0"},           {"altra", "tema", "?"},       {"video", "rotta", "?"},
      {"video", "", "?"},          {"manca", "tema", "?"},
  };
  for (const auto& [section, key, value] : cases) {
    EXPECT_EQ(readString(path(), section, key, "?"), value) << key;
  }
  EXPECT_EQ(readString("C:" + path("TAVOLIX.INI").replace('/', '\\'), "video", "n", "?"), "9");
  put("[s]\nn=" + QByteArray(254, 'x') + "😀\n");
  EXPECT_EQ(readString(path(), "s", "n", ""), QString(254, 'x')) << "half a character";
}

TEST_F(SettingsFileTest, ReadsNumbersAsFarAsTheyGo) {
  const std::pair<QByteArray, qint64> cases[] = {
      {" -7 ", -7}, {"12abc", 12}, {"abc", 0}, {"", 0}, {"0x10", 0}, {"5000000000", 5000000000}};
  for (const auto& [text, number] : cases) {
    put("[s]\nn=" + text + "\n");
    EXPECT_EQ(readInt(path(), "s", "n", -1), number) << text.data();
  }
}

TEST_F(SettingsFileTest, FallsBackWithoutAFileOfText) {
  for (const QString& file : {path("manca"), path("."), QString("/dev/zero"), QString()}) {
    EXPECT_EQ(readString(file, "s", "n", "?"), "?");
  }
  put(QByteArray("[s]\nn=1\n\0\0\x80\xFF", 12));
  EXPECT_EQ(readInt(path(), "s", "n", 5), 5);
  QRandomGenerator random(1);
  for (int round = 0; round < 200; ++round) {
    QByteArray rubbish(300, '\0');
    for (char& byte : rubbish) byte = "[]=;#\n\r\"x \xC3\xFF<"[random.bounded(13)];
    put(rubbish);
    const bool written = writeString(path(), "s", "n", "1");
    EXPECT_EQ(readString(path(), "s", "n", "?"), written ? "1" : "?") << rubbish.toHex().data();
  }
}

TEST_F(SettingsFileTest, WritesOneValueAndKeepsTheRest) {
  const std::pair<QByteArray, QByteArray> cases[] = {
      {"", "[s]\nk=1\n"},
      {"[S]\nK = \"0\"  \n;fine", "[S]\nK = 1\n;fine"},
      {"; c\r\n[s]\r\nk=0\r\nignota\r\n", "; c\r\n[s]\r\nk=1\r\nignota\r\n"},
      {"[s]\r\na=1\r\n\r\n; per t\r\n[t]\r\nk=9", "[s]\r\na=1\r\nk=1\r\n\r\n; per t\r\n[t]\r\nk=9"},
      {"[s]\na=1", "[s]\na=1\nk=1\n"},
      {"[t]\na=1", "[t]\na=1\n\n[s]\nk=1\n"},
      {"[t]\nk=9\n[s]\n;k=0\nk=0\nk=2\n", "[t]\nk=9\n[s]\n;k=0\nk=1\nk=2\n"},
      {"\xEF\xBB\xBF[s]\nk=0\n", "\xEF\xBB\xBF[s]\nk=1\n"},
  };
  for (const auto& [before, after] : cases) {
    put(before);
    EXPECT_TRUE(writeString(path(), "s", "k", "1"));
    EXPECT_EQ(get(), after);
  }
  for (const char* value : {"", " ", "\"", "\"a\"", "'a'", "\"a'", ";a", "#a", "[a]", "a=b", "<<<a",
                            "\ta\t", "àèìòù €"}) {
    EXPECT_TRUE(writeString(path(), "s", "k", value)) << value;
    EXPECT_EQ(readString(path(), "s", "k", "?"), value);
  }
}

TEST_F(SettingsFileTest, RefusesWhatItCannotWrite) {
  put("[s]\nk=0\n");
  const QString cases[][4] = {
      {path(), "s", "k", "a\nb"},       {path(), "s", "k", QString(QChar(0))},
      {path(), "s", "a=b", "1"},        {path(), "s", ";k", "1"},
      {path(), "s", "", "1"},           {path(), "s]", "k", "1"},
      {path(), "s\n[t", "k", "1"},      {path("."), "s", "k", "1"},
      {path("manca/x"), "s", "k", "1"}, {"", "s", "k", "1"},
  };
  for (const auto& [file, section, key, value] : cases) {
    EXPECT_FALSE(writeString(file, section, key, value)) << qPrintable(section + key);
    EXPECT_EQ(get(), "[s]\nk=0\n");
  }
}

TEST(SingleInstanceTest, OneAtATimeInAFolderUntilItEndsInAnyWay) {
  const QTemporaryDir parent;
  const QString folder = parent.filePath("a/b");
  const pid_t child = ::fork();
  if (child == 0) {
    const SingleInstance abandoned(folder);
    ::_exit(abandoned.isFirst() ? 7 : 8);  // as if killed: nothing is let go
  }
  int end = 0;
  ASSERT_EQ(::waitpid(child, &end, 0), child);
  EXPECT_EQ(WEXITSTATUS(end), 7);
  SingleInstance first(folder);
  EXPECT_TRUE(first.isFirst());
  const SingleInstance second(folder);
  EXPECT_FALSE(second.isFirst() || second.callFirst());
  int calls = 0;
  first.listen([&calls] { ++calls; });
  EXPECT_TRUE(second.callFirst() && second.callFirst());
  EXPECT_TRUE(QTest::qWaitFor([&calls] { return calls == 2; }));
  EXPECT_TRUE(SingleInstance(parent.path()).isFirst());
}

}  // namespace
}  // namespace platform
