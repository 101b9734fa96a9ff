#pragma once

#include <QString>
#include <optional>

namespace tavolix {

// What is answered on the terminal without a window being opened, also while the program runs:
// its version, or how it is called. Nothing for any other command line.
std::optional<QString> answerTo(const QString& commandLine);

}  // namespace tavolix
