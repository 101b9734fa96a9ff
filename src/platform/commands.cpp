#include "platform/commands.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QScopeGuard>
#include <QTimer>
#include <QWindow>
#include <deque>
#include <utility>
#include <vector>

#include "platform/yielding.h"

namespace platform {
namespace {

struct Command {
  QPointer<QWidget> window;
  bool ofWindow;  // else it belongs to none
  std::function<void()> work;
};

// One for the program, and one for each question that is open.
struct Level {
  int atWork = 0;
  int yields = 0;
};

struct State {
  std::vector<Level> levels{1};
  std::deque<Command> waiting;
};

State& state() {
  static State only;
  return only;
}

// What was opened out of a question works on with it.
bool standsOver(const QWidget& window, const QWidget& question) {
  const QWindow* above = window.window()->windowHandle();
  const QWindow* below = question.windowHandle();
  return above != nullptr && below != nullptr &&
         below->isAncestorOf(above, QWindow::IncludeTransients);
}

bool isHeld(const QWidget* window) {
  const QWidget* question = QApplication::activeModalWidget();
  if (question == nullptr || window == nullptr) return false;
  return window != question && !question->isAncestorOf(window) && !standsOver(*window, *question);
}

bool mustWait(const QWidget* window) {
  return state().levels.back().yields > 0 || isHeld(window);
}

void runWaiting();

void runNow(const std::function<void()>& work) {
  const std::size_t level = state().levels.size() - 1;
  ++state().levels[level].atWork;
  const auto done = qScopeGuard([level] { --state().levels[level].atWork; });
  work();
}

void runWaiting() {
  State& all = state();
  while (!all.waiting.empty()) {
    const Level& level = all.levels.back();
    if (level.atWork > 0 || mustWait(all.waiting.front().window)) return;
    const Command next = std::move(all.waiting.front());
    all.waiting.pop_front();
    if (!next.ofWindow || next.window != nullptr) runNow(next.work);
  }
}

void yield(QEventLoop::ProcessEventsFlags events) {
  const std::size_t level = state().levels.size() - 1;
  ++state().levels[level].yields;
  QCoreApplication::processEvents(events);
  --state().levels[level].yields;
  // The loop does not see by itself what has been left waiting.
  if (auto* dispatcher = QAbstractEventDispatcher::instance()) dispatcher->wakeUp();
  if (state().levels[level].atWork == 0) QTimer::singleShot(0, qApp, runWaiting);
}

}  // namespace

void yieldToPaint() {
  yield(QEventLoop::ExcludeUserInputEvents);
}

void yieldToInput() {
  yield(QEventLoop::AllEvents);
}

void Commands::run(QWidget* window, std::function<void()> work) {
  if (mustWait(window)) {
    state().waiting.push_back({window, window != nullptr, std::move(work)});
    return;
  }
  runNow(work);
  runWaiting();
}

bool Commands::areYielding() {
  return state().levels.back().yields > 0;
}

Commands::Question::Question() {
  state().levels.emplace_back();
}

Commands::Question::~Question() {
  state().levels.pop_back();
  QTimer::singleShot(0, qApp, runWaiting);
}

}  // namespace platform
