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
#include <stdexcept>

#include "platform/common_dialogs.h"

namespace platform {
namespace {

class MessageBoxTest : public testing::Test {
 protected:
  void SetUp() override { MessageBoxSeam::reset(); }
  void TearDown() override {
    MessageBoxSeam::reset();
    CommonDialogSeam::reset();
  }

  // Shows a message, looks at its window, and leaves it by Escape at the latest.
  static int showAnd(const QString& text, int style, const QString& title,
                     const std::function<void(QMessageBox&)>& look) {
    bool seen = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      timer.stop();
      seen = true;
      look(*box);
      if (box->isVisible()) QTest::keyClick(box, Qt::Key_Escape);
    });
    timer.start(0);
    const int answer = MsgBox(text, style, title);
    EXPECT_TRUE(seen);
    return answer;
  }
};

QStringList buttonTexts(const QMessageBox& box) {
  QStringList texts;
  for (const QAbstractButton* button : box.buttons()) texts.append(button->text());
  return texts;
}

TEST_F(MessageBoxTest, ButtonsIconsAndAnswers) {
  struct Case {
    int style;
    QStringList buttons;
    QMessageBox::Icon icon;
    Qt::Key key;
    int answer;
  };
  const Case cases[] = {
      {kOkOnly, {"OK"}, QMessageBox::NoIcon, Qt::Key_Return, 1},
      {kOkOnly + kCritical, {"OK"}, QMessageBox::Critical, Qt::Key_Escape, 1},
      {kOkCancel + kWarning, {"OK", "Annulla"}, QMessageBox::Warning, Qt::Key_Return, 1},
      {kOkCancel + kInformation, {"OK", "Annulla"}, QMessageBox::Information, Qt::Key_A, 2},
      {kOkCancel + kSetForeground, {"OK", "Annulla"}, QMessageBox::NoIcon, Qt::Key_Escape, 2},
      {kYesNo + kQuestion, {"Sì", "No"}, QMessageBox::Question, Qt::Key_S, 6},
      {kYesNo + kQuestion + kSetForeground, {"Sì", "No"}, QMessageBox::Question, Qt::Key_N, 7},
      {kYesNo + kWarning, {"Sì", "No"}, QMessageBox::Warning, Qt::Key_Return, 6},
      {kYesNo + kWarning, {"Sì", "No"}, QMessageBox::Warning, Qt::Key_Escape, 7},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << "style " << c.style << " key " << c.key);
    const int answer = showAnd("Procedere?", c.style, "", [&c](QMessageBox& box) {
      EXPECT_EQ(buttonTexts(box), c.buttons);
      EXPECT_EQ(box.icon(), c.icon);
      QTest::keyClick(&box, c.key);
      EXPECT_TRUE(QTest::qWaitFor([&box] { return !box.isVisible(); }));
    });
    EXPECT_EQ(answer, c.answer);
  }
}

TEST_F(MessageBoxTest, TextIsPlainAndBreaksAtReturns) {
  showAnd("<b>uno</b>\rdue\r\ntre\nquattro", kOkOnly, "", [](QMessageBox& box) {
    EXPECT_EQ(box.text(), "<b>uno</b>\ndue\ntre\nquattro");
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.windowTitle(), "Tavolix");
  });
  showAnd("uno", kOkOnly, "Copia", [](QMessageBox& box) { EXPECT_EQ(box.windowTitle(), "Copia"); });
}

TEST_F(MessageBoxTest, LongTextsStayOnTheScreen) {
  QString lines;
  for (int line = 0; line < 500; ++line) lines += QString("riga %1\r").arg(line);
  for (const QString& text : {lines, QString(4000, 'x'), QString("parola ").repeated(5000)}) {
    showAnd(text, kYesNo, "", [](QMessageBox& box) {
      const QSize screen = box.screen()->availableSize();
      EXPECT_LE(box.width(), screen.width());
      EXPECT_LE(box.height(), screen.height());
      for (const QAbstractButton* button : box.buttons()) {
        EXPECT_TRUE(box.rect().contains(
            button->geometry().translated(button->parentWidget()->mapTo(&box, QPoint()))));
      }
      const auto* label = box.findChild<QLabel*>("qt_msgbox_label");
      EXPECT_GE(label->height(), label->heightForWidth(label->width())) << "cut off";
    });
  }
}

TEST_F(MessageBoxTest, OwnerIsTheActiveWindow) {
  QWidget window;
  window.show();
  QApplication::setActiveWindow(&window);
  showAnd("uno", kOkOnly, "",
          [&window](QMessageBox& box) { EXPECT_EQ(box.parentWidget(), &window); });
}

TEST_F(MessageBoxTest, SeamAnswersInOrderAndRemembers) {
  MessageBoxSeam::setNoWindow(true);
  MessageBoxSeam::setNextAnswer(kNo);
  MessageBoxSeam::setNextAnswer(kOk);
  EXPECT_EQ(MsgBox("uno", kYesNo, "A"), kNo);
  EXPECT_EQ(MsgBox("due\rtre", kCritical), kOk);
  ASSERT_EQ(MessageBoxSeam::shown().size(), 2);
  EXPECT_EQ(MessageBoxSeam::shown()[0].title, "A");
  EXPECT_EQ(MessageBoxSeam::shown()[1].text, "due\rtre");
  EXPECT_EQ(MessageBoxSeam::shown()[1].style, kCritical);
  EXPECT_THROW(MsgBox("inatteso", kYesNo), std::logic_error);
  MessageBoxSeam::setNextAnswer(kYes);
  EXPECT_THROW(MsgBox("senza quel pulsante", kOkCancel), std::logic_error);
  MessageBoxSeam::reset();
  EXPECT_TRUE(MessageBoxSeam::shown().isEmpty());
}

TEST_F(MessageBoxTest, FileDialogsTakeTheQueuedPaths) {
  CommonDialogSeam::setNoWindow(true);
  CommonDialogSeam::setNextPath("/tmp/a.mdb");
  CommonDialogSeam::cancel();
  CommonDialogSeam::setNextPath("/tmp");
  EXPECT_EQ(openFile("Apri", "Archivi (*.mdb)"), "/tmp/a.mdb");
  EXPECT_EQ(saveFile("Salva", "Archivi (*.mdb)"), "");
  EXPECT_EQ(chooseFolder("Cartella"), "/tmp");
  EXPECT_THROW(chooseFolder("Cartella"), std::logic_error);
}

}  // namespace
}  // namespace platform
