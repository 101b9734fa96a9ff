#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <QAbstractEventDispatcher>
#include <QAction>
#include <QMenu>
#include <QProcess>
#include <QShortcut>
#include <QStandardPaths>
#include <csignal>

#include "desk.h"
#include "platform/date_box.h"
#include "platform/key_sender.h"
#include "platform/masked_box.h"
#include "platform/memo_box.h"
#include "platform/session_end.h"
#include "platform/text_box.h"
#include "platform/time_box.h"
#include "platform/x11_keys.h"
#include "platform/x11_selection.h"
#include "store/value_text.h"

namespace platform {
namespace {

using Stored = QVector<std::pair<QVariant, QString>>;

// Shows stored values, and types a letter over them that the box does not take.
template <typename Box>
void expectKept(Desk<Box>& box, const Stored& values) {
  for (const auto& [value, text] : values) {
    SCOPED_TRACE(qPrintable(text));
    box->ShowValue(value);
    box.enter();
    box.type("x");
    box->selectAll();
    box.type("y");
    box.leave();
    EXPECT_EQ(box->Text(), text);
    EXPECT_EQ(box->Value(), value);
    EXPECT_TRUE(box->IsValid());
    EXPECT_FALSE(box->DataChanged());
  }
}

TEST(Boxes, LeaveStoredValuesAloneThatCouldNotBeTyped) {
  Desk<MaskedBox> number;
  number->SetMask("99");
  expectKept(number, {{-5, "-5"}, {2.5, "2,5"}, {123456LL, "123456"}});
  Desk<DateBox> date;
  expectKept(date, {{36519.75, "25-12-1999"}, {2958466, "01-01-10000"}, {"ieri", "ieri"}});
  Desk<TimeBox> time;
  expectKept(time, {{90061, "25:01:01"}, {59.9, "0:00:59"}, {-5, "-0:00:05"}});
}

// What is typed into a box, how it stands there afterwards, and its value; none if it has none.
struct Typed {
  QString keys, text;
  QVariant value = {};
};

template <typename Box>
void expectRead(const std::vector<Typed>& cases) {
  Desk<Box> box;
  for (const Typed& c : cases) {
    SCOPED_TRACE(qPrintable(c.keys));
    box->ShowValue(1);
    box.fill(c.keys);
    EXPECT_EQ(box->Text(), c.text);
    EXPECT_EQ(box->Value(), c.value);
    EXPECT_EQ(box->IsValid(), c.value.isValid() || c.keys.isEmpty());
    EXPECT_TRUE(box->DataChanged());
  }
}

TEST(Boxes, ReadWhatIsTyped) {
  const auto dated = [](int year, int month, int day) {
    return store::dayOfDate({year, month, day});
  };
  expectRead<DateBox>({
      {"1/2.29", "01-02-2029", dated(2029, 2, 1)},
      {"010230", "01-02-1930", dated(1930, 2, 1)},
      {"01-02-5", "01-02-2005", dated(2005, 2, 1)},
      {"1-1-0100", "01-01-0100", dated(100, 1, 1)},
      {"a1b-2-199 9", "01-02-1999", dated(1999, 2, 1)},
      {"31-02-2000", "31-02-2000"},
      {"1-1-0099", "1_-1_-0099"},
      {"1-1-199", "1_-1_-199_"},
      {"-12-2000", "__-12-2000"},
      {"", ""},
  });
  expectRead<TimeBox>({
      {"45", "0:00:45", 45LL},
      {"12345", "1:23:45", 5025LL},
      {"1.2.5x", "1:02:05", 3725LL},
      {"596523:14:07", "596523:14:07", 2147483647LL},
      {"596523:14:08", "596523:14:08"},
      {"1:60:00", "1:60:00"},
      {"1:", "1:"},
  });
}

TEST(MemoBoxTest, RefusesWhatIsTooMuchAndKeepsWhatIsThere) {
  Desk<MemoBox> box;
  box->SetMaxLength(10);
  box->ShowValue("12345678");
  box->moveCursor(QTextCursor::Start);
  box.paste("abcd");
  EXPECT_EQ(box->Text(), "ab12345678");
  box->undo();
  EXPECT_EQ(box->Text(), "12345678");
  box->redo();
  box.type("x");
  box.press(Qt::Key_Return);
  EXPECT_EQ(box->Text(), "ab12345678");
  EXPECT_EQ(box->textCursor().position(), 2);
  box->selectAll();
  box.paste("nuovo\ntesto troppo lungo");
  EXPECT_EQ(box->Value(), "nuovo\ntest");
  EXPECT_TRUE(box->DataChanged());
  box->ShowValue("più lungo\r\ndi dieci");
  EXPECT_EQ(box->Value(), "più lungo\r\ndi dieci");
  box->moveCursor(QTextCursor::End);
  box.type("x");
  EXPECT_EQ(box->Text(), "più lungo\ndi dieci");
}

TEST(MaskedBoxTest, TakesAsManyDigitsAsItsMask) {
  Desk<MaskedBox> box;
  box->SetMask("9999");
  const std::tuple<QString, int, QString, QString> cases[] = {
      {"", 0, "12ab", "12"},       {"", 0, "-1.234,5", "1234"}, {"1234", 1, "9", "1934"},
      {"1980", 4, "7", "1980"},    {"12", 2, "5678", "1256"},   {"12", 0, "5678", "5678"},
      {"1980", 0, "2005", "2005"}, {"12", 1, "x", "12"},
  };
  box.enter();
  for (const auto& [before, place, pasted, after] : cases) {
    box->ShowValue(before.isEmpty() ? QVariant() : QVariant(before.toLongLong()));
    box->SetSelStart(place);
    box.paste(pasted);
    EXPECT_EQ(box->Text(), after) << qPrintable(pasted);
    EXPECT_EQ(box->Value(), after.toLongLong());
    EXPECT_EQ(box->DataChanged(), before != after) << qPrintable(pasted);
  }
  EXPECT_EQ(box->cursorPosition(), 1);
  // A sign that is refused does not take away what is marked.
  for (const char* keys : {"-5", " 5", "x5"}) {
    box->ShowValue(12);
    box->selectAll();
    box.type(keys);
    EXPECT_EQ(box->Value(), 5) << keys;
  }
  box->SetFormat("#,##0");
  box.fill("1234");
  EXPECT_EQ(box->Text(), "1.234");
  box.enter();
  EXPECT_EQ(box->Text(), "1234");
}

TEST(DateBoxTest, EditsPlaceByPlace) {
  Desk<DateBox> box;
  box->ShowValue(36519);
  box.enter();
  box.type("3");
  EXPECT_EQ(box->text(), "35-12-1999");
  box.press(Qt::Key_Backspace);
  EXPECT_EQ(box->text(), "_5-12-1999");
  box.type("140");
  EXPECT_EQ(box->text(), "14-02-1999");
  EXPECT_EQ(box->cursorPosition(), 4);
  box->setSelection(6, 4);
  box.paste("2003");
  EXPECT_EQ(box->text(), "14-02-2003");
  for (int i = 0; i < 10; ++i) box.press(Qt::Key_Backspace);
  EXPECT_EQ(box->text(), "__-__-____");
  box.type("1-2-99");
  // Whoever opens a menu over the box comes back to it.
  QFocusEvent menu(QEvent::FocusOut, Qt::PopupFocusReason);
  QCoreApplication::sendEvent(box.get(), &menu);
  EXPECT_EQ(box->text(), "1_-2_-99__");
  box->selectAll();
  box.paste(" 5/1/1999\n");
  EXPECT_EQ(box->Date(), QDate(1999, 1, 5));
}

template <typename Box>
void expectMenu() {
  Desk<Box> box;
  box.enter();
  box.type("vuoto");
  box->selectAll();
  const auto choose = [&](const char* line) {
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1));
    QCoreApplication::sendEvent(box.get(), &asked);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    for (QAction* action : menu->actions()) {
      if (action->text() == line && action->isEnabled()) action->trigger();
    }
    menu->close();
  };
  QGuiApplication::clipboard()->setText("pieno");
  choose("&Incolla\tCtrl+V");
  EXPECT_EQ(box->Text(), "pieno");
  choose("&Seleziona tutto\tCtrl+A");
  choose("&Taglia\tCtrl+X");
  EXPECT_EQ(box->Text(), "");
  QTest::keyClick(box.get(), Qt::Key_V, Qt::ControlModifier);
  QTest::keyClick(box.get(), Qt::Key_Insert, Qt::ShiftModifier);
  EXPECT_EQ(box->Text(), "pienopieno");
}

