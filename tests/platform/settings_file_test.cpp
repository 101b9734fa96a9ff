#include "platform/settings_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

namespace platform {
namespace {

class SettingsFileTest : public testing::Test {
 protected:
  QString path(const QString& name = "Tavolix.ini") const { return folder_.filePath(name); }
  void put(const QByteArray& content) const {
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }
  QByteArray get() const {
    QFile file(path());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
  }

 private:
  QTemporaryDir folder_;
};

TEST_F(SettingsFileTest, Reads) {
  put("\xEF\xBB\xBF; commento\r\nsola=0\r\n[ Video ]\r\nTema =  scuro  \r\n"
      "Città=\"Forlì \"\nApice='a'b'\nSolo=\"\nvuota=\n;tema=chiaro\nrotta\nTEMA=doppia\n"
      "a=b=c\n[altra\ntema=persa\n[VIDEO]\npiù=seconda\n<<<x\nm=<<<FINE\nn=9\n");
  const struct {
    QString section, key, value;
  } cases[] = {
      {"Video", "Tema", "scuro"}, {"vIDEO", "tema", "scuro"},  {"video", "CITTÀ", "Forlì "},
      {"video", "apice", "a'b"},  {"video", "solo", "\""},     {"video", "vuota", ""},
      {"video", "a", "b=c"},      {"video", "PIÙ", "seconda"}, {"video", "m", "<<<FINE"},
      {"video", "n", "9"},        {"", "sola", "0"},           {"altra", "tema", "?"},
      {"video", "rotta", "?"},    {"video", "manca", "?"},     {"manca", "tema", "?"},
      {"video", "", "?"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(readString(path(), c.section, c.key, "?"), c.value) << c.key.toStdString();
  }
  EXPECT_EQ(readString("C:" + path("TAVOLIX.INI").replace('/', '\\'), "video", "n", "?"), "9");
}

TEST_F(SettingsFileTest, ReadsNumbers) {
  const struct {
    QByteArray text;
    qint64 number;
  } cases[] = {
      {"12", 12},   {" -7 ", -7}, {"12abc", 12},
      {"\"3\"", 3}, {"abc", 0},   {"", 0},
      {"0x10", 0},  {"1.9", 1},   {"5000000000", 5000000000},
      {"+4", 4},    {"- 4", 0},   {"99999999999999999999", INT64_MAX},
  };
  for (const auto& c : cases) {
    put("[s]\nn=" + c.text + "\n");
    EXPECT_EQ(readInt(path(), "s", "n", -1), c.number) << c.text.toStdString();
  }
  EXPECT_EQ(readInt(path(), "s", "manca", -1), -1);
}

TEST_F(SettingsFileTest, CutsLongValues) {
  put("[s]\nn=" + QByteArray(300, 'x') + "\nm=" + QByteArray(254, 'x') + "😀\n");
  EXPECT_EQ(readString(path(), "s", "n", ""), QString(255, 'x'));
  EXPECT_EQ(readString(path(), "s", "m", ""), QString(254, 'x')) << "half a character";
}

TEST_F(SettingsFileTest, FallsBackWithoutAFileOfText) {
  EXPECT_EQ(readString(path("manca"), "s", "n", "?"), "?");
  EXPECT_EQ(readString(path("."), "s", "n", "?"), "?");
  EXPECT_EQ(readString("/dev/zero", "s", "n", "?"), "?");
  EXPECT_EQ(readString("", "s", "n", "?"), "?");
  put(QByteArray("[s]\nn=1\n\0\0\x80\xFF", 12));
  EXPECT_EQ(readInt(path(), "s", "n", 5), 5);
  QRandomGenerator random(1);
  for (int round = 0; round < 200; ++round) {
    QByteArray rubbish(300, '\0');
    for (char& byte : rubbish) byte = "[]=;#\n\r\"x \xC3\xFF<"[random.bounded(13)];
    put(rubbish);
    EXPECT_EQ(readString(path(), "s", "n", "?"), "?");
    const bool written = writeString(path(), "s", "n", "1");
    EXPECT_EQ(readString(path(), "s", "n", "?"), written ? "1" : "?") << rubbish.toHex().data();
  }
}

TEST_F(SettingsFileTest, WritesOneValueAndKeepsTheRest) {
  const struct {
    QByteArray before;
    const char* section;
    const char* key;
    const char* value;
    QByteArray after;
  } cases[] = {
      {"", "s", "k", "1", "[s]\nk=1\n"},
      {"[S]\nK = \"0\"  \n;fine", "s", "k", "1", "[S]\nK = 1\n;fine"},
      {"; c\r\n[s]\r\nk=0\r\nignota\r\n", "s", "k", "1", "; c\r\n[s]\r\nk=1\r\nignota\r\n"},
      {"[s]\r\na=1\r\n\r\n; per t\r\n[t]\r\nk=9", "s", "k", "1",
       "[s]\r\na=1\r\nk=1\r\n\r\n; per t\r\n[t]\r\nk=9"},
      {"[s]\na=1", "s", "k", "1", "[s]\na=1\nk=1\n"},
      {"[s]\na=1", "t", "k", "1", "[s]\na=1\n\n[t]\nk=1\n"},
      {"[t]\nk=9\n[s]\n;k=0\nk=0\nk=2\n", "s", "k", "1", "[t]\nk=9\n[s]\n;k=0\nk=1\nk=2\n"},
      {"\xEF\xBB\xBF[s]\nk=0\n", "s", "k", "1", "\xEF\xBB\xBF[s]\nk=1\n"},
      {"[s]\nCITTÀ=a\n", "s", "città", "è", "[s]\nCITTÀ=è\n"},
      {"[s]\n", "s", "k", " a ", "[s]\nk=\" a \"\n"},
  };
  for (const auto& c : cases) {
    put(c.before);
    EXPECT_TRUE(writeString(path(), c.section, c.key, c.value));
    EXPECT_EQ(get(), c.after);
    EXPECT_EQ(readString(path(), c.section, c.key, "?"), c.value);
  }
}

TEST_F(SettingsFileTest, WrittenValuesReadBack) {
  for (const char* value : {"", " ", "\"", "\"a\"", "'a'", "''", "\"a'", ";a", "#a", "[a]", "a=b",
                            "<<<a", "\ta\t", "àèìòù €"}) {
    EXPECT_TRUE(writeString(path(), "s", "k", value)) << value;
    EXPECT_EQ(readString(path(), "s", "k", "?"), value);
  }
}

TEST_F(SettingsFileTest, RefusesWhatItCannotWrite) {
  put("[s]\nk=0\n");
  const struct {
    QString file, section, key, value;
  } cases[] = {
      {path(), "s", "k", "a\nb"},
      {path(), "s", "k", "a\r"},
      {path(), "s", "a=b", "1"},
      {path(), "s", ";k", "1"},
      {path(), "s", "", "1"},
      {path(), "s]", "k", "1"},
      {path(), "s\n[t", "k", "1"},
      {path("."), "s", "k", "1"},
      {path("manca/x"), "s", "k", "1"},
      {path() + "/x", "s", "k", "1"},
      {"", "s", "k", "1"},
      {path(), "s", "k", QString(QChar(0))},
  };
  for (const auto& c : cases) {
    EXPECT_FALSE(writeString(c.file, c.section, c.key, c.value))
        << c.file.toStdString() << c.section.toStdString() << c.key.toStdString();
    EXPECT_EQ(get(), "[s]\nk=0\n");
  }
  put(QByteArray("\0\0\0", 3));
  EXPECT_FALSE(writeString(path(), "s", "k", "1"));
  if (::geteuid() == 0) return;  // root may write read-only files
  QFile::setPermissions(path(), QFile::ReadOwner);
  EXPECT_FALSE(writeString(path(), "s", "k", "1"));
}

}  // namespace
}  // namespace platform
