#include <gtest/gtest.h>

#include "core/modutil.h"
#include "program_folder.h"

namespace tavolix {
namespace {

TEST(Testi, TakesPathsApartAndCompletesThoseOfTheProgram) {
  const QString before = sCartellaProgramma();
  ImpostaCartellaProgramma("/cartella");
  const struct {
    QString path, full;  // full empty: as it is
    QString name, drive, rest;
  } cases[] = {
      {"tvx.ini", "/cartella\\tvx.ini", "tvx.ini", "", "tvx.ini"},
      {"C:\\casa\\libri.tvx", "", "libri.tvx", "C:", "\\casa\\libri.tvx"},
      {"A:libri.tvx", "", "libri.tvx", "A:", "libri.tvx"},
      {"\\\\server\\casa.tvx", "", "casa.tvx", "", "\\\\server\\casa.tvx"},
      {"/home/maria/libri.tvx", "", "libri.tvx", "", "/home/maria/libri.tvx"},
      {"misto\\a/b.tvx", "/cartella\\misto\\a/b.tvx", "b.tvx", "", "misto\\a/b.tvx"},
      {"C:", "", "", "C:", ""},
      {"", "/cartella\\", "", "", ""},
  };
  for (const auto& c : cases) {
    QString drive = "x";
    QString rest = "x";
    SeparaDrive(c.path, drive, rest);
    EXPECT_EQ(drive, c.drive);
    EXPECT_EQ(rest, c.rest);
    EXPECT_EQ(sNomeFile(c.path), c.name);
    EXPECT_EQ(sPathCompleto(c.path), c.full.isEmpty() ? c.path : c.full);
  }
  ImpostaCartellaProgramma(before);
}

TEST(Testi, PreparesTextsForQueriesAndLines) {
  EXPECT_EQ(sApici("L'isola d'oro"), QString("'L''isola d''oro'"));
  EXPECT_EQ(sApici(""), QString("''"));
  QString doubled = "a\"b\"";
  RaddoppiaCarattere(doubled, '"');
  EXPECT_EQ(doubled, QString("a\"\"b\"\""));
  QString lines = "uno\r\ndue\ntre";
  TogliACapo(lines);
  EXPECT_EQ(lines, QString("uno  due tre"));
}

TEST(Testi, TurnsSecondsIntoATimeOfDay) {
  const struct {
    int seconds;
    QTime time;
  } cases[] = {{3725, {1, 2, 5}}, {-5, {0, 0, 0}}, {86399, {23, 59, 59}}, {90000, {1, 0, 0}}};
  for (const auto& c : cases) EXPECT_EQ(SecondiAData(c.seconds), c.time) << c.seconds;
}

// "AB" with K (75): 65+75 = 140, then 66+75+65 = 206.
// "zzé" with "zÿ": 122+122 = 244, 122+255-255+122 = 244, 233+122-255+122 = 222.
TEST(Testi, ScramblesAccessCodes) {
  const struct {
    QString text;
    QString key;
    QVector<ushort> codes;
  } cases[] = {
      {"AB", "K", {140, 206}},
      {QString::fromUtf8("zzé"), QString::fromUtf8("zÿ"), {244, 244, 222}},
      {"", "K", {}},
  };
  for (const auto& c : cases) {
    QString text = c.text;
    CifraStringa(text, c.key);
    EXPECT_EQ(QVector<ushort>(text.utf16(), text.utf16() + text.size()), c.codes);
  }
  for (int code = 1; code <= 255; ++code) {
    const QString clear = QString(QChar(code)) + QChar(255) + QChar(256 - code);
    QString text = clear;
    CifraStringa(text, QString(QChar(256 - code)) + 'K');
    DecifraStringa(text, QString(QChar(256 - code)) + 'K');
    EXPECT_EQ(text, clear) << code;
  }
}

}  // namespace
}  // namespace tavolix
