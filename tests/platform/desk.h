#pragma once

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

namespace platform {

// A control in a window, with another one the focus can go to.
template <typename Control>
class Desk final {
 public:
  Desk() {
    auto* column = new QVBoxLayout(&window_);
    column->addWidget(control_);
    column->addWidget(other_);
    window_.show();
    QTest::qWait(0);
    window_.activateWindow();
    other_->setFocus();
  }

  Control* operator->() { return control_; }
  Control* get() { return control_; }
  void enter() { control_->setFocus(); }
  void leave() { other_->setFocus(); }
  void type(const QString& keys) { QTest::keyClicks(control_, keys); }
  void paste(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    control_->paste();
  }
  void press(Qt::Key key) { QTest::keyClick(control_, key); }
  // Replaces what is there, and leaves.
  void fill(const QString& keys) {
    enter();
    control_->selectAll();
    QTest::keyClick(control_, Qt::Key_Delete);
    type(keys);
    leave();
  }

 private:
  QWidget window_;
  Control* control_ = new Control(&window_);
  QLineEdit* other_ = new QLineEdit(&window_);
};

}  // namespace platform
