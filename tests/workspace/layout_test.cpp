#include <QtTest/qtestspontaneevent.h>

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include "core/raccolte.h"
#include "desk.h"
#include "platform/form.h"

namespace tavolix {
namespace {

class Layout : public Desk {
 protected:
  static QWidget* listForm() { return platform::forms()["frmGrid"].Window(); }
  static int rightOf(const QWidget* widget) { return widget->x() + widget->width(); }
  static int bottomOf(const QWidget* widget) { return widget->y() + widget->height(); }
  static QString places() {
    const auto text = [](const QRect& r) {
      return QStringLiteral("%1 %2 %3 %4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
    };
    return text(listForm()->geometry()) + " / " + text(form()->geometry()) + " / " +
           text(mainControl("panCrea")->geometry());
  }
  void takeGaps() {
    right_ = mainControl("area")->width() - rightOf(form());
    bottom_ = mainControl("area")->height() - bottomOf(listForm());
    buttons_ = mainControl("picSfondo")->width() - rightOf(mainControl("panCrea"));
    EXPECT_GE(right_, 0);
    EXPECT_GE(bottom_, 0);
    EXPECT_GE(buttons_, 0);
  }
  // List and form fill the area side by side, or the list alone does.
  void expectInPlace(bool extended) const {
    const QWidget* area = mainControl("area");
    const QWidget* last = extended ? listForm() : form();
    EXPECT_EQ(form()->isVisible(), !extended);
    EXPECT_NEAR(area->width() - rightOf(last), right_, 1);
    EXPECT_NEAR(area->height() - bottomOf(listForm()), bottom_, 1);
    EXPECT_NEAR(mainControl("picSfondo")->width() - rightOf(mainControl("panCrea")), buttons_, 1);
    EXPECT_LE(rightOf(grid()), listForm()->width());
    EXPECT_EQ(static_cast<QPushButton*>(mainControl("cmdEspandi"))->isChecked(), !extended);
    EXPECT_EQ(action("mnuMaxExtension")->isChecked(), extended);
    if (extended) return;
    EXPECT_EQ(form()->y(), listForm()->y());
    EXPECT_NEAR(bottomOf(form()), bottomOf(listForm()), 1);
    EXPECT_NEAR(rightOf(listForm()), form()->x(), 1);
    EXPECT_LE(bottomOf(box("panRecord")), form()->height());
  }
  static void resizeTo(int width, int height) {
    window()->resize(width, height);
    QApplication::processEvents();
  }
  // Runs the program until it ends by itself; its result.
  static int runUntilEnd(const std::function<void()>& how) {
    QTimer::singleShot(0, window(), how);
    QTimer::singleShot(20000, window(), [] { QApplication::exit(99); });
    return QApplication::exec();
  }

  int right_ = 0;
  int bottom_ = 0;
  int buttons_ = 0;
};

TEST_F(Layout, KeepsListAndFormInPlace) {
  ASSERT_TRUE(start());
  takeGaps();
  const QSize first = window()->size();
  const QString before = places();
  const struct {
    int width;
    int height;
  } sizes[] = {
      {1300, 900}, {1101, 777}, {first.width(), first.height()}, {1600, 1000}, {1240, 800}};
  for (const auto& s : sizes) {
    SCOPED_TRACE(s.width);
    resizeTo(s.width, s.height);
    expectInPlace(false);
    click(mainControl("cmdEspandi"));
    expectInPlace(true);
    resizeTo(s.width + 77, s.height + 33);
    expectInPlace(true);
    trigger("mnuMaxExtension");
    expectInPlace(false);
    selectByTab(iRacCorr == 0 ? 7 : 0);
    expectInPlace(false);
    trigger("mnuMaxExtension");
    selectByTab(3);
    expectInPlace(true);
    resizeTo(s.width, s.height);
    expectInPlace(true);
    click(mainControl("cmdEspandi"));
    expectInPlace(false);
  }
  selectByTab(0);
  resizeTo(first.width(), first.height());
  EXPECT_EQ(places(), before);
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Layout, GivesTheListTheFormsPlace) {
  ASSERT_TRUE(start());
  const int beside = listForm()->width();
  const int formWidth = form()->width();
  click(mainControl("cmdEspandi"));
  EXPECT_EQ(listForm()->width(), beside + formWidth);
  EXPECT_FALSE(form()->isVisible());
  click(mainControl("cmdEspandi"));
  EXPECT_NEAR(listForm()->width(), beside, 1);
  EXPECT_TRUE(form()->isVisible());
}

TEST_F(Layout, StopsAtTheSmallestSize) {
  ASSERT_TRUE(start());
  const QString before = places();
  resizeTo(500, 320);
  const QString small = places();
  resizeTo(420, 260);
  EXPECT_EQ(places(), small);
  selectByTab(2);
  trigger("mnuMaxExtension");
  trigger("mnuMaxExtension");
  selectByTab(0);
  resizeTo(1004, 690);
  resizeTo(1300, 900);
  takeGaps();
  expectInPlace(false);
  EXPECT_EQ(message(), QString("-"));
}

TEST_F(Layout, IsRestoredFromTheSettings) {
  const struct {
    const char* key;
    const char* value;
    std::function<int()> place;
    int expected;
  } cases[] = {
      {"Win_Lar", "100", [] { return platform::Width(window()); }, 3000},
      {"Win_Lar", "18000", [] { return platform::Width(window()); }, 18000},
      {"Win_Lar", "molto", [] { return platform::Width(window()); }, 3000},
      {"Win_Alt", "100", [] { return platform::Height(window()); }, 3000},
      {"Win_Alt", "12000", [] { return platform::Height(window()); }, 12000},
      {"Win_X", "-100", [] { return platform::Left(window()); }, 0},
      {"Win_X", "1500", [] { return platform::Left(window()); }, 1500},
      {"Win_X", "999999", [] { return platform::Left(window()); }, 0},
      {"Win_Y", "-100", [] { return platform::Top(window()); }, 0},
      {"Win_Y", "750", [] { return platform::Top(window()); }, 750},
      {"Win_Y", "999999", [] { return platform::Top(window()); }, 0},
      {"Win_Stato", "2", [] { return static_cast<int>(window()->isMaximized()); }, 1},
      {"Win_Stato", "1", [] { return static_cast<int>(window()->isMinimized()); }, 1},
  };
  const QByteArray settings = [this] {
    QFile file(folder_.path("tvx.ini"));
    file.open(QIODevice::ReadOnly);
    return file.readAll();
  }();
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.key) + ' ' + c.value);
    folder_.writeFile("tvx.ini", settings);
    folder_.set("Application", c.key, c.value);
    ASSERT_TRUE(start());
    EXPECT_EQ(c.place(), c.expected);
    end();
  }
  folder_.set("Application", "Win_RePos", "0");
  folder_.set("Application", "Win_Lar", "18000");
  ASSERT_TRUE(start());
  EXPECT_NE(platform::Width(window()), 18000);
  const QRect screen = window()->screen()->geometry();
  // A desktop may move what stands outside its screen by the width of a frame.
  EXPECT_NEAR(window()->x(), (screen.width() - window()->width()) / 2, 4);
}

