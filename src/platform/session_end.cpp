#include "platform/session_end.h"

#include <fcntl.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QSessionManager>
#include <QSocketNotifier>
#include <csignal>
#include <utility>

#include "platform/handlers.h"

namespace platform {
namespace {

// A signal's handler may do next to nothing: it writes a byte here, which the event loop reads.
int ends[2] = {-1, -1};

void wake(int) {
  const int before = errno;
  const char byte = 0;
  [[maybe_unused]] const ssize_t written = write(ends[1], &byte, 1);
  errno = before;
}

}  // namespace

void onSessionEnd(std::function<void()> save, std::function<void()> end) {
  QObject::connect(
      qGuiApp, &QGuiApplication::commitDataRequest, qGuiApp,
      [save](QSessionManager&) { guarded(save); }, Qt::DirectConnection);
  if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
  auto* asked = new QSocketNotifier(ends[0], QSocketNotifier::Read, qGuiApp);
  onSignal(asked, &QSocketNotifier::activated, qGuiApp,
           [asked, save = std::move(save), end = std::move(end)] {
             asked->setEnabled(false);
             save();
             end();
           });
  struct sigaction action = {};
  action.sa_handler = wake;
  action.sa_flags = SA_RESTART | SA_RESETHAND;  // asked twice, it ends at once
  for (const int number : {SIGTERM, SIGHUP, SIGINT}) sigaction(number, &action, nullptr);
}

}  // namespace platform
