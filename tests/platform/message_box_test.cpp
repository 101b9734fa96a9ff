#include "platform/message_box.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <functional>

namespace platform {
namespace {

// Shows a message, looks at its window, and leaves it by a key.
int showAnd(const QString& text, int style, Qt::Key key,
            const std::function<void(QMessageBox&)>& look) {
  QTimer::singleShot(0, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    look(*box);
    QTest::keyClick(box, key);
  });
  return MsgBox(text, style, "");
}

TEST(MessageBoxTest, HasTheButtonsAndAnswersOfItsStyle) {
  const struct {
    int style;
    const char* buttons;
    QMessageBox::Icon icon;
    Qt::Key key;
    int answer;
  } cases[] = {
      {kOkOnly + kCritical, "OK", QMessageBox::Critical, Qt::Key_Escape, kOk},
      {kOkCancel + kWarning, "OK Annulla", QMessageBox::Warning, Qt::Key_Return, kOk},
      {kOkCancel + kInformation, "OK Annulla", QMessageBox::Information, Qt::Key_A, kCancel},
      {kOkCancel + kSetForeground, "OK Annulla", QMessageBox::NoIcon, Qt::Key_Escape, kCancel},
      {kYesNo + kQuestion, "Sì No", QMessageBox::Question, Qt::Key_S, kYes},
      {kYesNo + kWarning, "Sì No", QMessageBox::Warning, Qt::Key_Escape, kNo},
  };
  for (const auto& c : cases) {
    const int answer = showAnd("<b>uno</b>\rdue\r\ntre", c.style, c.key, [&](QMessageBox& box) {
      QStringList texts;
      for (const QAbstractButton* button : box.buttons()) texts << button->text();
      EXPECT_EQ(texts.join(' '), c.buttons);
      EXPECT_EQ(box.icon(), c.icon);
      EXPECT_EQ(box.text(), "<b>uno</b>\ndue\ntre");
      EXPECT_EQ(box.textFormat(), Qt::PlainText);
    });
    EXPECT_EQ(answer, c.answer) << "style " << c.style << " key " << c.key;
  }
}

TEST(MessageBoxTest, KeepsLongTextsOnTheScreen) {
  for (const QString& text : {QString("riga\r").repeated(500), QString("parola ").repeated(5000)}) {
    showAnd(text, kYesNo, Qt::Key_Escape, [](QMessageBox& box) {
      EXPECT_EQ(box.size().boundedTo(box.screen()->availableSize()), box.size());
      const auto* label = box.findChild<QLabel*>("qt_msgbox_label");
      EXPECT_GE(label->height(), label->heightForWidth(label->width())) << "cut off";
    });
  }
}

}  // namespace
}  // namespace platform
