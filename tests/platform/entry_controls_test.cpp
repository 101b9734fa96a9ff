#include <gtest/gtest.h>

#include "desk.h"
#include "platform/date_box.h"
#include "platform/masked_box.h"
#include "platform/memo_box.h"
#include "platform/record_model.h"
#include "platform/time_box.h"

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

TEST(MemoBoxTest, RefusesWhatIsTooMuchAndKeepsWhatIsThere) {
  Desk<MemoBox> box;
  box->SetMaxLength(10);
  box->ShowValue("12345678");
  box->moveCursor(QTextCursor::Start);
  box.paste("abcd");
  EXPECT_EQ(box->Text(), "ab12345678");
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
  const struct {
    QString before;
    int place;
    QString pasted, after;
  } cases[] = {
      {"", 0, "12ab", "12"},       {"", 0, "-1.234,5", "1234"}, {"1234", 1, "9", "1934"},
      {"1980", 4, "7", "1980"},    {"12", 2, "5678", "1256"},   {"12", 0, "5678", "5678"},
      {"1980", 0, "2005", "2005"}, {"12", 1, "x", "12"},
  };
  box.enter();
  for (const auto& c : cases) {
    box->ShowValue(c.before.isEmpty() ? QVariant() : QVariant(c.before.toLongLong()));
    box->SetSelStart(c.place);
    box.paste(c.pasted);
    EXPECT_EQ(box->Text(), c.after) << qPrintable(c.pasted);
    EXPECT_EQ(box->Value(), c.after.toLongLong());
    EXPECT_EQ(box->DataChanged(), c.before != c.after) << qPrintable(c.pasted);
  }
  EXPECT_EQ(box->cursorPosition(), 1);
  box->SetFormat("#,##0");
  box.fill("1234");
  EXPECT_EQ(box->Text(), "1.234");
  box.enter();
  EXPECT_EQ(box->Text(), "1234");
}

TEST(DateBoxTest, ReadsWhatIsTyped) {
  const struct {
    QString keys, text;
    QDate date;
  } cases[] = {
      {"1/2.29", "01-02-2029", {2029, 2, 1}},
      {"010230", "01-02-1930", {1930, 2, 1}},
      {"01-02-5", "01-02-2005", {2005, 2, 1}},
      {"1-1-0100", "01-01-0100", {100, 1, 1}},
      {"a1b-2-199 9", "01-02-1999", {1999, 2, 1}},
      {"31-02-2000", "31-02-2000", {}},
      {"1-1-0099", "1_-1_-0099", {}},
      {"1-1-199", "1_-1_-199_", {}},
      {"-12-2000", "__-12-2000", {}},
      {"", "", {}},
  };
  Desk<DateBox> box;
  for (const auto& c : cases) {
    SCOPED_TRACE(qPrintable(c.keys));
    box->ShowValue(1);
    box.fill(c.keys);
    EXPECT_EQ(box->Text(), c.text);
    EXPECT_EQ(box->Value(), c.date.isValid() ? dayOfDate(c.date) : QVariant());
    EXPECT_EQ(box->IsValid(), c.date.isValid() || c.keys.isEmpty());
    EXPECT_TRUE(box->DataChanged());
  }
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

TEST(TimeBoxTest, ReadsWhatIsTyped) {
  const struct {
    QString keys, text;
    qlonglong seconds;  // -1: not valid
  } cases[] = {
      {"45", "0:00:45", 45},
      {"12345", "1:23:45", 5025},
      {"1.2.5x", "1:02:05", 3725},
      {"596523:14:07", "596523:14:07", 2147483647},
      {"596523:14:08", "596523:14:08", -1},
      {"1:60:00", "1:60:00", -1},
      {"1:", "1:", -1},
  };
  Desk<TimeBox> box;
  for (const auto& c : cases) {
    box->ShowValue(1);
    box.fill(c.keys);
    EXPECT_EQ(box->Text(), c.text);
    EXPECT_EQ(box->IsValid(), c.seconds >= 0) << qPrintable(c.keys);
    EXPECT_EQ(box->Value(), c.seconds < 0 ? QVariant() : QVariant(c.seconds));
  }
}

}  // namespace
}  // namespace platform