// The window has other uses for these keys, and the toolkit would not tell them.
TEST(Boxes, TellTheirKeysInTheirMenu) {
  expectMenu<TextBox>();
  expectMenu<MemoBox>();
}

// An X display with a program that offers a text.
class Selection : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const char* program : {"Xvfb", "xclip"}) {
      if (QStandardPaths::findExecutable(program).isEmpty()) GTEST_SKIP() << "no " << program;
    }
    server_.start("Xvfb", {"-displayfd", "1", "-nolisten", "tcp"});
    ASSERT_TRUE(server_.waitForReadyRead());
    qputenv("DISPLAY", ':' + server_.readLine().trimmed());
  }
  void TearDown() override {
    for (QProcess* process : {&owner_, &server_}) {
      process->kill();
      process->waitForFinished();
    }
    before_.isNull() ? qunsetenv("DISPLAY") : qputenv("DISPLAY", before_);
  }
  void offer(const QString& text) {
    owner_.start("xclip", {"-quiet", "-selection", "clipboard"});
    owner_.write(text.toUtf8());
    owner_.closeWriteChannel();
    EXPECT_TRUE(QTest::qWaitFor([&] { return read() == text; }, 20000));
  }
  static std::optional<QString> read() { return readX11Selection("CLIPBOARD", 800); }

  QByteArray before_ = qgetenv("DISPLAY");
  QProcess server_;
  QProcess owner_;
};

