#include <gtest/gtest.h>

#include <QLocale>

#include "core/modutil.h"
#include "program_folder.h"

namespace tavolix {
namespace {

TEST(Testi, CompletesPathsOfTheProgramOnly) {
  const struct {
    QString given;
    QString full;
  } cases[] = {
      {"tvx.ini", "/cartella\\tvx.ini"},
      {"archivi\\casa.tvx", "/cartella\\archivi\\casa.tvx"},
      {"", "/cartella\\"},
      {"x", "/cartella\\x"},
      {"C:\\casa.tvx", "C:\\casa.tvx"},
      {"a:casa.tvx", "a:casa.tvx"},
      {"\\\\server\\casa.tvx", "\\\\server\\casa.tvx"},
      {"/home/casa.tvx", "/home/casa.tvx"},
  };
  const QString before = sCartellaProgramma();
  ImpostaCartellaProgramma("/cartella");
  for (const auto& c : cases) EXPECT_EQ(sPathCompleto(c.given), c.full);
  ImpostaCartellaProgramma(before);
}

TEST(Testi, TakesPathsApart) {
  const struct {
    QString path;
    QString name;
    QString drive;
    QString rest;
  } cases[] = {
      {"C:\\casa\\libri.tvx", "libri.tvx", "C:", "\\casa\\libri.tvx"},
      {"A:libri.tvx", "libri.tvx", "A:", "libri.tvx"},
      {"/home/maria/libri.tvx", "libri.tvx", "", "/home/maria/libri.tvx"},
      {"misto\\a/b.tvx", "b.tvx", "", "misto\\a/b.tvx"},
      {"libri.tvx", "libri.tvx", "", "libri.tvx"},
      {"C:\\casa\\", "", "C:", "\\casa\\"},
      {"C:", "", "C:", ""},
      {"", "", "", ""},
  };
  for (const auto& c : cases) {
    QString drive = "x";
    QString rest = "x";
    SeparaDrive(c.path, drive, rest);
    EXPECT_EQ(sNomeFile(c.path), c.name);
    EXPECT_EQ(drive, c.drive);
    EXPECT_EQ(rest, c.rest);
  }
}

TEST(Testi, PreparesTextsForQueriesAndLines) {
  EXPECT_EQ(sApici("L'isola d'oro"), QString("'L''isola d''oro'"));
  EXPECT_EQ(sApici(""), QString("''"));
  QString doubled = "a\"b\"";
  EXPECT_EQ(RaddoppiaCarattere(doubled, '"'), QString("a\"\"b\"\""));
  EXPECT_EQ(doubled, QString("a\"\"b\"\""));
  QString lines = "uno\r\ndue\ntre";
  TogliACapo(lines);
  EXPECT_EQ(lines, QString("uno  due tre"));
}

TEST(Testi, TurnsNullIntoAnEmptyTextOrZero) {
  EXPECT_EQ(NullAStringa({}), QString(""));
  EXPECT_EQ(NullAStringa(QStringLiteral("testo")), QString("testo"));
  EXPECT_EQ(NullAStringa(7), QString("7"));
  EXPECT_EQ(NullAZero({}), QVariant(0));
  EXPECT_EQ(NullAZero(2.5), QVariant(2.5));
  EXPECT_EQ(NullAZero(QStringLiteral("x")), QVariant(QStringLiteral("x")));
}

TEST(Testi, FollowsTheDecimalSeparatorOfTheSystem) {
  const QLocale before;
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
  RilevaSepDec();
  EXPECT_EQ(sSepDec, QString("."));
  QLocale::setDefault(before);
  RilevaSepDec();
  EXPECT_EQ(sSepDec, QString(","));
}

TEST(Testi, KnowsTheCalendar) {
  const struct {
    int month;
    int year;
    int days;
  } cases[] = {{1, 1999, 31}, {2, 1999, 28}, {2, 1996, 29}, {2, 1900, 28},
               {2, 2000, 29}, {4, 1998, 30}, {12, 1998, 31}};
  for (const auto& c : cases) EXPECT_EQ(GiorniNelMese(c.month, c.year), c.days) << c.month;
  EXPECT_EQ(sNomeMese(1), QString("Gennaio"));
  EXPECT_EQ(sNomeMese(12), QString("Dicembre"));
  for (const int outside : {0, 13, -1}) EXPECT_EQ(sNomeMese(outside), QString(""));
}

TEST(Testi, TurnsSecondsIntoATimeOfDay) {
  const struct {
    int seconds;
    QTime time;
  } cases[] = {{3725, {1, 2, 5}}, {0, {0, 0, 0}},        {-5, {0, 0, 0}},
               {59, {0, 0, 59}},  {86399, {23, 59, 59}}, {90000, {1, 0, 0}}};
  for (const auto& c : cases) EXPECT_EQ(SecondiAData(c.seconds), c.time) << c.seconds;
}

// "AB" with K (75): 65+75 = 140, then 66+75+65 = 206.
// "zzé" with "zÿ": 122+122 = 244, 122+255-255+122 = 244, 233+122-255+122 = 222.
// "ÿÿ" with "a": 255+97-255 = 97, 255+97-255 = 97 and 97+255-255 = 97.
TEST(Testi, ScramblesAccessCodes) {
  const struct {
    QString text;
    QString key;
    QVector<ushort> codes;
  } cases[] = {
      {"AB", "K", {140, 206}},
      {QString::fromUtf8("zzé"), QString::fromUtf8("zÿ"), {244, 244, 222}},
      {QString::fromUtf8("ÿÿ"), "a", {97, 97}},
      {"", "K", {}},
  };
  for (const auto& c : cases) {
    QString text = c.text;
    CifraStringa(text, c.key);
    EXPECT_EQ(QVector<ushort>(text.utf16(), text.utf16() + text.size()), c.codes);
    DecifraStringa(text, c.key);
    EXPECT_EQ(text, c.text);
  }
}

TEST(Testi, ReadsBackEveryAccessCode) {
  for (int first = 1; first <= 255; ++first) {
    for (int second = 1; second <= 255; second += 2) {
      const QString code = QString(QChar(first)) + QChar(second) + QChar(256 - first);
      QString text = code;
      CifraStringa(text, QString(QChar(second)) + QChar(first));
      DecifraStringa(text, QString(QChar(second)) + QChar(first));
      ASSERT_EQ(text, code) << first << ' ' << second;
    }
  }
}

}  // namespace
}  // namespace tavolix
