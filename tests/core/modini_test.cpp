#include "core/modini.h"

#include <gtest/gtest.h>

#include <QDir>

#include "program_folder.h"

namespace tavolix {
namespace {

class ModIni : public ::testing::Test {
 protected:
  ModIni() {
    folder_.writeFile("prova.ini",
                      "[Uno]\nTesto=valore\nAssente=non trovato\nNumero=12\nMeno=-1\n"
                      "Limite=-32768\nParola=dodici\n[Due]\nTesto=altro\nLungo=" +
                          QByteArray(300, 'x') + "\n");
    ImpostaFileIni(folder_.path("prova.ini"));
    ImpostaSezioneIni("Uno");
  }
  // The text of a key, "-" if it counts as missing.
  static QString text(const QString& key) {
    QString value = "resto";
    return bLeggiStr(key, value) ? value : (value.isEmpty() ? "-" : value);
  }
  static QString number(const QString& key) {
    int value = 99;
    return bLeggiInt(key, value) ? QString::number(value) : (value == 0 ? "-" : "resto");
  }

  ProgramFolder folder_;
};

TEST_F(ModIni, ReadsValuesOfTheCurrentSection) {
  const struct {
    QString section;
    QString key;
    QString text;
    QString number;
  } cases[] = {
      {"Uno", "Testo", "valore", "0"},
      {"Due", "Testo", "altro", "0"},
      {"uno", "testo", "valore", "0"},
      {"Uno", "Numero", "12", "12"},
      {"Uno", "Meno", "-1", "-1"},
      {"Uno", "Limite", "-32768", "-"},
      {"Uno", "Assente", "-", "0"},
      {"Uno", "Nessuno", "-", "-"},
      {"Tre", "Testo", "-", "-"},
      {"Uno", "Parola", "dodici", "0"},
      {"Due", "Lungo", QString(255, 'x'), "0"},
  };
  for (const auto& c : cases) {
    ImpostaSezioneIni(c.section);
    EXPECT_EQ(text(c.key), c.text) << qPrintable(c.key);
    EXPECT_EQ(number(c.key), c.number) << qPrintable(c.key);
  }
}

TEST_F(ModIni, WritesWhatItReads) {
  EXPECT_TRUE(bScriviStr("Nuovo", "Perché no"));
  EXPECT_TRUE(bScriviStr("Numero", "7"));
  ImpostaSezioneIni("Quattro");
  EXPECT_TRUE(bScriviStr("Primo", ""));
  EXPECT_EQ(text("Primo"), QString(""));
  ImpostaSezioneIni("Uno");
  EXPECT_EQ(text("Nuovo"), QString::fromUtf8("Perché no"));
  EXPECT_EQ(number("Numero"), QString("7"));
  EXPECT_EQ(text("Testo"), QString("valore"));
}

TEST_F(ModIni, LivesWithoutAFile) {
  QDir(folder_.path()).mkdir("cartella.ini");
  folder_.writeFile("byte.ini", QByteArray("[Uno]\0Testo=x", 13));
  for (const char* name : {"cartella.ini", "byte.ini", "nessuna/cartella.ini"}) {
    ImpostaFileIni(folder_.path(name));
    EXPECT_EQ(text("Testo"), QString("-")) << name;
    EXPECT_EQ(number("Numero"), QString("-")) << name;
    EXPECT_FALSE(bScriviStr("Testo", "x")) << name;
  }
}

}  // namespace
}  // namespace tavolix