TEST_F(Selection, IsReadUnlessItsOwnerKeepsSilent) {
  EXPECT_EQ(read(), QString());
  offer(QString(3'000'000, QChar(0x20AC)));
  kill(static_cast<pid_t>(owner_.processId()), SIGSTOP);
  EXPECT_EQ(read(), std::nullopt);
}

}  // namespace
TEST(KeySender, FindsEveryShortcutOfAWindow) {
  QWidget window;
  auto* action = new QAction(&window);
  action->setShortcuts({QKeySequence("Alt+N"), QKeySequence("F12")});
  auto* shortcut = new QShortcut(QKeySequence("F3"), &window);
  QStringList done;
  QObject::connect(action, &QAction::triggered, &window, [&] { done << "new"; });
  QObject::connect(shortcut, &QShortcut::activated, &window, [&] { done << "next"; });
  QKeyEvent presses[] = {{QEvent::KeyPress, Qt::Key_F12, Qt::NoModifier},
                         {QEvent::KeyPress, Qt::Key_F3, Qt::NoModifier},
                         {QEvent::KeyPress, Qt::Key_F4, Qt::NoModifier}};
  for (QKeyEvent& press : presses) sendKey(window, press);
  EXPECT_EQ(done, QStringList({"new", "next"}));
}

// True if the toolkit does not see a press that the X server sends.
bool isKept(int code, int modifiers = 0) {
  xcb_key_press_event_t key{};
  key.response_type = XCB_KEY_PRESS;
  key.detail = static_cast<xcb_keycode_t>(code);
  key.state = static_cast<std::uint16_t>(modifiers);
  return QAbstractEventDispatcher::instance()->filterNativeEvent("xcb_generic_event_t", &key,
                                                                 nullptr);
}

TEST(X11KeysTest, WaitForAWindowAndBehindLettersAtTheReader) {
  constexpr int kLetter = 38;
  constexpr int kF12 = 96;
  bool atReader = false;
  X11Keys keys([&] { return atReader; });
  const QWidget window;
  EXPECT_FALSE(isKept(kLetter));
  keys.Hold();
  EXPECT_TRUE(isKept(kLetter)) << "a window is on its way";
  keys.SendTo(window);
  EXPECT_FALSE(isKept(kF12)) << "it has come";
  for (const auto& [code, modifiers] :
       {std::pair{kF12, 0}, std::pair{kLetter, int{XCB_MOD_MASK_1}}}) {
    atReader = true;
    EXPECT_FALSE(isKept(kLetter));
    EXPECT_TRUE(isKept(code, modifiers)) << "a command behind letters";
    EXPECT_TRUE(isKept(kLetter)) << "and what is typed behind it";
    atReader = false;
    keys.SendTo(window);
    EXPECT_FALSE(isKept(code, modifiers));
  }
}

TEST(SessionEnd, SavesBeforeItEnds) {
  QStringList done;
  onSessionEnd([&done] { done << "save"; }, [&done] { done << "end"; });
  ASSERT_EQ(std::raise(SIGTERM), 0);
  EXPECT_TRUE(done.isEmpty()) << "nothing is done while the signal is handled";
  EXPECT_TRUE(QTest::qWaitFor([&done] { return done.size() > 1; }));
  EXPECT_EQ(done, QStringList({"save", "end"}));
}

}  // namespace platform
