#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <deque>
#include <functional>

#include "platform/form.h"

namespace tavolix {

// Somebody who does one thing in each window that comes to the front, in the order told.
class User final : public QObject {
 public:
  User() {
    // One window stays, from which and to which the others come and go.
    desk_.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&desk_));
    look();
  }
  ~User() override { EXPECT_EQ(left(), 0U); }

  void in(const char* form, std::function<void()> act) { steps_.push_back({form, std::move(act)}); }
  // Types into the window's box and confirms.
  void types(const char* form, const QString& text) {
    in(form, [=] {
      auto* box = platform::forms()[form].Window()->findChild<QLineEdit*>();
      for (const QChar letter : text) {
        QTest::sendKeyEvent(QTest::Click, box, Qt::Key(letter.toUpper().unicode()), QString(letter),
                            {});
      }
      click(form, "cmdConferma");
    });
  }
  void clicks(const char* form, const char* control) {
    in(form, [=] { click(form, control); });
  }
  std::size_t left() const { return steps_.size(); }
  void forget() { steps_.clear(); }

  static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  static void click(const char* form, const char* name) {
    QTest::mouseClick(platform::forms()[form].Control(name), Qt::LeftButton);
  }

 private:
  struct Step {
    QString form;
    std::function<void()> act;
  };

  // A step may open a window of its own, in which the next one is done.
  void look() {
    QTimer::singleShot(1, this, [this] {
      const QWidget* front = QApplication::activeModalWidget();
      const bool there =
          front != nullptr && !steps_.empty() && front->objectName() == steps_.front().form;
      // One that follows another at once is not always made active without a window manager.
      patience_ = there ? patience_ - 1 : kPatience;
      if (!there || (!front->isActiveWindow() && patience_ > 0)) return look();
      patience_ = kPatience;
      const Step step = steps_.front();
      steps_.pop_front();
      look();
      step.act();
    });
  }

  static constexpr int kPatience = 50;

  QWidget desk_;
  int patience_ = kPatience;
  std::deque<Step> steps_;
};

}  // namespace tavolix
