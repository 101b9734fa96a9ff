#pragma once

#include <QString>
#include <optional>

namespace platform {

// The text that another program offers on an X display under a name ("CLIPBOARD", "PRIMARY": ICCCM,
// 2). Empty if nobody offers any. No value if its owner has not handed all of it over within a
// time. The display is the one that the environment names.
std::optional<QString> readX11Selection(const char* selection, int milliseconds);

}  // namespace platform
