#pragma once

#include <QObject>
#include <functional>

class QKeyEvent;
class QWidget;

namespace platform {

// The key F1, wherever the keyboard is: in a form's window, in a menu, in a message box.
class HelpKey final : public QObject {
  Q_OBJECT
 public:
  // Who shows the help for a widget, null for none in particular; set once by the program.
  static void setAnswer(std::function<void(QWidget* at)> answer);
  // The key comes to a widget; false if it is another key, or nobody answers it.
  static bool press(QWidget* at, const QKeyEvent& key);

 private:
  using QObject::QObject;
  static std::function<void(QWidget*)>& answer();
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace platform
