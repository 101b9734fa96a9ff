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

}  // namespace
}  // namespace tavolix
