#include <QtTest/qtestspontaneevent.h>

#include <QPushButton>
#include <QScreen>
#include <QTimer>

#include "desk.h"

namespace tavolix {
namespace {

constexpr const char* kPlace[] = {"Win_X", "Win_Y", "Win_Alt", "Win_Lar", "Win_Stato"};

class Layout : public Desk {
 protected:
  static QWidget* listForm() { return platform::forms()["frmGrid"].Window(); }
  static int rightOf(const QWidget* widget) { return widget->x() + widget->width(); }
  static int bottomOf(const QWidget* widget) { return widget->y() + widget->height(); }
  // What is free right of the last of list and form, below them, and right of the buttons.
  static QVector<int> gaps() {
    const QWidget* area = mainControl("area");
    const QWidget* last = form()->isVisible() ? form() : listForm();
    return {area->width() - rightOf(last), area->height() - bottomOf(listForm()),
            mainControl("picSfondo")->width() - rightOf(mainControl("panCrea"))};
  }
  // List and form fill the area side by side, or the list alone does.
  void expectInPlace(bool extended) const {
    EXPECT_EQ(form()->isVisible(), !extended);
    EXPECT_EQ(static_cast<QPushButton*>(mainControl("cmdEspandi"))->isChecked(), !extended);
    EXPECT_EQ(action("mnuMaxExtension")->isChecked(), extended);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(gaps()[i], gaps_[i], 1) << i;
    EXPECT_LE(rightOf(grid()), listForm()->width());
    if (extended) return;
    EXPECT_EQ(form()->y(), listForm()->y());
    EXPECT_NEAR(bottomOf(form()), bottomOf(listForm()), 1);
    EXPECT_NEAR(rightOf(listForm()), form()->x(), 1);
    EXPECT_LE(bottomOf(box("panRecord")), form()->height());
  }
  static void resizeTo(const QSize& size) {
    window()->resize(size);
    QApplication::processEvents();
  }
  // Runs the program until it ends by itself; its result.
  static int runUntilEnd(const std::function<void()>& how) {
    QTimer::singleShot(0, window(), how);
    QTimer::singleShot(20000, window(), [] { QApplication::exit(99); });
    return QApplication::exec();
  }

  static void byMenu() { action("mnuFileChiudi")->trigger(); }
  static void byBox() { closeByBox("frmMain"); }

  QVector<int> gaps_;
};

TEST_F(Layout, KeepsListAndFormInPlace) {
  ASSERT_TRUE(start());
  gaps_ = gaps();
  for (const int gap : gaps_) EXPECT_GE(gap, 0);
  const QSize first = window()->size();
  const QRect before = form()->geometry();
  for (const QSize& size : {QSize(1300, 900), QSize(800, 480), first, QSize(1600, 1000)}) {
    SCOPED_TRACE(size.width());
    resizeTo(size);
    expectInPlace(false);
    click(mainControl("cmdEspandi"));
    expectInPlace(true);
    resizeTo(size + QSize(77, 33));
    expectInPlace(true);
    trigger("mnuMaxExtension");
    expectInPlace(false);
    selectByTab(7);
    expectInPlace(false);
    trigger("mnuMaxExtension");
    selectByTab(3);
    expectInPlace(true);
    resizeTo(size);
    click(mainControl("cmdEspandi"));
    expectInPlace(false);
  }
  // Below the smallest size nothing follows, nor is anything lost.
  resizeTo({420, 260});
  selectByTab(0);
  resizeTo(first);
  EXPECT_TRUE(form()->geometry() == before);
}

TEST_F(Layout, IsBroughtBackOntoTheScreen) {
  const struct {
    const char* place;  // as in the settings
    QRect shown;        // pixels
  } cases[] = {{"-100 999999 molto 100", {0, 0, 200, 200}},
               {"999999 -1 10500 11250", {0, 0, 750, 700}},
               {"1500 750 100 11250", {100, 50, 750, 200}}};
  for (const auto& c : cases) {
    const QStringList values = QString(c.place).split(' ');
    for (int i = 0; i < 4; ++i) folder_.set("Application", kPlace[i], values[i]);
    ASSERT_TRUE(start());
    EXPECT_TRUE(QRect(window()->pos(), window()->size()) == c.shown) << c.place;
    end();
  }
  folder_.set("Application", "Win_RePos", "0");
  ASSERT_TRUE(start());
  // A desktop may move what stands outside its screen by the width of a frame.
  EXPECT_NEAR(window()->x(), (window()->screen()->size().width() - window()->width()) / 2, 4);
}

TEST_F(Layout, IsWrittenAtTheEndOfTheProgram) {
  const auto place = [this] {
    QStringList values;
    for (const char* key : kPlace) values << folder_.setting("Application", key);
    return values.join(' ');
  };
  for (const auto& way : {byMenu, byBox}) {
    ASSERT_TRUE(start());
    window()->move(40, 30);
    window()->resize(780, 700);
    const QString before = boxText("txtTitolo");
    enter("txtTitolo");
    type("x");
    EXPECT_EQ(runUntilEnd(way), 0);
    EXPECT_EQ(place(), QString("600 450 10500 11700 0"));
    EXPECT_EQ(folder_.found("SELECT Titolo FROM MAIN ORDER BY ID LIMIT 1"), 'x' + before);
    EXPECT_FALSE(platform::forms().isLoaded("frmGrid"));
    end();
  }
  ASSERT_TRUE(start());
  EXPECT_TRUE(QRect(window()->pos(), window()->size()) == QRect(40, 30, 780, 700));
  window()->showMaximized();
  runUntilEnd(byMenu);
  EXPECT_TRUE(place().endsWith(" 10500 11700 2"));
  end();
  ASSERT_TRUE(start());
  EXPECT_TRUE(window()->isMaximized());
}

}  // namespace
}  // namespace tavolix
