#pragma once

#include <QtGlobal>
#include <functional>

namespace store {

// Called with bytes done and bytes in all; false breaks the work off. It must not throw.
using Progress = std::function<bool(qint64 done, qint64 total)>;
// Fails with 3059 if the work is broken off.
void tell(const Progress& progress, qint64 done, qint64 total);
[[noreturn]] void interrupted();

}  // namespace store
