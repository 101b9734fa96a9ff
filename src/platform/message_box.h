#pragma once

#include <QString>
#include <QVector>
#include <functional>

namespace platform {

// Style of a message: one button code plus one icon code, plus kSetForeground if wanted.
inline constexpr int kOkOnly = 0;
inline constexpr int kOkCancel = 1;
inline constexpr int kYesNo = 4;
inline constexpr int kCritical = 16;
inline constexpr int kQuestion = 32;
inline constexpr int kWarning = 48;
inline constexpr int kInformation = 64;
inline constexpr int kSetForeground = 65536;

// Answers.
inline constexpr int kOk = 1;
inline constexpr int kCancel = 2;
inline constexpr int kYes = 6;
inline constexpr int kNo = 7;

// Shows a message over the active window and waits for the answer, which is one of the above.
// The text is plain; CR, LF and CR LF break the line. Without a title "Tavolix" stands there.
int MsgBox(const QString& text, int style = kOkOnly, const QString& title = {});

// Runs work from the event loop as soon as no message is open: no message stands over another.
void WhenNoMessageIsOpen(std::function<void()> work);

// Answers messages in a test, without a window.
class MessageBoxSeam final {
 public:
  struct Shown {  // the arguments of one call
    QString text;
    int style;
    QString title;
  };
  // Queues the answer to a message to come; it has to be one of that message's buttons.
  static void setNextAnswer(int answer);
  // With true, a message with no answer queued throws std::logic_error instead of waiting.
  static void setNoWindow(bool noWindow);
  // The messages so far, shown or not, since answers are queued or windows refused.
  static const QVector<Shown>& shown();
  // No answers, no messages, windows allowed.
  static void reset();
};

}  // namespace platform
