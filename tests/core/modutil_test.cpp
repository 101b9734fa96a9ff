#include "core/modutil.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>

#include "core/errore.h"
#include "platform/message_box.h"
#include "program_folder.h"

namespace tavolix {
namespace {

using platform::MessageBoxSeam;

class Messages : public ::testing::Test {
 protected:
  Messages() { MessageBoxSeam::setNoWindow(true); }
  ~Messages() override { MessageBoxSeam::reset(); }
  static MessageBoxSeam::Shown last() { return MessageBoxSeam::shown().last(); }
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
    EXPECT_EQ(iMsg("Testo del messaggio", c.type), c.result) << c.type;
    EXPECT_EQ(last().text, QString("Testo del messaggio"));
    EXPECT_EQ(last().style, c.style);
    EXPECT_EQ(last().title, QString("Attenzione!"));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
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
  Puntatore(kClessidra);
  MessageBoxSeam::setNextAnswer(platform::kOk);
  EXPECT_EQ(protetto("mod!Proc", [&] { return run(true); }), 0);
  EXPECT_EQ(last().text,
            QString("Si e' verificato un errore durante l'elaborazione. \r\rCodice errore: 3021\r"
                    "Descrizione: Nessun record corrente\rProcedura: mod!Proc"));
  EXPECT_EQ(last().style, 65552);
  EXPECT_EQ(last().title, QString(""));
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  Errore("mod!Proc");
  EXPECT_EQ(MessageBoxSeam::shown().size(), 1);
  MessageBoxSeam::setNextAnswer(platform::kOk);
  Errore(3078, "Tabella assente", {});
  EXPECT_TRUE(last().text.endsWith("3078\rDescrizione: Tabella assente\r"));
}

TEST(ModUtil, SelectsARowWhateverBlanksStandAroundIt) {
  QComboBox list;
  list.addItems({"Anno", "  Titolo ", "Autore  ", "Autore"});
  const struct {
    QString text;
    int row;
  } cases[] = {{"Titolo", 1}, {" Anno  ", 0}, {"Autore", 2}, {"autore", -1}};
  for (const auto& c : cases) {
    SelezionaVoceLista(list, c.text);
    EXPECT_EQ(list.currentIndex(), c.row) << qPrintable(c.text);
  }
}

}  // namespace
}  // namespace tavolix
