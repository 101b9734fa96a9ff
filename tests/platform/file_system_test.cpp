#include "platform/file_system.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <functional>

#include "store/archive.h"

namespace platform {
namespace {

class FileSystemTest : public testing::Test {
 protected:
  FileSystemTest() {
    setDriveFolder('A', root("floppy"));
    for (const char* name : {"Dati/Casa", "floppy"}) QDir(folder_.path()).mkpath(name);
    put("Dati/Libri.mdb", "libri");
    put("Dati/Casa/èlite.TXT", "x");
    setCurrentDirectory(root("Dati"));
  }
  ~FileSystemTest() override {
    setCurrentDirectory(oldFolder_);
    setDriveFolder('A', {});
  }

  QString root(const QString& name) const { return folder_.filePath(name); }
  void put(const QString& name, const QByteArray& content) const {
    QFile file(root(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }
  QByteArray get(const QString& name) const {
    QFile file(root(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
  }

 private:
  QTemporaryDir folder_;
  QString oldFolder_ = currentDirectory();
};

TEST_F(FileSystemTest, FindsPathsAsGiven) {
  put("floppy/Uno.MDB", "");
  put("floppy/UNO.mdb", "");
  const std::pair<QString, QString> cases[] = {
      {"C:" + root("dati").replace('/', '\\') + "\\LIBRI.MDB", root("Dati/Libri.mdb")},
      {"CASA\\ÈLITE.txt", root("Dati/Casa/èlite.TXT")},
      {"..\\DATI\\.\\Nuovo.mdb", root("Dati/Nuovo.mdb")},
      {"casa/manca/Libri.mdb", root("Dati/Casa/manca/Libri.mdb")},
      {"A:\\Copia.mdb", root("floppy/Copia.mdb")},
      {"A:\\UNO.mdb", root("floppy/UNO.mdb")},
      {"A:\\Uno.MDB", root("floppy/Uno.MDB")},
      {"A:\\..\\..\\Dati", root("floppy/Dati")},
      {"B:\\Copia.mdb", ""},
      {"", ""},
  };
  for (const auto& [given, path] : cases) EXPECT_EQ(systemPath(given), path) << qPrintable(given);
}

TEST_F(FileSystemTest, TellsFailuresByNumber) {
  const struct {
    const char* name;
    int number;
    std::function<void()> action;
  } cases[] = {
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
  for (const auto& c : cases) EXPECT_EQ(store::failureOf(c.action), c.number) << c.name;
  EXPECT_EQ(get("Dati/Libri.mdb"), "libri");
  const int other = ::open(QFile::encodeName(root("Dati/Libri.mdb")).constData(), O_RDWR);
  struct flock lock {};
  lock.l_type = F_RDLCK;
  ASSERT_EQ(::fcntl(other, F_OFD_SETLK, &lock), 0);
  EXPECT_EQ(store::failureOf([] { checkReadable("libri.mdb"); }), 0);
  EXPECT_EQ(store::failureOf([] { checkWritable("libri.mdb"); }), 70) << "others read it";
  ::close(other);
}

TEST_F(FileSystemTest, CopiesAsAWholeOrNotAtAll) {
  const QByteArray large = QByteArray(700'000, 'a') + '\0' + QByteArray(300'000, 'b');
  put("Dati/grande", large);
  put("floppy/Copia.mdb", "vecchia");
  // A source that opens but cannot be read.
  ASSERT_TRUE(QFile::link("/proc/self/mem", root("Dati/illeggibile")));
  EXPECT_EQ(store::failureOf([] { copyFile("illeggibile", "A:\\Copia.mdb"); }), 75);
  EXPECT_EQ(get("floppy/Copia.mdb"), "vecchia");
  copyFile("grande", "A:\\COPIA.MDB");
  EXPECT_EQ(get("floppy/Copia.mdb"), large);
  EXPECT_EQ(listFiles("A:\\*"), QStringList{"Copia.mdb"});
  renameFile("A:\\copia.mdb", "A:\\COPIA.MDB");
  put("floppy/senza", "");
  EXPECT_EQ(listFiles("A:\\*.*"), QStringList({"COPIA.MDB", "senza"}));
  EXPECT_EQ(listFiles("A:c?pia.*"), QStringList{"COPIA.MDB"});
}

}  // namespace
}  // namespace platform
