#include "platform/settings_file.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace platform
