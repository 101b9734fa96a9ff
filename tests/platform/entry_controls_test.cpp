#include <gtest/gtest.h>

#include <QLocale>

#include "desk.h"
#include "platform/check_box.h"
#include "platform/date_box.h"
#include "platform/masked_box.h"
#include "platform/memo_box.h"
#include "platform/text_box.h"
#include "platform/time_box.h"

namespace platform {
namespace {

QDate dateOf(const QVariant& day) {
  return day.isValid() ? QDate(1899, 12, 30).addDays(day.toLongLong()) : QDate();
}

TEST(TextBoxTest, TakesOneLineUpToItsLength) {
  Desk<TextBox> box;
  box->setMaxLength(12);
  const struct {
    QString pasted;
    QString text;
  } cases[] = {
      {QStringLiteral("uno\r\ndue\ntre"), QStringLiteral("uno due tre")},
      {QStringLiteral("a%1b\tc").arg(QChar(QChar::Null)), QStringLiteral("ab c")},
      {QString(QStringLiteral("a%1b")).arg(QChar(QChar::LineSeparator)), QStringLiteral("a b")},
      {QStringLiteral("dodici lettere e più"), QStringLiteral("dodici lette")},
  };
  for (const auto& c : cases) {
    box->ShowValue(QVariant());
    box.paste(c.pasted);
    EXPECT_EQ(box->Value().toString(), c.text);
    EXPECT_TRUE(box->DataChanged());
  }
}

TEST(TextBoxTest, KnowsNothingFromEmptyAndEditedFromShown) {
  Desk<TextBox> box;
  box->ShowValue(QStringLiteral("uno\ndue"));
  box.enter();
  box.leave();
  EXPECT_FALSE(box->DataChanged());
  EXPECT_EQ(box->Value().toString(), QStringLiteral("uno\ndue"));
  box.fill(QString());
  EXPECT_TRUE(box->DataChanged());
  EXPECT_FALSE(box->Value().isValid());
  box->ShowValue(7);
  EXPECT_FALSE(box->DataChanged());
  box->SetValue(QStringLiteral("x"));
  EXPECT_TRUE(box->DataChanged());
  EXPECT_EQ(BoundControl::of(box.get()), static_cast<BoundControl*>(box.get()));
  EXPECT_EQ(BoundControl::of(box->window()), nullptr);
}

TEST(MemoBoxTest, RefusesWhatIsTooMuchAndKeepsWhatIsThere) {
  Desk<MemoBox> box;
  box->SetMaxLength(10);
  box->ShowValue(QStringLiteral("12345678"));
  box->moveCursor(QTextCursor::Start);
  box.paste(QStringLiteral("abcd"));
  EXPECT_EQ(box->Text(), QStringLiteral("ab12345678"));
  box->undo();
  EXPECT_EQ(box->Text(), QStringLiteral("12345678"));
  box->redo();
  box.type(QStringLiteral("x"));
  EXPECT_EQ(box->Text(), QStringLiteral("ab12345678"));
  QTest::keyClick(box.get(), Qt::Key_Return);
  EXPECT_EQ(box->Text(), QStringLiteral("ab12345678"));
  EXPECT_EQ(box->textCursor().position(), 2);
  box->selectAll();
  box.paste(QStringLiteral("nuovo\ntesto troppo lungo"));
  EXPECT_EQ(box->Value().toString(), QStringLiteral("nuovo\ntest"));
  EXPECT_TRUE(box->DataChanged());
}

TEST(MemoBoxTest, LeavesStoredTextAlone) {
  Desk<MemoBox> box;
  box->SetMaxLength(5);
  const QString stored = QStringLiteral("più lungo\r\ndi cinque");
  box->ShowValue(stored);
  box.enter();
  EXPECT_EQ(box->Value().toString(), stored);
  box->moveCursor(QTextCursor::End);
  box.type(QStringLiteral("x"));
  EXPECT_EQ(box->Text(), QStringLiteral("più lungo\ndi cinque"));
  QTest::keyClick(box.get(), Qt::Key_Tab);
  EXPECT_FALSE(box->hasFocus());
  box->selectAll();
  QTest::keyClick(box.get(), Qt::Key_Delete);
  EXPECT_FALSE(box->Value().isValid());
}

TEST(MaskedBoxTest, TakesAsManyDigitsAsItsMask) {
  Desk<MaskedBox> box;
  box->SetMask(QStringLiteral("9999"));
  const struct {
    QString before;
    int place;
    QString pasted;
    QString after;
  } cases[] = {
      {QString(), 0, QStringLiteral("12ab"), QStringLiteral("12")},
      {QString(), 0, QStringLiteral("-1.234,5"), QStringLiteral("1234")},
      {QStringLiteral("1234"), 1, QStringLiteral("9"), QStringLiteral("1934")},
      {QStringLiteral("1980"), 0, QStringLiteral("2005"), QStringLiteral("2005")},
      {QStringLiteral("1980"), 4, QStringLiteral("7"), QStringLiteral("1980")},
      {QStringLiteral("12"), 2, QStringLiteral("5678"), QStringLiteral("1256")},
      {QStringLiteral("12"), 0, QStringLiteral("5678"), QStringLiteral("5678")},
      {QStringLiteral("12"), 1, QStringLiteral("x"), QStringLiteral("12")},
  };
  box.enter();
  for (const auto& c : cases) {
    box->ShowValue(c.before.isEmpty() ? QVariant() : QVariant(c.before.toLongLong()));
    box->SetSelStart(c.place);
    box.paste(c.pasted);
    EXPECT_EQ(box->Text(), c.after) << qPrintable(c.pasted);
    EXPECT_EQ(box->DataChanged(), c.before != c.after) << qPrintable(c.pasted);
  }
  EXPECT_EQ(box->cursorPosition(), 1);
  EXPECT_EQ(box->Value().typeId(), QMetaType::LongLong);
}

TEST(MaskedBoxTest, ShowsThousandsApartWithoutTheFocus) {
  QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
  Desk<MaskedBox> box;
  box->SetMask(QStringLiteral("9999999"));
  box->SetFormat(QStringLiteral("#,##0"));
  box.fill(QStringLiteral("1234567"));
  EXPECT_EQ(box->Text(), QStringLiteral("1.234.567"));
  EXPECT_EQ(box->Value().toLongLong(), 1234567);
  box.enter();
  EXPECT_EQ(box->Text(), QStringLiteral("1234567"));
  box->SetFormat(QStringLiteral("0"));
  box.leave();
  EXPECT_EQ(box->Text(), QStringLiteral("1234567"));
  box.fill(QString());
  EXPECT_FALSE(box->Value().isValid());
  EXPECT_TRUE(box->IsValid());
}

TEST(MaskedBoxTest, KeepsStoredNumbersThatDoNotFit) {
  QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
  const struct {
    QVariant value;
    QString text;
  } cases[] = {
      {-5, QStringLiteral("-5")},
      {2.5, QStringLiteral("2,5")},
      {123456LL, QStringLiteral("123456")},
      {12.0, QStringLiteral("12")},
  };
  Desk<MaskedBox> box;
  box->SetMask(QStringLiteral("99"));
  for (const auto& c : cases) {
    box->ShowValue(c.value);
    box.enter();
    EXPECT_EQ(box->Text(), c.text);
    box.type(QStringLiteral("x"));
    box->selectAll();
    box.type(QStringLiteral("y"));
    box.leave();
    EXPECT_EQ(box->Value(), c.value);
    EXPECT_FALSE(box->DataChanged());
  }
}

TEST(MaskedBoxTest, HoldsTextOfAFixedLength) {
  Desk<MaskedBox> box;
  box->SetMaxText(4);
  box.enter();
  EXPECT_EQ(box->placeholderText(), QStringLiteral("____"));
  box.type(QStringLiteral("a-1 23"));
  EXPECT_EQ(box->Value().toString(), QStringLiteral("a-1 "));
  box.leave();
  EXPECT_EQ(box->Text(), QStringLiteral("a-1 "));
  EXPECT_EQ(box->placeholderText(), QString());
}

TEST(DateBoxTest, ReadsWhatIsTyped) {
  const struct {
    QString keys;
    QString text;
    QDate date;
  } cases[] = {
      {QStringLiteral("25121999"), QStringLiteral("25-12-1999"), QDate(1999, 12, 25)},
      {QStringLiteral("1-2-99"), QStringLiteral("01-02-1999"), QDate(1999, 2, 1)},
      {QStringLiteral("1/2.29"), QStringLiteral("01-02-2029"), QDate(2029, 2, 1)},
      {QStringLiteral("010230"), QStringLiteral("01-02-1930"), QDate(1930, 2, 1)},
      {QStringLiteral("01-02-5"), QStringLiteral("01-02-2005"), QDate(2005, 2, 1)},
      {QStringLiteral("29-02-2000"), QStringLiteral("29-02-2000"), QDate(2000, 2, 29)},
      {QStringLiteral("1-1-0100"), QStringLiteral("01-01-0100"), QDate(100, 1, 1)},
      {QStringLiteral("a1b-2-199 9"), QStringLiteral("01-02-1999"), QDate(1999, 2, 1)},
      {QStringLiteral("31-02-2000"), QStringLiteral("31-02-2000"), QDate()},
      {QStringLiteral("29-02-1900"), QStringLiteral("29-02-1900"), QDate()},
      {QStringLiteral("1-1-0099"), QStringLiteral("1_-1_-0099"), QDate()},
      {QStringLiteral("1-1-199"), QStringLiteral("1_-1_-199_"), QDate()},
      {QStringLiteral("12-"), QStringLiteral("12-__-____"), QDate()},
      {QStringLiteral("-12-2000"), QStringLiteral("__-12-2000"), QDate()},
      {QString(), QString(), QDate()},
  };
  Desk<DateBox> box;
  for (const auto& c : cases) {
    box->ShowValue(1);
    box.fill(c.keys);
    EXPECT_EQ(box->Text(), c.text) << qPrintable(c.keys);
    EXPECT_EQ(dateOf(box->Value()), c.date) << qPrintable(c.keys);
    EXPECT_EQ(box->Date(), c.date) << qPrintable(c.keys);
    EXPECT_EQ(box->IsValid(), c.date.isValid() || c.keys.isEmpty()) << qPrintable(c.keys);
    EXPECT_TRUE(box->DataChanged());
  }
}

TEST(DateBoxTest, EditsPlaceByPlace) {
  Desk<DateBox> box;
  box->ShowValue(36519);
  ASSERT_EQ(box->text(), QStringLiteral("25-12-1999"));
  box.enter();
  box->SetSelStart(0);
  box.type(QStringLiteral("3"));
  EXPECT_EQ(box->text(), QStringLiteral("35-12-1999"));
  EXPECT_EQ(box->cursorPosition(), 1);
  QTest::keyClick(box.get(), Qt::Key_Backspace);
  EXPECT_EQ(box->text(), QStringLiteral("_5-12-1999"));
  box.type(QStringLiteral("14"));
  box.type(QStringLiteral("0"));
  EXPECT_EQ(box->text(), QStringLiteral("14-02-1999"));
  EXPECT_EQ(box->cursorPosition(), 4);
  box->setSelection(6, 4);
  box.paste(QStringLiteral("2003"));
  EXPECT_EQ(box->text(), QStringLiteral("14-02-2003"));
  box->selectAll();
  box.paste(QStringLiteral(" 5/1/1999\n"));
  EXPECT_EQ(box->Date(), QDate(1999, 1, 5));
  for (int i = 0; i < 10; ++i) QTest::keyClick(box.get(), Qt::Key_Backspace);
  EXPECT_EQ(box->text(), QStringLiteral("__-__-____"));
  EXPECT_EQ(box->cursorPosition(), 0);
}

TEST(DateBoxTest, IsNotDoneWithWhileAMenuIsOverIt) {
  Desk<DateBox> box;
  box.enter();
  box.type(QStringLiteral("1-2-99"));
  QFocusEvent menu(QEvent::FocusOut, Qt::PopupFocusReason);
  QCoreApplication::sendEvent(box.get(), &menu);
  EXPECT_EQ(box->Text(), QStringLiteral("1_-2_-99__"));
}

TEST(DateBoxTest, PutsThePatternInPlaceOfWhatIsNoDate) {
  Desk<DateBox> box;
  box->ShowValue(QStringLiteral("ieri"));
  box.enter();
  box->SetSelStart(0);
  box.type(QStringLiteral("12"));
  EXPECT_EQ(box->Text(), QStringLiteral("12-__-____"));
}

TEST(DateBoxTest, SetsDigitsAsIfTyped) {
  Desk<DateBox> box;
  box->SetRawData(QStringLiteral("25121999"));
  EXPECT_EQ(box->Value().toLongLong(), 36519);
  EXPECT_TRUE(box->DataChanged());
  box->SetRawData(QString());
  EXPECT_EQ(box->Text(), QString());
  EXPECT_FALSE(box->Value().isValid());
}

TEST(DateBoxTest, LeavesStoredValuesAlone) {
  const struct {
    QVariant value;
    QString text;
  } cases[] = {
      {36519.75, QStringLiteral("25-12-1999")},
      {0, QStringLiteral("30-12-1899")},
      {-1.5, QStringLiteral("28-12-1899")},
      {-657434, QStringLiteral("01-01-0100")},
      {2958466, QStringLiteral("01-01-10000")},
      {1e300, QVariant(1e300).toString()},
      {QStringLiteral("ieri"), QStringLiteral("ieri")},
  };
  Desk<DateBox> box;
  for (const auto& c : cases) {
    box->ShowValue(c.value);
    EXPECT_EQ(box->Text(), c.text);
    box.enter();
    box.leave();
    EXPECT_EQ(box->Value(), c.value);
    EXPECT_TRUE(box->IsValid());
    EXPECT_FALSE(box->DataChanged());
  }
}

TEST(TimeBoxTest, ReadsWhatIsTyped) {
  const struct {
    QString keys;
    QString text;
    qlonglong seconds;  // -1: not valid
  } cases[] = {
      {QStringLiteral("45"), QStringLiteral("0:00:45"), 45},
      {QStringLiteral("345"), QStringLiteral("0:03:45"), 225},
      {QStringLiteral("12345"), QStringLiteral("1:23:45"), 5025},
      {QStringLiteral("0"), QStringLiteral("0:00:00"), 0},
      {QStringLiteral("1:2:5"), QStringLiteral("1:02:05"), 3725},
      {QStringLiteral("3:45"), QStringLiteral("0:03:45"), 225},
      {QStringLiteral(":45"), QStringLiteral("0:00:45"), 45},
      {QStringLiteral("1.02.05x"), QStringLiteral("1:02:05"), 3725},
      {QStringLiteral("596523:14:07"), QStringLiteral("596523:14:07"), 2147483647},
      {QStringLiteral("596523:14:08"), QStringLiteral("596523:14:08"), -1},
      {QStringLiteral("175"), QStringLiteral("175"), -1},
      {QStringLiteral("6000"), QStringLiteral("6000"), -1},
      {QStringLiteral("1:60:00"), QStringLiteral("1:60:00"), -1},
      {QStringLiteral("1:"), QStringLiteral("1:"), -1},
      {QStringLiteral("1:2:3:4"), QStringLiteral("1:2:3:4"), -1},
  };
  Desk<TimeBox> box;
  for (const auto& c : cases) {
    box->ShowValue(1);
    box.fill(c.keys);
    EXPECT_EQ(box->Text(), c.text) << qPrintable(c.keys);
    EXPECT_EQ(box->IsValid(), c.seconds >= 0) << qPrintable(c.keys);
    EXPECT_EQ(box->Value(), c.seconds < 0 ? QVariant() : QVariant(c.seconds)) << qPrintable(c.keys);
  }
  box.fill(QString());
  EXPECT_TRUE(box->IsValid());
  EXPECT_FALSE(box->Value().isValid());
}

TEST(TimeBoxTest, LeavesStoredValuesAlone) {
  const struct {
    QVariant value;
    QString text;
  } cases[] = {
      {90061, QStringLiteral("25:01:01")},
      {59.9, QStringLiteral("0:00:59")},
      {-5, QStringLiteral("-0:00:05")},
      {4000000000LL, QStringLiteral("1111111:06:40")},
  };
  Desk<TimeBox> box;
  for (const auto& c : cases) {
    box->ShowValue(c.value);
    box.enter();
    box.leave();
    EXPECT_EQ(box->Text(), c.text);
    EXPECT_EQ(box->Value(), c.value);
  }
}

TEST(CheckBoxTest, HoldsYesOrNo) {
  CheckBox box;
  const struct {
    QVariant value;
    int shown;
  } cases[] = {{-1, -1}, {0, 0}, {1, -1}, {QVariant(), 0}};
  for (const auto& c : cases) {
    box.ShowValue(c.value);
    EXPECT_EQ(box.Value().toInt(), c.shown);
    EXPECT_FALSE(box.DataChanged());
  }
  box.click();
  EXPECT_EQ(box.Value().toInt(), -1);
  EXPECT_TRUE(box.DataChanged());
}

}  // namespace
}  // namespace platform
