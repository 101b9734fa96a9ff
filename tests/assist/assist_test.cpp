#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "assist/modsysinfo.h"
#include "assist/moduli_assist.h"
#include "core/program_folder.h"
#include "core/verbi.h"
#include "platform/form.h"
#include "platform/message_box.h"
#include "platform/random_source.h"

namespace tavolix {
namespace {

using platform::MessageBoxSeam;

class StandIn final : public platform::Form {
 public:
  StandIn() : platform::Form("frmMain") {}

 private:
  QWidget* build() override { return new QWidget; }
};

class Assist : public ::testing::Test {
 protected:
  Assist() {
    MessageBoxSeam::setNoWindow(true);
    platform::forms().add<StandIn>("frmMain");
    RegistraFormAssist();
  }
  ~Assist() override {
    platform::forms().clear();
    platform::RandomSeam::clear();
    MessageBoxSeam::reset();
    store::CloseWorkspace();
  }

  static platform::Form& form(const char* name) { return platform::forms()[name]; }
  static void click(const char* name, const char* button) {
    form(name).control<QAbstractButton>(button)->click();
  }
  static QString number() { return form("frmSin").control<QLabel>("lblNr")->text(); }
  static QString tip() { return form("frmSin").control<QPlainTextEdit>("txtNote")->toPlainText(); }
  // Does a work while the tips of a group are shown, and closes them; false if none are.
  static bool inTips(const QString& group, const std::function<void()>& work) {
    bool shown = false;
    QTimer::singleShot(0, qApp, [&] {
      if (!platform::forms().isLoaded("frmSin") || !form("frmSin").IsVisible()) return;
      shown = true;
      work();
      click("frmSin", "cmdEsci");
    });
    verbi().MostraSuggerimenti(group);
    QApplication::processEvents();
    EXPECT_FALSE(platform::forms().isLoaded("frmSin"));
    return shown;
  }
  int tips(const QString& group) const {
    return folder_.found("SELECT count(*) FROM SIN WHERE grp = '" + group + "'", "SIN.SIN").toInt();
  }

  ProgramFolder folder_;
};

TEST_F(Assist, EachGroupHasItsTips) {
  EXPECT_GE(tips("MAIN"), 40);
  for (const char* group : {"ELEMULT", "RAGGRUPP", "GRAFICI", "ORDINE"}) {
    EXPECT_GE(tips(group), 10) << group;
  }
  EXPECT_EQ(folder_.found("SELECT count(*) FROM SIN WHERE length(note) > 400", "SIN.SIN"), "0");
}

TEST_F(Assist, TipsFromTheFirstToTheLast) {
  const int last = tips("ORDINE");
  EXPECT_TRUE(inTips("ORDINE", [&] {
    const auto shown = [&](int place) {
      EXPECT_EQ(number(), QString("Suggerimento nr. %1 di %2").arg(place).arg(last));
      EXPECT_EQ(tip(), folder_.found(QString("SELECT note FROM SIN WHERE grp = 'ORDINE' ORDER BY "
                                             "ID LIMIT 1 OFFSET %1")
                                         .arg(place - 1),
                                     "SIN.SIN"));
    };
    for (int i = 0; i < last; ++i) click("frmSin", "cmdPrecedente");
    shown(1);
    click("frmSin", "cmdSuccessivo");
    shown(2);
    for (int i = 0; i < last; ++i) click("frmSin", "cmdSuccessivo");
    shown(last);
  }));
}

TEST_F(Assist, TipsBeginAnywhere) {
  QStringList numbers;
  for (quint32 seed = 1; seed <= 12; ++seed) {
    platform::RandomSeam::setSeed(seed);
    inTips("MAIN", [&] { numbers << number(); });
  }
  numbers.removeDuplicates();
  EXPECT_GT(numbers.size(), 4);
}

TEST_F(Assist, WhatIsCheckedIsWrittenAtOnce) {
  folder_.set("Application", "SuggAvvio", "1");
  EXPECT_TRUE(inTips("MAIN", [&] {
    auto* box = form("frmSin").control<QCheckBox>("chkSuggAvvio");
    EXPECT_TRUE(box->isChecked());
    box->click();
    EXPECT_EQ(folder_.setting("Application", "SuggAvvio"), "0");
    box->click();
    EXPECT_EQ(folder_.setting("Application", "SuggAvvio"), "1");
  }));
}

TEST_F(Assist, NoTipsAndNoFile) {
  EXPECT_FALSE(inTips("NESSUNO", [] {}));
  EXPECT_TRUE(MessageBoxSeam::shown().isEmpty());
  QFile::remove(folder_.path("SIN.SIN"));
  MessageBoxSeam::setNextAnswer(platform::kOk);
  EXPECT_FALSE(inTips("MAIN", [] {}));
  ASSERT_EQ(MessageBoxSeam::shown().size(), 1);
  EXPECT_TRUE(MessageBoxSeam::shown()[0].text.endsWith("Procedura: frmSin!Carica"));
}

TEST_F(Assist, TheAboutBoxGoesByClickAndKey) {
  const auto show = [] {
    form("frmAbout").Show();
    const auto* version = form("frmAbout").control<QLabel>("panVersione");
    EXPECT_EQ(version->text(), "Versione 98 Revisione 02");
    const QWidget* picture = form("frmAbout").Control("Picture1");
    EXPECT_EQ(form("frmAbout").Window()->size(), picture->size() + QSize(2, 2));
    EXPECT_EQ(picture->size(), QSize(480, 282));
  };
  show();
  QTest::mouseClick(form("frmAbout").Control("Picture1"), Qt::LeftButton);
  EXPECT_FALSE(form("frmAbout").IsLoaded());
  show();
  QApplication::processEvents();
  QTest::keyClick(form("frmAbout").Control("Picture1"), Qt::Key_Escape);
  EXPECT_FALSE(form("frmAbout").IsLoaded());
}

TEST_F(Assist, SystemInformationInTheClipboard) {
  form("frmSysInfo").Show();
  click("frmSysInfo", "cmdCopia");
  const QStringList lines = QApplication::clipboard()->text().split('\n');
  ASSERT_EQ(lines.size(), 9);
  const auto informazioni = RaccogliInformazioni();
  EXPECT_EQ(lines[3], "Dimensioni utili dello schermo: " + informazioni[3]);
  EXPECT_EQ(lines[4], "Path: " + QApplication::applicationDirPath());
  EXPECT_EQ(lines[5], "Nome file: test_assist");
  EXPECT_EQ(lines[6], "Versione: 98.0.2");
  click("frmSysInfo", "Command1");
  EXPECT_FALSE(form("frmSysInfo").IsLoaded());
}

TEST(SystemInformation, Texts) {
  const struct {
    QString found;
    const char* expected;
  } rows[] = {
      {sSistema("6.1.0-25-amd64", "Debian"), "6.1 Build 0 Debian"},
      {sSistema("6.12", "X 1"), "6.12 Build 0 X 1"},
      {sSistema("5.10.209", "X 1"), "5.10 Build 209 X 1"},
      {sSistema("?", "X 1"), "X 1"},
      {sProcessore("i586", "Cx"), "Intel Pentium"},
      {sProcessore("x86_64", "Quad 3 GHz"), "Non riconosciuto! (Quad 3 GHz)"},
      {sTempo(0), "0h 0m 0s"},
      {sTempo(3599999), "0h 59m 59s"},
      {sTempo(qint64{90} * 3600000 + 61000), "90h 1m 1s"},
  };
  for (const auto& row : rows) EXPECT_EQ(row.found, QString(row.expected));
}

}  // namespace
}  // namespace tavolix
