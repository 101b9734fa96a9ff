#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QTest>

#include "core/campi.h"
#include "core/modutil.h"
#include "desk.h"
#include "platform/clock.h"
#include "platform/date_box.h"
#include "platform/form.h"
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
      {daNumeri(30, 2, 2000), "1-3-2000"},
      {daNumeri(1, 13, 1999), "1-1-2000"},
      {daNumeri(0, 1, 2000), "31-12-1999"},
      {daNumeri(5, 5, 0), "5-5-2000"},
      {daNumeri(5, 5, 80), "5-5-1980"},
      {entroAnni({7, 7, 2031}), "7-7-2000"},
      {entroAnni({7, 7, 1975}), "7-7-1980"},
      {entroAnni({31, 12, 2030}), "31-12-2030"},
      {cambiaMese({31, 1, 2001}, 2, 2001), "1-2-2001"},
      {cambiaMese({29, 2, 2000}, 2, 2001), "1-2-2001"},
      {cambiaMese({5, 3, 2001}, 0, 2001), "5-1-2001"},
      {meseSuccessivo({9, 12, 2030}), "9-1-2030"},
      {meseSuccessivo({9, 12, 2029}), "9-1-2030"},
      {mesePrecedente({9, 1, 1980}), "9-12-1980"},
      {mesePrecedente({31, 3, 2000}), "1-2-2000"},
      {spostaGiorni({1, 1, 1980}, -7), "1-1-1980"},
      {spostaGiorni({28, 2, 2000}, 7), "6-3-2000"},
  };
  for (const auto& c : cases) EXPECT_EQ(text(c.found), QString(c.expected));
}

// Every cell of every month against the calendar of the toolkit.
TEST(Calendar, PutsEachDayInItsCell) {
  for (QDate day(kPrimoAnno, 1, 1); day.year() <= kUltimoAnno; day = day.addDays(1)) {
    const int cell = primaCella(day.month(), day.year()) + day.day() - 1;
    ASSERT_LT(cell, kCelle);
    EXPECT_EQ(cell % 7 + 1, day.dayOfWeek());
    EXPECT_EQ(giornoInCella(cell, day.month(), day.year()), day.day());
  }
  EXPECT_EQ(giornoInCella(0, 8, 2021), 0);
  EXPECT_EQ(giornoInCella(36, 8, 2021), 31);
  EXPECT_EQ(giornoInCella(36, 2, 2021), 0);
}

class CalendarWindow : public Desk {
 protected:
  CalendarWindow() { platform::ClockSeam::setFixed({QDate(2026, 11, 25), QTime(10, 0)}); }
  ~CalendarWindow() override { platform::ClockSeam::clear(); }

  static QWidget* part(const QString& name) { return control("frmCalendario", name); }
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
};

TEST_F(CalendarWindow, PicksADateByKeysAndMouse) {
  ASSERT_TRUE(start());
  const struct {
    const char* before;  // digits typed
    std::function<void()> act;
    const char* after;
  } cases[] = {
      {"15032001", [] { press(Qt::Key_Return); }, "15-03-2001"},
      {"15032001",
       [] {
         press(Qt::Key_Right);
         press(Qt::Key_Down);
         press(Qt::Key_PageUp);
         press(Qt::Key_Home);
         press(Qt::Key_Return);
       },
       "01-02-2001"},
      {"31032001",
       [] {
         press(Qt::Key_PageUp);
         press(Qt::Key_End);
         press(Qt::Key_Up);
         press(Qt::Key_Left);
         press(Qt::Key_Return);
       },
       "20-02-2001"},
      {"15032001",
       [] {
         press(Qt::Key_PageDown);
         press(Qt::Key_Escape);
       },
       "15-03-2001"},
      {"15031975", [] { click(part("Command1")); }, "15-03-1975"},
      {"15031975", [] { click(part("cmdOK")); }, "15-03-1980"},
      {"15032035", [] { click(part("cmdOK")); }, "15-03-2000"},
      {"", [] { click(part("cmdOK")); }, "25-11-2026"},
      {"", [] { click(part("Command1")); }, ""},
      {"1503", [] { press(Qt::Key_Escape); }, "15-03-____"},
      {"31022001", [] { click(part("cmdOK")); }, "25-11-2026"},
      {"15032001",
       [] {
         click(part("cmdOggi"));
         clickDay(7);
         click(part("cmdOK"));
       },
       "07-11-2026"},
      {"15032001",
       [] {
         clickDay(30);
         QTest::mouseClick(part("cmdGiorno(0)"), Qt::LeftButton);  // an empty cell
         EXPECT_EQ(marked(), QString("30"));
         click(part("cmdIndietro"));
         EXPECT_EQ(marked(), QString("1"));
         static_cast<QComboBox*>(part("cboAnno"))->setCurrentIndex(0);
         QTest::mouseDClick(part("cmdGiorno(10)"), Qt::LeftButton);
       },
       "07-02-1980"},
      {"15032001",
       [] {
         static_cast<QLabel*>(part("lblBlock"))->setText("BLOCCO");
         platform::forms()["frmCalendario"].Hide();
       },
       "15-03-2001"},
      {"15032001",
       [] {
         EXPECT_FALSE(part("cboMese")->isEnabled() || part("cmdAvanti")->isEnabled());
         press(Qt::Key_PageDown);
         for (int i = 0; i < 5; ++i) press(Qt::Key_Down);
         press(Qt::Key_Return);
       },
       "29-03-2001"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.before) + " to " + c.after);
    enter("txtDtaAcq");
    auto* date = static_cast<platform::DateBox*>(box("txtDtaAcq"));
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
    type(c.before);
    inForm(
        "frmCalendario",
        [&] {
          box("cmdCalendAcq")->setFocus();
          press(Qt::Key_Space);
        },
        [&] {
          const QPoint under = date->mapToGlobal(QPoint(0, date->height()));
          const QWidget* window = part("panGiorni")->window();
          EXPECT_LE(window->y() - under.y(), 40);
          EXPECT_TRUE(window->screen()->geometry().contains(window->frameGeometry()));
          c.act();
        });
    EXPECT_EQ(date->Text(), QString(c.after));
    EXPECT_TRUE(date->hasFocus());
  }
  EXPECT_EQ(message(), QString("-"));
}

}  // namespace
}  // namespace tavolix
