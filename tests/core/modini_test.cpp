#include "core/modini.h"

#include <gtest/gtest.h>

#include "program_folder.h"

namespace tavolix {
namespace {

// Text and number of a key, "-" for what counts as missing.
QString readBoth(const QString& key) {
  QString text = "resto";
  int number = 99;
  const QString first = bLeggiStr(key, text) ? text : (text.isEmpty() ? "-" : text);
  const bool found = bLeggiInt(key, number);
  return first + ' ' + (found || number != 0 ? QString::number(number) : "-");
}

TEST(ModIni, ReadsAndWritesValuesOfTheCurrentSection) {
  const ProgramFolder folder;
  folder.writeFile("prova.ini",
                   "[Uno]\nTesto=valore\nAssente=non trovato\nNumero=12\n"
                   "Limite=-32768\n[Due]\nTesto=altro\n");
  ImpostaFileIni(folder.path("prova.ini"));
  ImpostaSezioneIni("Uno");
  EXPECT_TRUE(bScriviStr("Nuovo", "Perché no"));
  const char* const cases[][3] = {
      {"Uno", "Testo", "valore 0"},  {"Due", "Testo", "altro 0"},     {"Uno", "Numero", "12 12"},
      {"Uno", "Limite", "-32768 -"}, {"Uno", "Assente", "- 0"},       {"Uno", "Nessuno", "- -"},
      {"Tre", "Testo", "- -"},       {"Uno", "Nuovo", "Perché no 0"},
  };
  for (const auto& [section, key, read] : cases) {
    ImpostaSezioneIni(section);
    EXPECT_EQ(readBoth(key), QString(read)) << section << ' ' << key;
  }
}

}  // namespace
}  // namespace tavolix
