#pragma once

#include <QKeyEvent>
#include <QObject>
#include <QPointer>
#include <QVector>
#include <deque>
#include <memory>

class QWindow;

namespace platform {

// Input while forms are shown modally: only the uppermost of them, and what it has opened, gets
// any. A key typed for a window that cannot take it, because the form has not the focus yet or a
// closed one had it still, waits and goes to the form: nobody has to look before typing on.
class ModalInput final : public QObject {
  Q_OBJECT
 public:
  // The uppermost modal form's window, null if there is none.
  static QWidget* window() { return instance().top(); }

  // The time in which a window is the uppermost modal one.
  class Turn final {
   public:
    explicit Turn(QWidget* window);
    ~Turn();
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

   private:
    QPointer<QWidget> window_;
  };

 private:
  ModalInput();
  static ModalInput& instance();
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool filterWindow(QWindow& window, QEvent& event);
  QWidget* top() const;
  bool isBlocked(const QWindow& window) const;
  void deliver();
  void deliverLater();

  QVector<QPointer<QWidget>> windows_;
  std::deque<std::unique_ptr<QKeyEvent>> keys_;
};

}  // namespace platform
