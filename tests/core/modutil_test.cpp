#include "core/modutil.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>

#include "core/errore.h"
#include "core/modini.h"
#include "model/cifratura.h"
#include "platform/message_box.h"
#include "program_folder.h"

namespace tavolix {
namespace {

using platform::MessageBoxSeam;

// Messages are answered, and told as "title|style|text" if the pointer shows no more work.
class Messages : public ::testing::Test {
 protected:
  Messages() {
    MessageBoxSeam::setNoWindow(true);
    Puntatore(kClessidra);
  }
  ~Messages() override { MessageBoxSeam::reset(); }
  static QString told() {
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    const MessageBoxSeam::Shown& last = MessageBoxSeam::shown().last();
    return QStringLiteral("%1|%2|%3").arg(last.title).arg(last.style).arg(last.text);
  }
};

TEST_F(Messages, WarnAskOrTell) {
  const struct {
    int type, style, pressed, result;
  } cases[] = {
      {0, 48, platform::kOk, -1},
      {1, 0, platform::kOk, -1},
      {2, 36, platform::kYes, 1},
      {2, 36, platform::kNo, 0},
  };
  for (const auto& c : cases) {
    Puntatore(kClessidra);
    MessageBoxSeam::setNextAnswer(c.pressed);
    EXPECT_EQ(iMsg("Testo", c.type), c.result) << c.type;
    EXPECT_EQ(told(), QStringLiteral("Attenzione!|%1|Testo").arg(c.style));
  }
}

TEST_F(Messages, TellAFailureOnce) {
  const auto run = [](bool fails) {
    if (fails) throw store::Failure(3021, "Nessun record corrente");
    return 5;
  };
  EXPECT_EQ(protetto("mod!Proc", [&] { return run(false); }), 5);
  EXPECT_TRUE(ignorando([&] { run(false); }));
  EXPECT_FALSE(ignorando([&] { run(true); }));
  EXPECT_TRUE(MessageBoxSeam::shown().isEmpty());
  MessageBoxSeam::setNextAnswer(platform::kOk);
  EXPECT_EQ(protetto("mod!Proc", [&] { return run(true); }), 0);
  EXPECT_EQ(told(),
            QString("|65552|Si e' verificato un errore durante l'elaborazione. \r\rCodice errore: "
                    "3021\rDescrizione: Nessun record corrente\rProcedura: mod!Proc"));
  Errore("mod!Proc");
  EXPECT_EQ(MessageBoxSeam::shown().size(), 1);
  MessageBoxSeam::setNextAnswer(platform::kOk);
  Errore(3078, "Tabella assente", {});
  EXPECT_TRUE(told().endsWith("3078\rDescrizione: Tabella assente\r"));
}

TEST(ModUtil, SelectsARowWhateverBlanksStandAroundIt) {
  QComboBox list;
  list.addItems({"Anno", "  Titolo ", "Autore  ", "Autore"});
  const std::pair<const char*, int> cases[] = {{"Titolo", 1}, {" Anno", 0}, {"autore", -1}};
  for (const auto& [text, row] : cases) {
    SelezionaVoceLista(list, text);
    EXPECT_EQ(list.currentIndex(), row) << text;
  }
}

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

// "zzé" with "zÿ": 122+122 = 244, 122+255-255+122 = 244, 233+122-255+122 = 222. "€" is 128.
TEST(Testi, ScramblesAccessCodes) {
  const auto scrambled = [](QString text, const QString& key) {
    CifraStringa(text, key);
    return text;
  };
  EXPECT_EQ(scrambled("zzé", "zÿ"), QString("ôôÞ"));
  EXPECT_EQ(scrambled("€", "A"), QString(QChar(128 + 65)));
  EXPECT_EQ(scrambled("?", "A"), QString("€"));
  QString all = "€ŠšŽžŒœŸ‘’“”•–—˜™›‹†‡…‰ƒ„‚ˆ";
  for (int code = 1; code < 128; ++code) all += QString(QChar(code)) + QChar(code + 128);
  int codes = 0;
  for (const QChar letter : all) {
    if (!bCifrabile(letter)) continue;
    ++codes;
    QString text = QString(letter) + 'K' + letter;
    const QString key = QString("K") + letter;
    const QString clear = text;
    text = scrambled(text, key);
    DecifraStringa(text, key);
    EXPECT_EQ(text, clear) << int(letter.unicode());
  }
  EXPECT_EQ(codes, 255);
  EXPECT_EQ(sCodiceDecifrato(sCodiceCifrato(" cèle€ ")), QString("CÈLE€"));
  EXPECT_EQ(sCodiceDecifrato(sCodiceCifrato("  ")), QString("Rosa Di Sole: Lupo 42"));
  for (const QString& outside : {QString("Ω"), QString("a₤"), QString("µ").toUpper()}) {
    EXPECT_FALSE(bCifrabile(outside));
    EXPECT_THROW(sCodiceCifrato(outside), store::Failure);
  }
}

}  // namespace
}  // namespace tavolix
