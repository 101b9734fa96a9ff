#pragma once

#include <QFrame>

class QLabel;

namespace platform {

// What a list shows while its rows cannot be read, along its lower border: why, and two ways on.
class ReadNotice final : public QFrame {
  Q_OBJECT
 public:
  // Hidden at first; keeps to the lower border of its list by itself.
  explicit ReadNotice(QWidget& list);

  // Shows the notice, with the reason.
  void Tell(const QString& text);

 Q_SIGNALS:
  void retryAsked();
  void leaveAsked();

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void place();

  QWidget& list_;
  QLabel* text_;
};

}  // namespace platform