TEST_F(Layout, IsWrittenAtTheEndOfTheProgram) {
  const struct {
    const char* way;
    std::function<void()> leave;
  } cases[] = {
      {"menu", [] { action("mnuFileChiudi")->trigger(); }},
      {"bar", [] { QTest::mouseClick(mainControl("cmdBar(3)"), Qt::LeftButton); }},
      {"window",
       [] {
         QCloseEvent close;
         QSpontaneKeyEvent::setSpontaneous(&close);
         qApp->notify(window(), &close);
       }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.way);
    ASSERT_TRUE(start());
    window()->move(40, 30);
    window()->resize(1100, 720);
    enter("txtTitolo");
    press(Qt::Key_A, Qt::ControlModifier);
    type(c.way);
    EXPECT_EQ(runUntilEnd(c.leave), 0);
    for (const char* key : {"Win_X", "Win_Y", "Win_Alt", "Win_Lar", "Win_Stato"}) {
      const QMap<QString, QString> expected = {{"Win_X", "600"},
                                               {"Win_Y", "450"},
                                               {"Win_Alt", "10800"},
                                               {"Win_Lar", "16500"},
                                               {"Win_Stato", "0"}};
      EXPECT_EQ(folder_.setting("Application", key), expected[key]) << key;
    }
    EXPECT_EQ(folder_.found("SELECT Titolo FROM MAIN ORDER BY ID LIMIT 1"), QString(c.way));
    EXPECT_FALSE(platform::forms().isLoaded("frmGrid"));
    end();
  }
  ASSERT_TRUE(start());
  EXPECT_EQ(window()->pos(), QPoint(40, 30));
  EXPECT_EQ(window()->size(), QSize(1100, 720));
  window()->showMaximized();
  runUntilEnd(cases[0].leave);
  EXPECT_EQ(folder_.setting("Application", "Win_Stato"), QString("2"));
  EXPECT_EQ(folder_.setting("Application", "Win_Lar"), QString("16500"));
  EXPECT_EQ(message(), QString("-"));
}

}  // namespace
}  // namespace tavolix
