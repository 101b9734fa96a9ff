#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>

namespace platform {

// Lets windows be painted and timers run in the middle of long work. What the user does meanwhile
// waits, in order, until the work is done.
void yieldToPaint();

// What the user asks for, one thing at a time. A command that comes while another one yields, by
// whatever way (a screen reader, a window's box, a timer), waits until that one is done; one whose
// window a question holds, until it has been answered. Those that wait are run in order.
class Commands final {
 public:
  // Runs a command of a window. What a command calls itself is part of it and runs at once. One
  // that waits is dropped with its window.
  static void run(QWidget* window, std::function<void()> work);
  // True in a yield: nothing that the user did may go anywhere.
  static bool areYielding();

  // The time in which a window stands before all others and has commands of its own: those of the
  // other windows wait.
  class Question final {
   public:
    Question();
    ~Question();
    Question(const Question&) = delete;
    Question& operator=(const Question&) = delete;
  };
};

}  // namespace platform
