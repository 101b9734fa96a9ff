#pragma once

#include <functional>

namespace platform {

// Calls `save` when the desktop's session is about to end, and `save`, then `end`, when the process
// is asked to end (SIGTERM, SIGHUP, SIGINT): both in the event loop, where the program may do what
// it likes. Once for a process; the application object has to be there.
void onSessionEnd(std::function<void()> save, std::function<void()> end);

}  // namespace platform
