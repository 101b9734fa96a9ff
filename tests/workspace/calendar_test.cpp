#include <QComboBox>

#include "desk.h"
#include "platform/clock.h"
#include "workspace/calendario.h"

namespace tavolix {
namespace {

QString text(const Giorno& giorno) {
  return QStringLiteral("%1-%2-%3").arg(giorno.giorno).arg(giorno.mese).arg(giorno.anno);
}

TEST(Calendar, CountsInWholeNumbers) {
  const struct {
    Giorno found;
    const char* expected;
  } cases[] = {
      {daNumeri(31, 4, 2001), "1-5-2001"},
      {daNumeri(1, 13, 1999), "1-1-2000"},
      {daNumeri(0, 1, 2000), "31-12-1999"},
      {daNumeri(5, 5, 0), "5-5-2000"},
      {daNumeri(5, 5, 80), "5-5-1980"},
      {entroAnni({31, 12, 2030}), "31-12-2030"},
      {cambiaMese({29, 2, 2000}, 2, 2001), "1-2-2001"},
      {cambiaMese({5, 3, 2001}, 0, 2001), "5-1-2001"},
      {meseSuccessivo({9, 12, 2030}), "9-1-2030"},
      {meseSuccessivo({9, 12, 2029}), "9-1-2030"},
      {mesePrecedente({9, 1, 1980}), "9-12-1980"},
      {{giornoInCella(0, 8, 2021), 8, 2021}, "0-8-2021"},
      {{giornoInCella(36, 8, 2021), 8, 2021}, "31-8-2021"},
      {{giornoInCella(36, 2, 2021), 2, 2021}, "0-2-2021"},
      {spostaGiorni({1, 1, 1980}, -7), "1-1-1980"},
  };
  for (const auto& c : cases) EXPECT_EQ(text(c.found), QString(c.expected));
}

class CalendarWindow : public Desk {
 protected:
  CalendarWindow() { platform::ClockSeam::setFixed({QDate(2026, 11, 25), QTime(10, 0)}); }
  ~CalendarWindow() override { platform::ClockSeam::clear(); }

  static QWidget* part(const QString& name) { return control("frmCalendario", name); }
  static void push(const QString& name) { click(part(name)); }
  static void clickDay(int day) {
    for (QLabel* cell : part("panGiorni")->findChildren<QLabel*>()) {
      if (cell->text() == QString::number(day)) click(cell);
    }
  }
  static QString marked() {
    QStringList days;
    for (const QLabel* cell : part("panGiorni")->findChildren<QLabel*>()) {
      if (cell->font().bold() && cell->font().underline()) days << cell->text();
    }
    return days.join(' ');
  }
  static void walkByMouse() {
    clickDay(30);
    push("cmdGiorno(0)");  // an empty cell
    EXPECT_EQ(marked(), QString("30"));
    push("cmdIndietro");
    EXPECT_EQ(marked(), QString("1"));
    static_cast<QComboBox*>(part("cboAnno"))->setCurrentIndex(0);
    QTest::mouseDClick(part("cmdGiorno(10)"), Qt::LeftButton);
  }
  static void pickInLists() {
    for (const char* keys : {"Down Esc", "Down Return"}) {
      auto* months = static_cast<QComboBox*>(part("cboMese"));
      months->setFocus();
      months->showPopup();
      press(keys);
      QApplication::processEvents();
      EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    }
    push("cmdOK");
  }
  // Takes effect when the window opens again.
  static void lock() {
    static_cast<QLabel*>(part("lblBlock"))->setText("BLOCCO");
    press("Esc");
  }
  static void walkLocked() {
    EXPECT_FALSE(part("cboMese")->isEnabled() || part("cmdAvanti")->isEnabled());
    press("PgDown Down Down Down Down Down Return");
  }
  static void expectUnder(const QWidget& date) {
    const QWidget* window = part("panGiorni")->window();
    EXPECT_LE(window->y() - date.mapToGlobal(QPoint(0, date.height())).y(), 40);
    EXPECT_TRUE(window->screen()->geometry().contains(window->frameGeometry()));
  }
};

TEST_F(CalendarWindow, PicksADateByKeysAndMouse) {
  ASSERT_TRUE(start());
  const struct {
    const char* before;  // digits typed
    std::function<void()> act;
    const char* after;
  } cases[] = {
      {"31082021", [] { press("Return"); }, "31-08-2021"},
      {"15032001", [] { press("Right Down PgUp Home Return"); }, "01-02-2001"},
      {"31032001", [] { press("PgUp End Up Left Return"); }, "20-02-2001"},
      {"15032001", [] { press("PgDown Esc"); }, "15-03-2001"},
      {"15031975", [] { push("Command1"); }, "15-03-1975"},
      {"15031975", [] { push("cmdOK"); }, "15-03-1980"},
      {"15032035", [] { push("cmdOK"); }, "15-03-2000"},
      {"", [] { push("cmdOK"); }, "25-11-2026"},
      {"", [] { push("Command1"); }, ""},
      {"1503", [] { press("Esc"); }, "15-03-____"},
      {"31022001", [] { push("cmdOK"); }, "25-11-2026"},
      {"15032001",
       [] {
         push("cmdOggi");
         clickDay(7);
         push("cmdOK");
       },
       "07-11-2026"},
      {"15032001", walkByMouse, "07-02-1980"},
      {"15032001", pickInLists, "15-04-2001"},
      // A cell without a day.
      {"15032001", [] { QTest::mouseDClick(part("cmdGiorno(0)"), Qt::LeftButton); }, "15-03-2001"},
      {"15032001", lock, "15-03-2001"},
      {"15032001", walkLocked, "29-03-2001"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.before) + " to " + c.after);
    enter("txtDtaAcq");
    replace(c.before);
    const auto open = [] {
      box("cmdCalendAcq")->setFocus();
      press(Qt::Key_Space);
    };
    inForm("frmCalendario", open, [&] {
      expectUnder(*box("txtDtaAcq"));
      c.act();
    });
    EXPECT_EQ(boxText("txtDtaAcq"), QString(c.after));
    EXPECT_TRUE(box("txtDtaAcq")->hasFocus());
  }
  EXPECT_EQ(message(), QString("-"));
}

}  // namespace
}  // namespace tavolix
