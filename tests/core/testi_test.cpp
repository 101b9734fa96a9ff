#include <gtest/gtest.h>

#include "core/modutil.h"
#include "program_folder.h"

namespace tavolix {
namespace {

TEST(Testi, TakesPathsApartAndCompletesThoseOfTheProgram) {
  const QString before = sCartellaProgramma();
  ImpostaCartellaProgramma("/cartella");
  const char* const cases[][4] = {
      // as given, complete, name, drive and rest
      {"tvx.ini", "/cartella\\tvx.ini", "tvx.ini", "|tvx.ini"},
      {"C:\\casa\\a.tvx", "C:\\casa\\a.tvx", "a.tvx", "C:|\\casa\\a.tvx"},
      {"A:a.tvx", "A:a.tvx", "a.tvx", "A:|a.tvx"},
      {"\\\\server\\a.tvx", "\\\\server\\a.tvx", "a.tvx", "|\\\\server\\a.tvx"},
      {"/home/a.tvx", "/home/a.tvx", "a.tvx", "|/home/a.tvx"},
      {"", "/cartella\\", "", "|"},
  };
  for (const auto& [path, full, name, parts] : cases) {
    QString drive = "x";
    QString rest = "x";
    SeparaDrive(path, drive, rest);
    EXPECT_EQ(drive + '|' + rest, QString(parts));
    EXPECT_EQ(sNomeFile(path), QString(name));
    EXPECT_EQ(sPathCompleto(path), QString(full));
  }
  ImpostaCartellaProgramma(before);
}

TEST(Testi, PreparesTexts) {
  EXPECT_EQ(sApici("L'isola d'oro"), QString("'L''isola d''oro'"));
  QString doubled = "a\"b\"";
  RaddoppiaCarattere(doubled, '"');
  EXPECT_EQ(doubled, QString("a\"\"b\"\""));
  QString lines = "uno\r\ndue\ntre";
  TogliACapo(lines);
  EXPECT_EQ(lines, QString("uno  due tre"));
  EXPECT_EQ(SecondiAData(90061), QTime(1, 1, 1));
  EXPECT_EQ(SecondiAData(-5), QTime(0, 0, 0));
}

// "zzé" with "zÿ": 122+122 = 244, 122+255-255+122 = 244, 233+122-255+122 = 222.
TEST(Testi, ScramblesAccessCodes) {
  QString text = "zzé";
  CifraStringa(text, "zÿ");
  EXPECT_EQ(QVector<ushort>(text.utf16(), text.utf16() + 3), QVector<ushort>({244, 244, 222}));
  for (int code = 1; code <= 255; ++code) {
    const QString clear = QString(QChar(code)) + QChar(255) + QChar(256 - code);
    const QString key = QString(QChar(256 - code)) + 'K';
    text = clear;
    CifraStringa(text, key);
    DecifraStringa(text, key);
    EXPECT_EQ(text, clear) << code;
  }
}

}  // namespace
}  // namespace tavolix
