#include "platform/file_system.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <functional>

#include "store/failure.h"

namespace platform {
namespace {

class FileSystemTest : public testing::Test {
 protected:
  void SetUp() override {
    oldFolder_ = currentDirectory();
    setDriveFolder('A', root("floppy"));
    for (const char* name : {"Dati/Casa", "floppy"}) QDir(root()).mkpath(name);
    put("Dati/Libri.mdb", "libri");
    put("Dati/Casa/èlite.TXT", "x");
    setCurrentDirectory(root("Dati"));
  }
  void TearDown() override {
    setCurrentDirectory(oldFolder_);
    setDriveFolder('A', {});
  }

  QString root(const QString& name = {}) const {
    return name.isEmpty() ? folder_.path() : folder_.path() + "/" + name;
  }
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
  QString oldFolder_;
};

int numberOf(const std::function<void()>& action) {
  try {
    action();
    return 0;
  } catch (const store::Failure& failure) {
    EXPECT_FALSE(failure.description().isEmpty());
    return failure.number();
  }
}

TEST_F(FileSystemTest, PathsAsGiven) {
  const struct {
    QString given;
    QString path;
  } cases[] = {
      {root("Dati/Libri.mdb"), root("Dati/Libri.mdb")},
      {root("Dati").replace('/', '\\') + "\\Libri.mdb", root("Dati/Libri.mdb")},
      {"C:" + root("dati").replace('/', '\\') + "\\LIBRI.MDB", root("Dati/Libri.mdb")},
      {"libri.mdb", root("Dati/Libri.mdb")},
      {"C:libri.mdb", root("Dati/Libri.mdb")},
      {"CASA\\ÈLITE.txt", root("Dati/Casa/èlite.TXT")},
      {"..\\DATI\\.\\Nuovo.mdb", root("Dati/Nuovo.mdb")},
      {"casa/manca/Libri.mdb", root("Dati/Casa/manca/Libri.mdb")},
      {"A:\\Copia.mdb", root("floppy/Copia.mdb")},
      {"a:copia.mdb", root("floppy/copia.mdb")},
      {"A:", root("floppy")},
      {"A:\\..\\..\\Dati", root("floppy/Dati")},
      {"B:\\Copia.mdb", ""},
      {"", ""},
      {"D:\\", "/"},
  };
  for (const auto& c : cases) EXPECT_EQ(systemPath(c.given), c.path) << c.given.toStdString();
}

TEST_F(FileSystemTest, ExactNameComesBeforeOneInAnotherCase) {
  put("Dati/LIBRI.MDB", "altro");
  EXPECT_EQ(systemPath("LIBRI.MDB"), root("Dati/LIBRI.MDB"));
  EXPECT_EQ(systemPath("Libri.mdb"), root("Dati/Libri.mdb"));
}

TEST_F(FileSystemTest, ListsByPattern) {
  for (const char* name : {"b.DAT", "A.dat", "c[1].dat", "senza", "a.dat.bak"}) {
    put(QString("floppy/") + name, "");
  }
  const struct {
    QString pattern;
    QStringList names;
  } cases[] = {
      {"A:\\*.dat", {"A.dat", "b.DAT", "c[1].dat"}},
      {"A:?.DAT", {"A.dat", "b.DAT"}},
      {"A:\\C[1].*", {"c[1].dat"}},
      {"A:\\*.*", {"A.dat", "a.dat.bak", "b.DAT", "c[1].dat", "senza"}},
      {"A:\\senza", {"senza"}},
      {"*", {"Libri.mdb"}},
      {"A:\\manca\\*", {}},
      {"B:\\*", {}},
  };
  for (const auto& c : cases) EXPECT_EQ(listFiles(c.pattern), c.names) << c.pattern.toStdString();
}

TEST_F(FileSystemTest, FailuresByNumber) {
  const struct {
    const char* name;
    int number;
    std::function<void()> action;
  } cases[] = {
      {"length of nothing", 53, [] { fileLength("manca"); }},
      {"length of a folder", 53, [] { fileLength("casa"); }},
      {"delete nothing", 53, [] { deleteFile("manca"); }},
      {"delete in no folder", 76, [] { deleteFile("manca\\x"); }},
      {"delete a folder", 75, [] { deleteFile("casa"); }},
      {"rename nothing", 53, [] { renameFile("manca", "x"); }},
      {"rename to a taken name", 58, [] { renameFile("libri.mdb", "CASA"); }},
      {"rename to itself", 58, [] { renameFile("libri.mdb", "Libri.mdb"); }},
      {"rename into no folder", 76, [] { renameFile("libri.mdb", "manca\\x"); }},
      {"copy nothing", 53, [] { copyFile("manca", "x"); }},
      {"copy onto itself", 70, [] { copyFile("libri.mdb", "LIBRI.MDB"); }},
      {"copy onto a folder", 75, [] { copyFile("libri.mdb", "casa"); }},
      {"copy into no folder", 76, [] { copyFile("libri.mdb", "manca\\x"); }},
      {"copy to an empty drive", 76, [] { copyFile("libri.mdb", "B:\\x"); }},
      {"copy from an empty drive", 76, [] { copyFile("B:\\x", "x"); }},
      {"copy to a full disk", 61, [] { copyFile("libri.mdb", "/dev/full"); }},
      {"folder that exists", 75, [] { createFolder("CASA"); }},
      {"folder in no folder", 76, [] { createFolder("manca\\x"); }},
      {"folder below a file", 76, [] { createFolder("libri.mdb\\x"); }},
      {"no such current folder", 76, [] { setCurrentDirectory("manca"); }},
      {"read nothing", 53, [] { checkReadable("manca"); }},
      {"write a folder", 75, [] { checkWritable("casa"); }},
      {"read a file", 0, [] { checkReadable("libri.mdb"); }},
      {"write a file", 0, [] { checkWritable("libri.mdb"); }},
  };
  for (const auto& c : cases) EXPECT_EQ(numberOf(c.action), c.number) << c.name;
  EXPECT_EQ(get("Dati/Libri.mdb"), "libri");
  EXPECT_TRUE(QFileInfo::exists("/dev/full"));
}

TEST_F(FileSystemTest, CopyReplacesAndLeavesNothingBeside) {
  QByteArray large(1'000'003, 'a');
  large[777'777] = '\0';
  put("Dati/grande", large);
  put("floppy/Copia.mdb", "vecchia");
  copyFile("grande", "A:\\COPIA.MDB");
  EXPECT_EQ(get("floppy/Copia.mdb"), large);
  EXPECT_EQ(listFiles("A:\\*"), QStringList{"Copia.mdb"});
  EXPECT_EQ(fileLength("A:\\Copia.mdb"), large.size());
}

TEST_F(FileSystemTest, FailedCopyKeepsTheOldFile) {
  put("floppy/Copia.mdb", "vecchia");
  // A source that opens but cannot be read.
  ASSERT_TRUE(QFile::link("/proc/self/mem", root("Dati/illeggibile")));
  EXPECT_EQ(numberOf([] { copyFile("illeggibile", "A:\\Copia.mdb"); }), 75);
  EXPECT_EQ(get("floppy/Copia.mdb"), "vecchia");
  EXPECT_EQ(listFiles("A:\\*"), QStringList{"Copia.mdb"});
}

TEST_F(FileSystemTest, ReadOnlyFilesAreDenied) {
  if (::geteuid() == 0) GTEST_SKIP() << "nothing is denied to root";
  QFile::setPermissions(root("Dati/Libri.mdb"), QFile::ReadOwner);
  put("Dati/nuovo", "nuovo");
  EXPECT_EQ(numberOf([] { copyFile("nuovo", "libri.mdb"); }), 70);
  EXPECT_EQ(numberOf([] { checkWritable("libri.mdb"); }), 70);
}

TEST_F(FileSystemTest, RenamesAlsoToAnotherCase) {
  renameFile("libri.mdb", "A:\\Spostato.mdb");
  renameFile("A:\\spostato.mdb", "A:\\SPOSTATO.MDB");
  EXPECT_EQ(listFiles("A:\\*"), QStringList{"SPOSTATO.MDB"});
  EXPECT_FALSE(exists("libri.mdb"));
  createFolder("A:\\Nuova");
  EXPECT_TRUE(folderExists("a:\\NUOVA"));
  EXPECT_FALSE(folderExists("A:\\SPOSTATO.MDB"));
  deleteFile("A:\\spostato.mdb");
  EXPECT_FALSE(exists("A:\\SPOSTATO.MDB"));
}

TEST_F(FileSystemTest, LocksOfOthersAreSeen) {
  const int other = ::open(QFile::encodeName(root("Dati/Libri.mdb")).constData(), O_RDWR);
  struct flock lock {};
  lock.l_whence = SEEK_SET;
  lock.l_type = F_RDLCK;
  ASSERT_EQ(::fcntl(other, F_OFD_SETLK, &lock), 0);
  EXPECT_EQ(numberOf([] { checkReadable("libri.mdb"); }), 0);
  EXPECT_EQ(numberOf([] { checkWritable("libri.mdb"); }), 70);
  lock.l_type = F_WRLCK;
  ASSERT_EQ(::fcntl(other, F_OFD_SETLK, &lock), 0);
  EXPECT_EQ(numberOf([] { checkReadable("libri.mdb"); }), 70);
  ::close(other);
  EXPECT_EQ(numberOf([] { checkWritable("libri.mdb"); }), 0);
}

}  // namespace
}  // namespace platform
