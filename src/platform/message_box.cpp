#include "platform/message_box.h"

#include <QApplication>
#include <QKeySequence>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>
#include <array>
#include <deque>
#include <optional>
#include <span>
#include <stdexcept>

#include "platform/commands.h"
#include "platform/form.h"
#include "platform/key_handover.h"

namespace platform {
namespace {

struct Seam {
  bool active = false;
  bool noWindow = false;
  QVector<int> answers;
  QVector<MessageBoxSeam::Shown> shown;
};

Seam& seam() {
  static Seam state;
  return state;
}

struct Button {
  int answer;
  QMessageBox::StandardButton standard;
  const char* text;
  const char* shortcut;
};

constexpr std::array kOkButtons{Button{kOk, QMessageBox::Ok, "OK", "Alt+O"},
                                Button{kCancel, QMessageBox::Cancel, "Annulla", "Alt+A"}};
constexpr std::array kYesButtons{Button{kYes, QMessageBox::Yes, "Sì", "Alt+S"},
                                 Button{kNo, QMessageBox::No, "No", "Alt+N"}};

std::span<const Button> buttonsOf(int style) {
  switch (style & 7) {
    case kOkCancel:
      return kOkButtons;
    case kYesNo:
      return kYesButtons;
    default:
      return std::span(kOkButtons).first(1);
  }
}

QMessageBox::Icon iconOf(int style) {
  switch (style & 0x70) {
    case kCritical:
      return QMessageBox::Critical;
    case kQuestion:
      return QMessageBox::Question;
    case kWarning:
      return QMessageBox::Warning;
    case kInformation:
      return QMessageBox::Information;
    default:
      return QMessageBox::NoIcon;
  }
}

bool hasButton(int style, int answer) {
  for (const Button& button : buttonsOf(style)) {
    if (button.answer == answer) return true;
  }
  return false;
}

// The answer a test has queued; nothing if a window is to be shown.
std::optional<int> queuedAnswer(const QString& text, int style, const QString& title) {
  Seam& state = seam();
  if (!state.active) return std::nullopt;
  state.shown.append({text, style, title});
  if (state.answers.isEmpty()) {
    if (state.noWindow) throw std::logic_error("unexpected message: " + text.toStdString());
    return std::nullopt;
  }
  const int answer = state.answers.takeFirst();
  if (!hasButton(style, answer)) {
    throw std::logic_error("no button for the queued answer: " + text.toStdString());
  }
  return answer;
}

QString withLineFeeds(QString text) {
  return text.replace("\r\n", "\n").replace('\r', '\n');
}

void addButtons(QMessageBox& box, int style) {
  for (const Button& button : buttonsOf(style)) {
    QPushButton* added = box.addButton(button.standard);
    added->setText(QString::fromUtf8(button.text));
    // The message box also takes the letter alone.
    added->setShortcut(QKeySequence(button.shortcut));
  }
}

QLabel* labelOfText(const QMessageBox& box) {
  const auto labels = box.findChildren<QLabel*>();
  const auto own = std::find_if(labels.begin(), labels.end(),
                                [&](const QLabel* label) { return label->text() == box.text(); });
  return own == labels.end() ? nullptr : *own;
}

// Height of the text in a width, in pixels.
int heightIn(const QLabel& label, int width) {
  const QRect room(0, 0, width, 1);
  return label.fontMetrics().boundingRect(room, Qt::TextWordWrap, label.text()).height();
}

// Puts a text that would not fit on the screen into a scrolled area.
void keepOnScreen(QMessageBox& box) {
  QLabel* label = labelOfText(box);
  if (label == nullptr) return;
  const QSize most = box.screen()->availableSize() * 3 / 5;
  const QSize area(qMin(most.width(), label->fontMetrics().averageCharWidth() * 80), most.height());
  const QRect needed = label->fontMetrics().boundingRect(QRect(QPoint(), QSize(area.width(), 1)),
                                                         Qt::TextWordWrap, label->text());
  // The toolkit's own box is this wide, with its icon, however little height there is.
  constexpr int kWidest = 500;
  constexpr int kBesideText = 100;
  const int own = std::min(box.screen()->availableSize().width() / 2, kWidest) - kBesideText;
  const bool fits = needed.width() <= area.width() && needed.height() <= area.height();
  if (fits && heightIn(*label, own) <= area.height()) return;
  auto* scroller = new QScrollArea(&box);
  scroller->setWidgetResizable(true);
  scroller->setFrameShape(QFrame::NoFrame);
  const int bar = scroller->verticalScrollBar()->sizeHint().width();
  scroller->setMinimumSize(area.width() + bar, qMin(needed.height() + bar, area.height()));
  delete box.layout()->replaceWidget(label, scroller);
  label->setWordWrap(true);
  label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  scroller->setWidget(label);
}

int ask(QMessageBox& box, int style, QWidget* front) {
  const Commands::Question question;
  KeyHandover::to(&box);
  if ((style & kSetForeground) != 0) {
    box.show();
    box.raise();
    box.activateWindow();
  }
  box.exec();
  if (front != nullptr) KeyHandover::to(front);
  for (const Button& button : buttonsOf(style)) {
    if (box.clickedButton() == box.button(button.standard)) return button.answer;
  }
  return buttonsOf(style).back().answer;
}

constexpr int kPatienceMilliseconds = 50;  // until a command that yields is tried again

int openMessages = 0;

std::deque<std::function<void()>>& waitingWork() {
  static std::deque<std::function<void()>> all;
  return all;
}

void runWaitingWork() {
  if (Commands::areYielding()) {
    QTimer::singleShot(kPatienceMilliseconds, qApp, runWaitingWork);
    return;
  }
  while (openMessages == 0 && !waitingWork().empty()) {
    const std::function<void()> work = std::move(waitingWork().front());
    waitingWork().pop_front();
    work();
  }
}

void runWaitingWorkLater() {
  QMetaObject::invokeMethod(qApp, runWaitingWork, Qt::QueuedConnection);
}

}  // namespace

void WhenNoMessageIsOpen(std::function<void()> work) {
  waitingWork().push_back(std::move(work));
  runWaitingWorkLater();
}

int MsgBox(const QString& text, int style, const QString& title) {
  if (const auto answer = queuedAnswer(text, style, title)) return *answer;
  QWidget* front = windowInFront();
  QMessageBox box(front);
  box.setWindowTitle(title.isEmpty() ? "Tavolix" : title);
  box.setTextFormat(Qt::PlainText);
  box.setIcon(iconOf(style));
  box.setText(withLineFeeds(text));
  addButtons(box, style);
  keepOnScreen(box);
  ++openMessages;
  const auto closed = qScopeGuard([] {
    if (--openMessages == 0) runWaitingWorkLater();
  });
  return ask(box, style, front);
}

void MessageBoxSeam::setNextAnswer(int answer) {
  seam().active = true;
  seam().answers.append(answer);
}

void MessageBoxSeam::setNoWindow(bool noWindow) {
  seam().active = true;
  seam().noWindow = noWindow;
}

const QVector<MessageBoxSeam::Shown>& MessageBoxSeam::shown() {
  return seam().shown;
}

void MessageBoxSeam::reset() {
  seam() = {};
}

}  // namespace platform
