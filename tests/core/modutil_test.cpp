#include "core/modutil.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>

#include "core/errore.h"
#include "platform/data_combo.h"
#include "platform/form.h"
#include "platform/message_box.h"
#include "platform/value_archive.h"
#include "program_folder.h"

namespace tavolix {
namespace {

using platform::MessageBoxSeam;

class Window final : public platform::Form {
 public:
  using Form::Form;

 private:
  QWidget* build() override { return new QWidget; }
};

class Messages : public ::testing::Test {
 protected:
  Messages() { MessageBoxSeam::setNoWindow(true); }
  ~Messages() override { MessageBoxSeam::reset(); }
  static MessageBoxSeam::Shown last() { return MessageBoxSeam::shown().last(); }
};

TEST_F(Messages, WarnAskOrTell) {
  const struct {
    int type;
    int style;
    int pressed;
    int result;
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

TEST_F(Messages, ShowAFailureOnce) {
  const struct {
    QString procedure;
    QString text;
  } cases[] = {
      {"modCuore!DBRefresh",
       "Si e' verificato un errore durante l'elaborazione. \r\rCodice errore: 3078\r"
       "Descrizione: Tabella assente\rProcedura: modCuore!DBRefresh"},
      {"",
       "Si e' verificato un errore durante l'elaborazione. \r\rCodice errore: 3078\r"
       "Descrizione: Tabella assente\r"},
  };
  for (const auto& c : cases) {
    Puntatore(kClessidra);
    MessageBoxSeam::setNextAnswer(platform::kOk);
    Errore(3078, "Tabella assente", c.procedure);
    EXPECT_EQ(last().text, c.text);
    EXPECT_EQ(last().style, 65552);
    EXPECT_EQ(last().title, QString(""));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    const auto before = MessageBoxSeam::shown().size();
    Errore("modCuore!DBRefresh");
    EXPECT_EQ(MessageBoxSeam::shown().size(), before);
  }
}

TEST_F(Messages, ComeFromProtectedProceduresOnly) {
  const auto fail = [](bool fails) {
    if (fails) throw store::Failure(3021, "Nessun record corrente");
    return 5;
  };
  EXPECT_EQ(protetto("mod!Proc", [&] { return fail(false); }), 5);
  EXPECT_TRUE(ignorando([&] { fail(false); }));
  EXPECT_FALSE(ignorando([&] { fail(true); }));
  EXPECT_TRUE(MessageBoxSeam::shown().isEmpty());
  MessageBoxSeam::setNextAnswer(platform::kOk);
  EXPECT_EQ(protetto("mod!Proc", [&] { return fail(true); }), 0);
  EXPECT_TRUE(
      last().text.endsWith("3021\rDescrizione: Nessun record corrente\r"
                           "Procedura: mod!Proc"));
}

TEST(ModUtil, FillsYearsAndMonths) {
  QComboBox years;
  CaricaAnni(years);
  ASSERT_EQ(years.count(), 51);
  EXPECT_EQ(years.itemText(0), QString("1980"));
  EXPECT_EQ(years.itemText(50), QString("2030"));
  QComboBox months;
  CaricaMesi(months);
  ASSERT_EQ(months.count(), 12);
  EXPECT_EQ(months.itemText(2), QString("Marzo"));
}

TEST(ModUtil, SelectsARowWhateverBlanksStandAroundIt) {
  QComboBox list;
  list.addItems({"Anno", "  Titolo ", "Autore  ", "Autore"});
  const struct {
    QString text;
    int row;
  } cases[] = {{"Titolo", 1}, {" Anno  ", 0}, {"Autore", 2}, {"autore", -1}, {"Editore", -1}};
  for (const auto& c : cases) {
    list.setCurrentIndex(0);
    SelezionaVoceLista(list, c.text);
    EXPECT_EQ(list.currentIndex(), c.row);
  }
}

TEST(ModUtil, SetsACombosRowByTextOrKey) {
  platform::DataCombo combo;
  platform::ValueArchive archive({{"Adelphi", 31}, {"Bompiani", 12}});
  combo.SetList(archive.list());
  const struct {
    int column;
    QVariant value;
    int key;
  } cases[] = {{0, "Bompiani", 12}, {1, 31, 31}, {0, "Sellerio", 0}, {0, "adelphi", 31}, {1, 0, 0}};
  for (const auto& c : cases) {
    ImpostaValoreCombo(combo, c.column, c.value);
    EXPECT_EQ(combo.Value().toInt(), c.key) << qPrintable(c.value.toString());
  }
}

TEST(ModUtil, RemembersAHundredAndOneForms) {
  std::vector<std::unique_ptr<Window>> windows;
  for (int i = 0; i < 102; ++i) {
    windows.push_back(std::make_unique<Window>(QStringLiteral("frm%1").arg(i)));
    RegistraForm(*windows.back());
  }
  EXPECT_TRUE(bFormRegistrata("frm0"));
  EXPECT_TRUE(bFormRegistrata("frm100"));
  EXPECT_FALSE(bFormRegistrata("frm101"));
  DeregistraForm(*windows[40]);
  EXPECT_FALSE(bFormRegistrata("frm40"));
  RegistraForm(*windows[101]);
  EXPECT_TRUE(bFormRegistrata("frm101"));
  for (const auto& window : windows) DeregistraForm(*window);
  EXPECT_FALSE(bFormRegistrata("frm100"));
}

}  // namespace
}  // namespace tavolix
