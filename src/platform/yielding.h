#pragma once

namespace platform {

// As yieldToPaint, for one who sees to what the user does meanwhile: it does not wait.
void yieldToInput();

}  // namespace platform
